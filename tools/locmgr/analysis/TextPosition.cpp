#include "TextPosition.h"

namespace locmgr::analysis {

namespace {

constexpr int kTabWidth = 4;

}  // namespace

void PositionCounter::Advance(std::size_t offset) {
    if (offset != offset_ || offset_ >= text_.size()) {
        return;
    }
    const char16_t unit = text_[offset_];
    ++offset_;
    if (unit == u'\n' || (unit == u'\r' && (offset_ >= text_.size() || text_[offset_] != u'\n'))) {
        ++position_.line;
        position_.column = 1;
        position_.unitColumn = 1;
        return;
    }
    if (unit == u'\r') {
        // The line feed that follows ends this line.
        return;
    }
    position_.column = unit == u'\t' ? ((position_.column - 1) / kTabWidth + 1) * kTabWidth + 1
                                     : position_.column + 1;
    ++position_.unitColumn;
}

void PositionCounter::AdvanceTo(std::size_t offset) {
    while (offset_ < offset && offset_ < text_.size()) {
        Advance(offset_);
    }
}

int UnitColumnOf(const std::u16string& text, int line, int column) {
    PositionCounter counter(text);
    while (counter.Offset() < text.size()) {
        const TextPosition& position = counter.Position();
        if (position.line > line || (position.line == line && position.column >= column)) {
            break;
        }
        counter.Advance(counter.Offset());
    }
    const TextPosition& position = counter.Position();
    return position.line == line && position.column == column ? position.unitColumn : column;
}

}  // namespace locmgr::analysis
