#pragma once

#include <cstddef>
#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {

// What a grammar required where the parse failed.
enum class ExpectedKind {
    kElement,     // a named rule, written "<value>" in the report
    kLiteral,     // a literal text, written "\"=\""
    kEndOfInput,  // the end of the file, written "<eoi>"
};

// A required element that did not match, as data: the report is rendered from it.
struct SyntaxError {
    std::u16string fileName;
    std::size_t line = 0;
    // As the report counts: a tab advances to the next of columns 1, 5, 9, ...
    std::size_t column = 0;
    // UTF-16 units from the start of the text to the failing character.
    std::size_t offset = 0;
    // The whole input line the failure stands in, without its line break.
    std::u16string lineText;
    ExpectedKind expectedKind = ExpectedKind::kElement;
    // What was required as the report writes it: "<value>", "\"=\"" or "<eoi>".
    std::u16string expected;
};

// The report of a syntax error, shared by every grammar of the engine. Four parts, each but
// the last ending in a line feed:
//   parse error at file F line L column C
//   "<the whole current input line>"
//   <C-1 blanks> ^- expecting <what was required> here
// When the literal "=" was required, the line ends with a hint that an earlier quoted string
// may be unterminated.
std::u16string RenderParseErrorReport(const SyntaxError& error);

// The report's last part after the caret: "expecting <what was required> here", with the hint
// where the report has one.
std::u16string RenderExpectation(const SyntaxError& error);

}  // namespace LocalizationManager::StringLocalizing::Parsing
