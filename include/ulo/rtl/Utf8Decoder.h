#pragma once

// UTF-8 to UTF-16 decoding of whole files. Part of the platform layer: it stands in for the
// system's own decoder and keeps that decoder's contract.

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace ulo {

namespace detail {

constexpr char16_t kReplacementCharacter = 0xFFFD;

inline bool IsContinuationByte(unsigned char byte) noexcept {
    return (byte & 0xC0) == 0x80;
}

// Whether the 16 bytes at `bytes` are all ASCII: eight at a time, by their high bits.
inline bool IsAsciiBlock(const unsigned char* bytes) noexcept {
    std::uint64_t low;
    std::uint64_t high;
    std::memcpy(&low, bytes, sizeof low);
    std::memcpy(&high, bytes + sizeof low, sizeof high);
    return ((low | high) & 0x8080808080808080u) == 0;
}

}  // namespace detail

// Decodes `count` bytes of UTF-8 at `bytes` into at most `capacity` UTF-16 units at `output`
// and returns the number of units written, or 0 on failure: when `count` is 0, and when the
// output does not fit in `capacity` (the units written so far are then unspecified). A capacity
// of `count` units always suffices. Malformed input is not a failure: each maximal ill-formed
// subsequence (a stray continuation byte, a byte that begins no sequence, a sequence cut short
// by the end of input or by a byte that cannot continue it, an overlong form, an encoded
// surrogate, a value above U+10FFFF) becomes one U+FFFD, and decoding goes on with the next
// byte. Code points from U+10000 become surrogate pairs; NUL bytes become NUL units. Pure and
// thread-safe; `bytes` and `output` must not overlap.
inline std::size_t DecodeUtf8(const char* bytes, std::size_t count, char16_t* output,
                              std::size_t capacity) noexcept {
    if (count == 0) {
        return 0;
    }
    const auto* in = reinterpret_cast<const unsigned char*>(bytes);
    const unsigned char* const end = in + count;
    char16_t* out = output;
    char16_t* const outEnd = output + capacity;
    constexpr std::ptrdiff_t kBlock = 16;

    while (in != end) {
        const unsigned lead = *in;
        if (lead < 0x80) {
            // Localization files are mostly ASCII: widen whole blocks while they last. The copy
            // to a local block tells the compiler that input and output cannot overlap, so it
            // widens with vector instructions even at -O2 (twice as fast).
            while (end - in >= kBlock && outEnd - out >= kBlock) {
                unsigned char block[kBlock];
                std::memcpy(block, in, kBlock);
                if (!detail::IsAsciiBlock(block)) {
                    break;
                }
                for (std::ptrdiff_t index = 0; index < kBlock; ++index) {
                    out[index] = block[index];
                }
                in += kBlock;
                out += kBlock;
            }
            while (in != end && *in < 0x80) {
                if (out == outEnd) {
                    return 0;
                }
                *out++ = *in++;
            }
            continue;
        }

        const std::ptrdiff_t available = end - in;
        char32_t codePoint = 0;
        std::ptrdiff_t length = 0;  // of the valid sequence; 0 while none has been found
        std::ptrdiff_t invalidLength = 1;
        if (lead >= 0xC2 && lead <= 0xDF) {
            if (available >= 2 && detail::IsContinuationByte(in[1])) {
                codePoint = ((lead & 0x1Fu) << 6) | (in[1] & 0x3Fu);
                length = 2;
            }
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            // E0 would be overlong below A0; ED would encode a surrogate from A0.
            const unsigned low = lead == 0xE0 ? 0xA0 : 0x80;
            const unsigned high = lead == 0xED ? 0x9F : 0xBF;
            if (available >= 2 && in[1] >= low && in[1] <= high) {
                invalidLength = 2;
                if (available >= 3 && detail::IsContinuationByte(in[2])) {
                    codePoint = ((lead & 0x0Fu) << 12) | ((in[1] & 0x3Fu) << 6) | (in[2] & 0x3Fu);
                    length = 3;
                }
            }
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            // F0 would be overlong below 90; F4 would pass U+10FFFF from 90.
            const unsigned low = lead == 0xF0 ? 0x90 : 0x80;
            const unsigned high = lead == 0xF4 ? 0x8F : 0xBF;
            if (available >= 2 && in[1] >= low && in[1] <= high) {
                invalidLength = 2;
                if (available >= 3 && detail::IsContinuationByte(in[2])) {
                    invalidLength = 3;
                    if (available >= 4 && detail::IsContinuationByte(in[3])) {
                        codePoint = ((lead & 0x07u) << 18) | ((in[1] & 0x3Fu) << 12) |
                                    ((in[2] & 0x3Fu) << 6) | (in[3] & 0x3Fu);
                        length = 4;
                    }
                }
            }
        }

        if (length == 0) {
            if (out == outEnd) {
                return 0;
            }
            *out++ = detail::kReplacementCharacter;
            in += invalidLength;
        } else if (codePoint < 0x10000) {
            if (out == outEnd) {
                return 0;
            }
            *out++ = static_cast<char16_t>(codePoint);
            in += length;
        } else {
            if (outEnd - out < 2) {
                return 0;
            }
            codePoint -= 0x10000;
            *out++ = static_cast<char16_t>(0xD800 + (codePoint >> 10));
            *out++ = static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
            in += length;
        }
    }
    return static_cast<std::size_t>(out - output);
}

}  // namespace ulo
