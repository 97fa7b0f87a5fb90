#pragma once

// Positions as the checks print them. Lines and columns are the engine's own (those of its
// parse error reports); the unit column is what editors and code-scanning viewers count.

#include "StringLocalizing/Parsing/SourceIndex.h"

#include <cstddef>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct TextPosition {
    int line = 1;
    // As the runtime's reports count: a tab advances to the next of 1, 5, 9, ...
    int column = 1;
    // UTF-16 units from the start of the line, from 1 (editors know nothing of the runtime's
    // tab stops).
    int unitColumn = 1;
};

// Where the lines of a text begin, to turn the places the engine records into positions. A
// line ends at a line feed, at a carriage return, or at both in this order, as the engine's
// reports count lines.
class LineStarts {
  public:
    explicit LineStarts(const std::u16string& text);

    // Where `point` stands; line 0 when the engine recorded no line for it.
    TextPosition PositionOf(
        const LocalizationManager::StringLocalizing::Parsing::SourcePoint& point) const;

    // The line, from 1, that the unit at `offset` stands in.
    int LineOf(std::size_t offset) const;

  private:
    std::vector<std::size_t> starts_;  // offset of each line's first unit, line 1 first
};

}  // namespace locmgr::analysis
