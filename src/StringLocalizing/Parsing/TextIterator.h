#pragma once

// The iterator of the fast localization file parse: plain UTF-16 text, no position tracking,
// so copying it costs nothing. Reports need a line and a column, so they come from a second
// parse on SourceIterator.

#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {

using TextIterator = std::u16string::const_iterator;

}  // namespace LocalizationManager::StringLocalizing::Parsing
