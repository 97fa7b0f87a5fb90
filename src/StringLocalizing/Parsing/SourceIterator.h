#pragma once

// The iterator both grammars run on: UTF-16 text with file name, line and column tracking for
// error reports (tab stops every 4 columns).

#include <boost/spirit/include/classic_position_iterator.hpp>

#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {

using SourcePosition = boost::spirit::classic::file_position_base<std::u16string>;
using SourceIterator =
    boost::spirit::classic::position_iterator2<std::u16string::const_iterator, SourcePosition>;

constexpr unsigned kTabWidth = 4;

// The iterator at the first character of `text`, at line 1, column 1 of `fileName`. `text`
// must outlive every copy of the iterator.
inline SourceIterator MakeSourceBegin(const std::u16string& text, const std::u16string& fileName) {
    SourceIterator begin(text.begin(), text.end(), SourcePosition(fileName));
    begin.set_tabchars(kTabWidth);
    return begin;
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
