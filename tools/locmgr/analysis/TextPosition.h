#pragma once

// Lines and columns as the runtime's parse reports count them, so that every position the
// checks print points at the same place as the report the module would write for that file.

#include <cstddef>
#include <string>

namespace locmgr::analysis {

struct TextPosition {
    int line = 1;
    // As the runtime's reports count: a tab advances to the next of 1, 5, 9, ...
    int column = 1;
    // UTF-16 units from the start of the line, from 1: what editors and code-scanning viewers
    // count (they know nothing of the runtime's tab stops).
    int unitColumn = 1;
};

// Walks a text unit by unit and keeps the position of the next unit. A line ends at a line
// feed, at a carriage return, or at both in this order.
class PositionCounter {
  public:
    explicit PositionCounter(const std::u16string& text) : text_(text) {}

    // Moves past the unit at `offset`, which must be the offset reached so far.
    void Advance(std::size_t offset);
    // Moves forward to `offset`.
    void AdvanceTo(std::size_t offset);

    std::size_t Offset() const { return offset_; }
    const TextPosition& Position() const { return position_; }

  private:
    const std::u16string& text_;
    std::size_t offset_ = 0;
    TextPosition position_;
};

// The UTF-16 column of the unit that the runtime places at `line` and `column` of `text`; the
// column itself when the line is shorter (a report may point just past its end).
int UnitColumnOf(const std::u16string& text, int line, int column);

}  // namespace locmgr::analysis
