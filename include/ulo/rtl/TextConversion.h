#pragma once

// Conversions between the engine's wide (UTF-16) text and narrow text. Decoding and
// encoding go through the Boost.Regex Unicode iterators; their std::out_of_range reports
// are passed on unchanged.

#include <boost/regex/pending/unicode_iterator.hpp>

#include <cstdint>
#include <iterator>
#include <string>

namespace ulo {

// Narrow text for exception messages: every 16-bit unit is encoded on its own as if it were a
// code point, so surrogates are never paired and a lone surrogate is not an error. A
// character outside the basic plane becomes two three-byte groups. Never throws (other than
// std::bad_alloc).
inline std::string WideToNarrowMessage(const std::u16string& text) {
    std::string result;
    result.reserve(text.size());
    for (const char16_t character : text) {
        const auto unit = static_cast<std::uint32_t>(character);
        if (unit < 0x80) {
            result.push_back(static_cast<char>(unit));
        } else if (unit < 0x800) {
            result.push_back(static_cast<char>(0xC0 | (unit >> 6)));
            result.push_back(static_cast<char>(0x80 | (unit & 0x3F)));
        } else {
            result.push_back(static_cast<char>(0xE0 | (unit >> 12)));
            result.push_back(static_cast<char>(0x80 | ((unit >> 6) & 0x3F)));
            result.push_back(static_cast<char>(0x80 | (unit & 0x3F)));
        }
    }
    return result;
}

// Proper UTF-16 to UTF-8: surrogate pairs become one four-byte sequence. Throws
// std::out_of_range ("Misplaced UTF-16 surrogate U+0x... encountered while trying to encode
// UTF-32 sequence") for a surrogate that is not part of a pair.
inline std::string WideToUtf8(const std::u16string& text) {
    using Utf32Iterator = boost::u16_to_u32_iterator<std::u16string::const_iterator, std::uint32_t>;
    using Utf8Output = boost::utf8_output_iterator<std::back_insert_iterator<std::string>>;

    std::string result;
    result.reserve(text.size());
    // The range-checked iterators refuse a range that starts or ends inside a surrogate pair,
    // so decoding never reads outside the text.
    const Utf32Iterator first(text.begin(), text.begin(), text.end());
    const Utf32Iterator last(text.end(), text.begin(), text.end());
    Utf8Output output{std::back_inserter(result)};
    for (Utf32Iterator position = first; position != last; ++position) {
        *output++ = *position;
    }
    return result;
}

// UTF-8 to UTF-16: code points from U+10000 up become surrogate pairs. Throws
// std::out_of_range ("Invalid UTF-8 sequence encountered while trying to encode UTF-32
// character") for a malformed sequence.
inline std::u16string Utf8ToWide(const std::string& text) {
    using Utf32Iterator = boost::u8_to_u32_iterator<std::string::const_iterator, std::uint32_t>;
    using Utf16Output = boost::utf16_output_iterator<std::back_insert_iterator<std::u16string>>;

    std::u16string result;
    result.reserve(text.size());
    const Utf32Iterator first(text.begin(), text.begin(), text.end());
    const Utf32Iterator last(text.end(), text.begin(), text.end());
    Utf16Output output{std::back_inserter(result)};
    for (Utf32Iterator position = first; position != last; ++position) {
        *output++ = *position;
    }
    return result;
}

}  // namespace ulo
