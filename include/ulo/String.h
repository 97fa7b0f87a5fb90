#pragma once

// The framework string: the type in which component interfaces take and return keys, scopes
// and texts. It crosses the module boundary, so it holds no standard library type: a pointer
// to a zero-terminated buffer and a length. Conversions to and from std::basic_string copy the
// characters.

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

namespace ulo::types {

namespace detail {

// The one place where framework strings get and return memory. Without a framework allocator
// the memory comes from the process heap.
inline void* AllocateStringMemory(std::size_t bytes) {
    void* memory = std::malloc(bytes);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

inline void FreeStringMemory(void* memory) noexcept {
    std::free(memory);
}

}  // namespace detail

// An owning, always zero-terminated string of CharT. A string that never held a character owns
// no memory. Every operation that allocates throws std::bad_alloc when memory cannot be had and
// then leaves the string unchanged. Not thread-safe; distinct objects are independent.
template <class CharT>
class basic_string_t {
    static_assert(std::is_trivial_v<CharT>, "characters are copied as raw memory");

  public:
    using value_type = CharT;
    using size_type = std::size_t;

    basic_string_t() noexcept = default;

    // Copies `size` characters from `text`, which may be null only when `size` is 0. The copy
    // may hold zero characters of its own; c_str() stops at the first of them.
    basic_string_t(const CharT* text, size_type size) { assign(text, size); }

    // Copies a zero-terminated text; a null pointer gives the empty string.
    basic_string_t(const CharT* text) {
        if (text != nullptr) {
            assign(text, std::char_traits<CharT>::length(text));
        }
    }

    explicit basic_string_t(const std::basic_string<CharT>& text) {
        assign(text.data(), text.size());
    }

    basic_string_t(const basic_string_t& other) { assign(other.data_, other.size_); }

    basic_string_t(basic_string_t&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)),
          size_(std::exchange(other.size_, 0)),
          capacity_(std::exchange(other.capacity_, 0)) {}

    basic_string_t& operator=(const basic_string_t& other) {
        if (this != &other) {
            assign(other.data_, other.size_);
        }
        return *this;
    }

    basic_string_t& operator=(basic_string_t&& other) noexcept {
        basic_string_t taken(std::move(other));
        swap(taken);
        return *this;
    }

    ~basic_string_t() { detail::FreeStringMemory(data_); }

    // Replaces the content with `size` characters from `text`; `text` may point into this
    // string's own buffer. A buffer that already holds `size` characters is reused, so a
    // string that receives texts over and over allocates only when a text is longer than any
    // before it.
    void assign(const CharT* text, size_type size) {
        if (size != 0 && size <= capacity_) {
            std::memmove(data_, text, size * sizeof(CharT));
            SetSize(size);
            return;
        }
        CharT* buffer = Allocate(size);
        if (size != 0) {
            std::memcpy(buffer, text, size * sizeof(CharT));
        }
        Replace(buffer, size);
    }

    // Keeps the first min(size, size()) characters and fills the rest with zero characters.
    void resize(size_type size) {
        const size_type kept = size < size_ ? size : size_;
        if (size != 0 && size <= capacity_) {
            std::fill(data_ + kept, data_ + size, CharT());
            SetSize(size);
            return;
        }
        CharT* buffer = Allocate(size);
        if (kept != 0) {
            std::memcpy(buffer, data_, kept * sizeof(CharT));
        }
        std::fill(buffer + kept, buffer + size, CharT());
        Replace(buffer, size);
    }

    // Empties the string and keeps its buffer for the texts to come.
    void clear() noexcept {
        if (data_ != nullptr) {
            SetSize(0);
        }
    }

    void swap(basic_string_t& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
    }

    size_type size() const noexcept { return size_; }
    // How many characters the buffer holds without allocating again.
    size_type capacity() const noexcept { return capacity_; }
    bool empty() const noexcept { return size_ == 0; }

    // Never null; valid until the string is next changed or destroyed.
    const CharT* c_str() const noexcept { return data_ != nullptr ? data_ : &kEmpty; }
    const CharT* data() const noexcept { return c_str(); }

    // Precondition: index < size().
    CharT& operator[](size_type index) noexcept { return data_[index]; }
    const CharT& operator[](size_type index) const noexcept { return data_[index]; }

    const CharT* begin() const noexcept { return c_str(); }
    const CharT* end() const noexcept { return c_str() + size_; }

    std::basic_string<CharT> ToStdString() const {
        return std::basic_string<CharT>(c_str(), size_);
    }

    friend bool operator==(const basic_string_t& left, const basic_string_t& right) noexcept {
        return left.size_ == right.size_ &&
               std::char_traits<CharT>::compare(left.c_str(), right.c_str(), left.size_) == 0;
    }

    friend bool operator!=(const basic_string_t& left, const basic_string_t& right) noexcept {
        return !(left == right);
    }

  private:
    static constexpr CharT kEmpty = CharT();

    // A buffer for `size` characters and the terminator, the terminator already written.
    // Nothing is allocated for an empty string.
    static CharT* Allocate(size_type size) {
        if (size == 0) {
            return nullptr;
        }
        if (size > (static_cast<size_type>(-1) / sizeof(CharT)) - 1) {
            throw std::bad_alloc();
        }
        auto* buffer =
            static_cast<CharT*>(detail::AllocateStringMemory((size + 1) * sizeof(CharT)));
        buffer[size] = CharT();
        return buffer;
    }

    void Replace(CharT* buffer, size_type size) noexcept {
        detail::FreeStringMemory(data_);
        data_ = buffer;
        size_ = size;
        capacity_ = size;
    }

    // Within the capacity: the characters are in place, the terminator is not yet.
    void SetSize(size_type size) noexcept {
        data_[size] = CharT();
        size_ = size;
    }

    CharT* data_ = nullptr;
    size_type size_ = 0;
    size_type capacity_ = 0;
};

}  // namespace ulo::types

namespace ulo {

// The framework strings of component interfaces: 16-bit text (keys, scopes, texts, paths) and
// narrow text (culture names and subtags).
using string16_t = types::basic_string_t<char16_t>;
using string8_t = types::basic_string_t<char>;

}  // namespace ulo
