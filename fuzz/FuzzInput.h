#pragma once

// Turns the bytes of a fuzzer input into the wide text a parser sees, the same way for every
// fuzz target, so that one seed format (a plain text file) serves them all.
//
// When the first byte is 0x00, the remaining bytes are read as little-endian UTF-16 code units
// (an odd last byte is dropped), which reaches the parser with any unit sequence, lone
// surrogates and NULs included. Otherwise the whole input is UTF-8, decoded leniently so that
// no input is wasted.

#include <cstddef>
#include <cstdint>
#include <string>

namespace LocalizationManager::Fuzzing {

constexpr char16_t kReplacementCharacter = 0xFFFD;

inline void AppendCodePoint(std::u16string& text, std::uint32_t codePoint) {
    if (codePoint < 0x10000) {
        text.push_back(static_cast<char16_t>(codePoint));
    } else {
        codePoint -= 0x10000;
        text.push_back(static_cast<char16_t>(0xD800 + (codePoint >> 10)));
        text.push_back(static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF)));
    }
}

// UTF-8 to UTF-16 that never fails: a byte that cannot start a sequence, a truncated sequence
// and an overlong or out-of-range one each become U+FFFD, and decoding resumes at the next
// byte that was not consumed. Encoded surrogates (ED A0 80 and the like) are passed on as lone
// surrogate units on purpose, so that UTF-8 seeds can reach the parser with them too.
inline std::u16string DecodeUtf8Leniently(const std::uint8_t* data, std::size_t size) {
    std::u16string text;
    text.reserve(size);
    std::size_t position = 0;
    while (position < size) {
        const std::uint8_t lead = data[position];
        std::size_t length = 0;
        std::uint32_t codePoint = 0;
        std::uint32_t minimum = 0;
        if (lead < 0x80) {
            text.push_back(lead);
            ++position;
            continue;
        }
        if (lead >= 0xC2 && lead <= 0xDF) {
            length = 2;
            codePoint = lead & 0x1Fu;
            minimum = 0x80;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            length = 3;
            codePoint = lead & 0x0Fu;
            minimum = 0x800;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            length = 4;
            codePoint = lead & 0x07u;
            minimum = 0x10000;
        } else {
            text.push_back(kReplacementCharacter);
            ++position;
            continue;
        }
        std::size_t consumed = 1;
        while (consumed < length && position + consumed < size &&
               (data[position + consumed] & 0xC0) == 0x80) {
            codePoint = (codePoint << 6) | (data[position + consumed] & 0x3Fu);
            ++consumed;
        }
        if (consumed < length || codePoint < minimum || codePoint > 0x10FFFF) {
            text.push_back(kReplacementCharacter);
        } else {
            AppendCodePoint(text, codePoint);
        }
        position += consumed;
    }
    return text;
}

inline std::u16string ReadUtf16Units(const std::uint8_t* data, std::size_t size) {
    std::u16string text;
    text.reserve(size / 2);
    for (std::size_t index = 0; index + 1 < size; index += 2) {
        text.push_back(static_cast<char16_t>(data[index] | (data[index + 1] << 8)));
    }
    return text;
}

// The text of one fuzzer input, as described at the top of this file.
inline std::u16string DecodeFuzzInput(const std::uint8_t* data, std::size_t size) {
    return (size > 0 && data[0] == 0x00) ? ReadUtf16Units(data + 1, size - 1)
                                         : DecodeUtf8Leniently(data, size);
}

}  // namespace LocalizationManager::Fuzzing
