#include "TextPosition.h"

#include <algorithm>

namespace locmgr::analysis {

LineStarts::LineStarts(const std::u16string& text) {
    starts_.push_back(0);
    for (std::size_t offset = 0; offset < text.size(); ++offset) {
        const char16_t unit = text[offset];
        if (unit == u'\r' && offset + 1 < text.size() && text[offset + 1] == u'\n') {
            ++offset;
        }
        if (unit == u'\r' || unit == u'\n') {
            starts_.push_back(offset + 1);
        }
    }
}

TextPosition LineStarts::PositionOf(
    const LocalizationManager::StringLocalizing::Parsing::SourcePoint& point) const {
    if (point.line == 0 || point.line > starts_.size() || point.offset < starts_[point.line - 1]) {
        return TextPosition{0, 0, 0};
    }
    return TextPosition{static_cast<int>(point.line), static_cast<int>(point.column),
                        static_cast<int>(point.offset - starts_[point.line - 1] + 1)};
}

int LineStarts::LineOf(std::size_t offset) const {
    return static_cast<int>(std::upper_bound(starts_.begin(), starts_.end(), offset) -
                            starts_.begin());
}

}  // namespace locmgr::analysis
