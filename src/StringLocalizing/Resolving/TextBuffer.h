#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace LocalizationManager::StringLocalizing::Resolving {

// Where a request's text is put together: the first units are kept inside the object, so that
// a text of ordinary length, made on the stack of a request, costs no allocation; longer texts
// move to the heap. Not copyable; one request at a time.
class TextBuffer {
  public:
    TextBuffer() = default;
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;

    // Throws std::bad_alloc, or std::length_error past the size a buffer can hold, and then
    // keeps its text.
    void Append(std::u16string_view text);
    void Clear() noexcept { size_ = 0; }
    // Replaces the text with `text`, which must not lie in this buffer, and returns View().
    std::u16string_view Assign(std::u16string_view text) {
        Clear();
        Append(text);
        return View();
    }

    // Valid until the buffer is next changed or destroyed.
    std::u16string_view View() const noexcept { return {data_, size_}; }

  private:
    static constexpr std::size_t kInlineUnits = 256;

    char16_t inline_[kInlineUnits];
    std::unique_ptr<char16_t[]> heap_;
    char16_t* data_ = inline_;
    std::size_t size_ = 0;
    std::size_t capacity_ = kInlineUnits;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
