#pragma once

#include "StringLocalizing/Parsing/SourceIterator.h"
#include "StringLocalizing/Parsing/SyntaxError.h"

#include <boost/spirit/home/support/info.hpp>

#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {

// The failure at `failure`, where `expected` did not match; `textBegin` is the first character
// of the parsed text.
SyntaxError MakeSyntaxError(const SourceIterator& failure, const boost::spirit::info& expected,
                            const SourceIterator& textBegin);

// The report of a syntax error, shared by every grammar of the engine. Four parts, each but
// the last ending in a line feed:
//   parse error at file F line L column C
//   "<the whole current input line>"
//   <C-1 blanks> ^- expecting <what was required> here
// When the literal "=" was required, the line ends with a hint that an earlier quoted string
// may be unterminated.
std::u16string RenderParseErrorReport(const SyntaxError& error);

}  // namespace LocalizationManager::StringLocalizing::Parsing
