// libFuzzer target for the localization file parser.
//
// Input: decoded by DecodeFuzzInput (FuzzInput.h): little-endian UTF-16 after a first byte
// 0x00, lenient UTF-8 otherwise; the seed corpus is plain .lt files.
//
// The parser may reject an input only with ParsingException (syntax error, duplicate key) or
// run out of memory (std::bad_alloc). Anything else aborts, and so does a parse result that
// breaks the grammar's guarantees, does not survive a print-and-parse round trip, or differs
// in any way (outcome, entries, report) from the position-tracking parse of the same input or
// from the parse into the runtime's compact store.

#include "FuzzInput.h"
#include "StringLocalizing/Model/CompactTexts.h"
#include "StringLocalizing/Model/ResourceDictionary.h"
#include "StringLocalizing/Model/Value.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"

#include <boost/variant/get.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <typeinfo>

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

constexpr std::size_t kMaxPluralForms = 6;

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "fuzz_parse_loc_file: %s\n", what);
    std::abort();
}

bool IsKeyStart(char16_t character) {
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z') ||
           character == u'_';
}

bool IsKeyCharacter(char16_t character) {
    return IsKeyStart(character) || (character >= u'0' && character <= u'9');
}

bool IsKeySyntax(const std::u16string& key) {
    if (key.empty() || !IsKeyStart(key.front())) {
        return false;
    }
    for (const char16_t character : key) {
        if (!IsKeyCharacter(character)) {
            return false;
        }
    }
    return true;
}

// A stored key or key reference: key syntax, folded to lower case.
bool IsFoldedKey(const std::u16string& key) {
    if (!IsKeySyntax(key)) {
        return false;
    }
    for (const char16_t character : key) {
        if (character >= u'A' && character <= u'Z') {
            return false;
        }
    }
    return true;
}

void CheckValue(const Model::Value& value);

class OperandChecker : public boost::static_visitor<void> {
  public:
    void operator()(const std::u16string&) const {}
    void operator()(const Model::KeyRef& reference) const {
        if (!IsFoldedKey(reference.key)) {
            Fail("key reference that is not a lower-case key");
        }
    }
    void operator()(const Model::Param& parameter) const {
        if (!IsKeySyntax(parameter.name)) {
            Fail("parameter name that is not a key");
        }
    }
    void operator()(const Model::PluralForm& plural) const {
        if (!IsKeySyntax(plural.param)) {
            Fail("plural discriminator that is not a key");
        }
        if (plural.forms.empty() || plural.forms.size() > kMaxPluralForms) {
            Fail("plural invocation with a form count outside 1..6");
        }
        for (const Model::Value& form : plural.forms) {
            CheckValue(form);
        }
    }
};

void CheckValue(const Model::Value& value) {
    if (value.operands.empty()) {
        Fail("value without operands");
    }
    for (const Model::Operand& operand : value.operands) {
        boost::apply_visitor(OperandChecker(), operand);
    }
}

void PrintValue(const Model::Value& value, std::u16string& out);

// Prints an operand in .lt syntax, so that parsing the output gives the same operand back.
class OperandPrinter : public boost::static_visitor<void> {
  public:
    explicit OperandPrinter(std::u16string& out) : out_(out) {}

    void operator()(const std::u16string& text) const {
        out_ += u'\'';
        for (const char16_t character : text) {
            if (character == u'\'' || character == u'\\') {
                out_ += u'\\';
            }
            out_ += character;
        }
        out_ += u'\'';
    }
    void operator()(const Model::KeyRef& reference) const { out_ += reference.key; }
    void operator()(const Model::Param& parameter) const {
        out_ += u'$';
        out_ += parameter.name;
    }
    void operator()(const Model::PluralForm& plural) const {
        out_ += u"{$";
        out_ += plural.param;
        out_ += u':';
        const char16_t* separator = u" ";
        for (const Model::Value& form : plural.forms) {
            out_ += separator;
            PrintValue(form, out_);
            separator = u", ";
        }
        out_ += u'}';
    }

  private:
    std::u16string& out_;
};

void PrintValue(const Model::Value& value, std::u16string& out) {
    const char16_t* separator = u"";
    for (const Model::Operand& operand : value.operands) {
        out += separator;
        boost::apply_visitor(OperandPrinter(out), operand);
        separator = u" + ";
    }
}

std::u16string PrintDictionary(const Model::ResourceDictionary& dictionary) {
    std::u16string out;
    for (const auto& [key, value] : dictionary) {
        out += key;
        out += u" = ";
        PrintValue(value, out);
        out += u'\n';
    }
    return out;
}

bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

// How one parse ended: the entries it left and, when it failed, its ParsingException's report
// (wide) and message (narrow).
struct Outcome {
    Model::ResourceDictionary dictionary;
    bool failed = false;
    std::u16string report;
    std::string message;
};

template <typename Parse>
Outcome RunParse(Parse parse, const std::u16string& text, const std::u16string& fileName) {
    Outcome outcome;
    try {
        parse(text, fileName, outcome.dictionary);
    } catch (const Parsing::ParsingException& error) {
        outcome.failed = true;
        outcome.report = error.WideMessage();
        outcome.message = error.what();
    }
    return outcome;
}

