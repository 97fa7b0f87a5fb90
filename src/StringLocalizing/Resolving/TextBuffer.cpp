#include "StringLocalizing/Resolving/TextBuffer.h"

#include <algorithm>
#include <stdexcept>

namespace LocalizationManager::StringLocalizing::Resolving {

void TextBuffer::Append(std::u16string_view text) {
    if (text.size() > capacity_ - size_) {
        const std::size_t limit = std::u16string_view().max_size();
        if (text.size() > limit - size_) {
            throw std::length_error("text too long");
        }
        const std::size_t needed = size_ + text.size();
        const std::size_t grown = capacity_ <= limit / 2 ? std::max(needed, 2 * capacity_) : needed;
        // Not value-initialised: every unit up to the size is written before it is read.
        std::unique_ptr<char16_t[]> larger(new char16_t[grown]);
        std::copy(data_, data_ + size_, larger.get());
        heap_ = std::move(larger);
        data_ = heap_.get();
        capacity_ = grown;
    }
    std::copy(text.begin(), text.end(), data_ + size_);
    size_ += text.size();
}

}  // namespace LocalizationManager::StringLocalizing::Resolving
