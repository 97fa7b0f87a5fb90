// libFuzzer target for the plural rule file parser and the conditions it builds.
//
// Input: decoded by DecodeFuzzInput (FuzzInput.h): little-endian UTF-16 after a first byte
// 0x00, lenient UTF-8 otherwise; the seed corpus is plain .rule files.
//
// A rule file is translator input, so neither parsing it nor evaluating what it yields may go
// wrong on any text. The parser may reject an input only with ParsingException, with a
// positioned report naming the file, or run out of memory (std::bad_alloc). Every condition it
// returns is then called with numbers chosen to provoke overflow and division traps (the 64-bit
// extremes, the 32-bit boundaries that sign extension moves) and must answer; a copy must
// answer the same. Anything else aborts, and the sanitizers turn undefined behaviour into a
// finding.

#include "FuzzInput.h"
#include "StringLocalizing/Model/IPluralFormRules.h"
#include "StringLocalizing/Parsing/ParsePluralRuleFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <typeinfo>

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

using Limits = std::numeric_limits<std::int64_t>;

constexpr std::size_t kMaxEntries = 5;

// clang-format off
const std::int64_t kNumbers[] = {
    0, 1, -1, 2, -2, 3, 4, 5, 7, 10, 11, -11, 12, 19, 20, 21, -21, 22, 99, 100, -100, 101, 111,
    1000, 2147483647, 2147483648, -2147483648, -2147483649, 4294967295, -4294967295, 4294967296,
    Limits::min(), Limits::min() + 1, Limits::max(), Limits::max() - 1};
// clang-format on

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "fuzz_parse_plural_rule_file: %s\n", what);
    std::abort();
}

void ParseAndEvaluate(const std::u16string& text) {
    Model::PluralRuleEntries entries;
    std::vector<std::string> texts;
    try {
        entries = Parsing::ParsePluralRuleFile(text, u"fuzz.rule", &texts);
    } catch (const Parsing::ParsingException& error) {
        if (std::string_view(error.what()).rfind("parse error at file fuzz.rule line ", 0) != 0) {
            std::fprintf(stderr, "report: %s\n", error.what());
            Fail("ParsingException with an unexpected report");
        }
        return;
    }

    if (entries.size() > kMaxEntries) {
        Fail("more than five conditions");
    }
    // Tools hand the conditions' texts on: read back, they must be the same rule.
    if (texts.size() != entries.size()) {
        Fail("a condition without its text");
    }
    std::u16string written;
    for (const std::string& condition : texts) {
        written.append(condition.begin(), condition.end());
        written += u";";
    }
    Model::PluralRuleEntries reread;
    try {
        reread = Parsing::ParsePluralRuleFile(written, u"fuzz.rule");
    } catch (const Parsing::ParsingException&) {
        Fail("the conditions' texts do not parse");
    }
    // Lookups hand out copies of a rule's entries; a copy must decide like the original.
    const Model::PluralRuleEntries copies = entries;
    for (std::size_t index = 0; index < entries.size(); ++index) {
        if (entries[index].empty()) {
            Fail("empty condition");
        }
        for (const std::int64_t n : kNumbers) {
            if (entries[index](n) != copies[index](n)) {
                Fail("a copied condition decides differently");
            }
            if (entries[index](n) != reread[index](n)) {
                Fail("a condition's text decides differently");
            }
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string text = LocalizationManager::Fuzzing::DecodeFuzzInput(data, size);
    try {
        ParseAndEvaluate(text);
    } catch (const std::bad_alloc&) {
        // Running out of memory is an accepted outcome; -rss_limit_mb bounds the process.
    } catch (const std::exception& error) {
        std::fprintf(stderr, "fuzz_parse_plural_rule_file: unexpected %s: %s\n",
                     typeid(error).name(), error.what());
        std::abort();
    } catch (...) {
        // Not a std::exception: nothing to print, but it must be reported all the same.
        std::abort();
    }
    return 0;
}