void CompareWithCompactParse(const std::u16string& text, const Outcome& expected) {
    Model::CompactTexts texts(text);
    std::u16string report;
    try {
        Parsing::ParseLocFile(texts.Source(), u"fuzz.lt", texts);
    } catch (const Parsing::ParsingException& error) {
        report = error.WideMessage();
    }
    if (report != expected.report) {
        Fail("the compact store's parse gives a different report");
    }
    // A store whose parse failed is of no use, so what it holds does not matter.
    if (!report.empty()) {
        return;
    }
    if (texts.Size() != expected.dictionary.size()) {
        Fail("the compact store holds a different number of entries");
    }
    for (const Model::CompactTexts::Entry& entry : texts.Entries()) {
        const auto found = expected.dictionary.find(std::u16string(entry.key));
        Model::CompactTexts::Entry again;
        if (found == expected.dictionary.end() || !texts.Find(entry.key, again) ||
            again.key.data() != entry.key.data()) {
            Fail("the compact store holds a key the dictionary lacks, or cannot find it");
        }
        const std::u16string* text = Model::PlainText(found->second);
        if (entry.IsPlainText() ? text == nullptr || *text != entry.plainText
                                : text != nullptr || !(*entry.value == found->second)) {
            Fail("the compact store holds a different value");
        }
    }
}

void ParseAndCheck(const std::u16string& text) {
    static const std::u16string kFileName = u"fuzz.lt";
    const Outcome fast = RunParse(
        [](const std::u16string& text, const std::u16string& fileName,
           Model::ResourceDictionary& dictionary) {
            Parsing::ParseLocFile(text, fileName, dictionary);
        },
        text, kFileName);

    // The fast parse takes its reports from the position-tracking parse; both must accept the
    // same texts, keep the same entries and give the same report to the unit.
    const Outcome tracked = RunParse(Parsing::ParseLocFileWithPositions, text, kFileName);
    if (fast.failed != tracked.failed) {
        Fail("the fast and the position-tracking parse disagree on success");
    }
    if (fast.report != tracked.report) {
        Fail("the fast and the position-tracking parse give different reports");
    }
    if (!(fast.dictionary == tracked.dictionary)) {
        Fail("the fast and the position-tracking parse give different dictionaries");
    }

    // The runtime's compact store holds the same entries and fails alike.
    CompareWithCompactParse(text, fast);

    // The indexed parse for tools agrees too, except that it goes on past a key defined twice,
    // where the runtime's parse stops; every entry it records stands where its key is.
    Parsing::SourceIndex index;
    const Outcome indexed = RunParse(
        [&index](const std::u16string& text, const std::u16string& fileName,
                 Model::ResourceDictionary& dictionary) {
            Parsing::ParseLocFileIndexed(text, fileName, dictionary, index);
        },
        text, kFileName);
    if (index.duplicates.empty()
            ? indexed.report != fast.report || !(indexed.dictionary == fast.dictionary)
            : !fast.failed) {
        Fail("the indexed parse disagrees with the runtime's");
    }
    std::size_t previousEnd = 0;
    for (const Parsing::IndexedEntry& entry : index.entries) {
        if (entry.keySpan.begin.offset < previousEnd || entry.span.end.offset > text.size() ||
            entry.span.begin.offset != entry.keySpan.begin.offset ||
            text.compare(entry.keySpan.begin.offset, entry.key.size(), entry.key) != 0) {
            Fail("an indexed entry does not stand where its key is");
        }
        previousEnd = entry.span.end.offset;
    }

    const Model::ResourceDictionary& dictionary = fast.dictionary;
    if (fast.failed) {
        const std::string& message = fast.message;
        if (!StartsWith(message, "parse error at file fuzz.lt line ") &&
            !StartsWith(message, "duplicate key found (keys are case insensitive): '")) {
            std::fprintf(stderr, "report: %s\n", message.c_str());
            Fail("ParsingException with an unexpected report");
        }
        return;
    }

    for (const auto& [key, value] : dictionary) {
        if (!IsFoldedKey(key)) {
            Fail("dictionary key that is not a lower-case key");
        }
        CheckValue(value);
    }

    // The canonical form of what was parsed must parse again, to the same dictionary.
    const std::u16string printed = PrintDictionary(dictionary);
    Model::ResourceDictionary reparsed;
    try {
        Parsing::ParseLocFile(printed, kFileName, reparsed);
    } catch (const Parsing::ParsingException& error) {
        std::fprintf(stderr, "report: %s\n", error.what());
        Fail("the printed form of a parsed file does not parse");
    }
    if (!(reparsed == dictionary)) {
        Fail("the printed form of a parsed file parses to a different dictionary");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string text = LocalizationManager::Fuzzing::DecodeFuzzInput(data, size);
    try {
        ParseAndCheck(text);
    } catch (const std::bad_alloc&) {
        // Running out of memory is an accepted outcome; -rss_limit_mb bounds the process.
    } catch (const std::exception& error) {
        std::fprintf(stderr, "fuzz_parse_loc_file: unexpected %s: %s\n", typeid(error).name(),
                     error.what());
        std::abort();
    } catch (...) {
        // Not a std::exception: nothing to print, but it must be reported all the same.
        std::abort();
    }
    return 0;
}
