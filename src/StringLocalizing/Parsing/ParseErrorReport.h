#pragma once

#include "StringLocalizing/Parsing/SourceIterator.h"

#include <boost/spirit/home/support/info.hpp>

#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {

// The report of a required element that did not match, shared by every grammar of the
// engine. Four parts, each but the last ending in a line feed:
//   parse error at file F line L column C
//   "<the whole current input line>"
//   <C-1 blanks> ^- expecting <what was required> here
// where what was required is a rule name in angle brackets ("<value>"), a literal in double
// quotes ("\"=\"") or "<eoi>". When the literal "=" was required, the line ends with a hint
// that an earlier quoted string may be unterminated.
std::u16string BuildParseErrorReport(const SourceIterator& failure,
                                     const boost::spirit::info& expected);

// The "expecting" description of `expected`, as the report writes it.
std::u16string DescribeExpected(const boost::spirit::info& expected);

}  // namespace LocalizationManager::StringLocalizing::Parsing
