// libFuzzer target for the localization file parser.
//
// Input: when the first byte is 0x00, the remaining bytes are read as little-endian UTF-16
// code units (an odd last byte is dropped), which reaches the parser with any unit sequence,
// lone surrogates and NULs included. Otherwise the whole input is UTF-8, decoded leniently so
// that no input is wasted (see DecodeUtf8Leniently); the seed corpus is plain .lt files.
//
// The parser may reject an input only with ParsingException (syntax error, duplicate key) or
// run out of memory (std::bad_alloc). Anything else aborts, and so does a parse result that
// breaks the grammar's guarantees or does not survive a print-and-parse round trip.

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

constexpr char16_t kReplacementCharacter = 0xFFFD;
constexpr std::size_t kMaxPluralForms = 6;

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "fuzz_parse_loc_file: %s\n", what);
    std::abort();
}

void AppendCodePoint(std::u16string& text, std::uint32_t codePoint) {
    if (codePoint < 0x10000) {
        text.push_back(static_cast<char16_t>(codePoint));
    } else {
        codePoint -= 0x10000;
        text.push_back(static_cast<char16_t>(0xD800 + (codePoint >> 10)));
        text.push_back(static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF)));
    }
}

// UTF-8 to UTF-16 that never fails: a byte that cannot start a sequence, a truncated sequence
// and an overlong or out-of-range one each become U+FFFD, and decoding resumes at the next
// byte that was not consumed. Encoded surrogates (ED A0 80 and the like) are passed on as lone
// surrogate units on purpose, so that UTF-8 seeds can reach the parser with them too.
std::u16string DecodeUtf8Leniently(const std::uint8_t* data, std::size_t size) {
    std::u16string text;
    text.reserve(size);
    std::size_t position = 0;
    while (position < size) {
        const std::uint8_t lead = data[position];
        std::size_t length = 0;
        std::uint32_t codePoint = 0;
        std::uint32_t minimum = 0;
        if (lead < 0x80) {
            text.push_back(lead);
            ++position;
            continue;
        }
        if (lead >= 0xC2 && lead <= 0xDF) {
            length = 2;
            codePoint = lead & 0x1Fu;
            minimum = 0x80;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            length = 3;
            codePoint = lead & 0x0Fu;
            minimum = 0x800;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            length = 4;
            codePoint = lead & 0x07u;
            minimum = 0x10000;
        } else {
            text.push_back(kReplacementCharacter);
            ++position;
            continue;
        }
        std::size_t consumed = 1;
        while (consumed < length && position + consumed < size &&
               (data[position + consumed] & 0xC0) == 0x80) {
            codePoint = (codePoint << 6) | (data[position + consumed] & 0x3Fu);
            ++consumed;
        }
        if (consumed < length || codePoint < minimum || codePoint > 0x10FFFF) {
            text.push_back(kReplacementCharacter);
        } else {
            AppendCodePoint(text, codePoint);
        }
        position += consumed;
    }
    return text;
}

std::u16string ReadUtf16Units(const std::uint8_t* data, std::size_t size) {
    std::u16string text;
    text.reserve(size / 2);
    for (std::size_t index = 0; index + 1 < size; index += 2) {
        text.push_back(static_cast<char16_t>(data[index] | (data[index + 1] << 8)));
    }
    return text;
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

void ParseAndCheck(const std::u16string& text) {
    static const std::u16string kFileName = u"fuzz.lt";
    Model::ResourceDictionary dictionary;
    try {
        Parsing::ParseLocFile(text, kFileName, dictionary);
    } catch (const Parsing::ParsingException& error) {
        const std::string_view message = error.what();
        if (!StartsWith(message, "parse error at file fuzz.lt line ") &&
            !StartsWith(message, "duplicate key found (keys are case insensitive): '")) {
            std::fprintf(stderr, "report: %s\n", error.what());
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
    const std::u16string text = (size > 0 && data[0] == 0x00) ? ReadUtf16Units(data + 1, size - 1)
                                                              : DecodeUtf8Leniently(data, size);
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
