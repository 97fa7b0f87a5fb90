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

}  // namespace LocalizationManager::StringLocalizing::Parsing
