#include "localization_manager/host/StringConversion.h"

#include "ulo/rtl/Utf8Decoder.h"

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace localization_manager::host {

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

bool IsSurrogate(std::uint32_t unit) {
    return (unit & 0xF800u) == 0xD800u;
}

bool IsHighSurrogate(std::uint32_t unit) {
    return (unit & 0xFC00u) == 0xD800u;
}

bool IsLowSurrogate(std::uint32_t unit) {
    return (unit & 0xFC00u) == 0xDC00u;
}

// The UTF-8 size of the unit at `index`: one byte below U+0080, two below U+0800, else three;
// a pair four, a lone surrogate three (its U+FFFD). Advances `index` past the unit or the pair.
std::size_t ScalarSize(const char16_t* units, std::size_t count, std::size_t& index) {
    const std::uint32_t unit = units[index++];
    if (unit < 0x80u) {
        return 1;
    }
    if (unit < 0x800u) {
        return 2;
    }
    if (IsHighSurrogate(unit) && index < count && IsLowSurrogate(units[index])) {
        ++index;
        return 4;
    }
    return 3;
}

#if defined(__SSE2__)

// Texts are mostly ASCII, so the work is in runs of ASCII units: eight at a time, tested by
// their high bits and narrowed without a branch per unit.
constexpr std::size_t kBlock = 8;

// A bit per byte of the eight units of `block` whose bits under `mask` are not all zero.
int BytesWithAny(__m128i block, std::uint16_t mask) {
    const __m128i masked = _mm_and_si128(block, _mm_set1_epi16(static_cast<short>(mask)));
    return _mm_movemask_epi8(_mm_cmpeq_epi16(masked, _mm_setzero_si128())) ^ 0xFFFF;
}

__m128i LoadBlock(const char16_t* units) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
}

// The number of ASCII units at the start of `units`, narrowed into `out` on the way. A block
// that holds another unit is narrowed as well, its bytes from that unit on wrong: the caller
// writes them again. Every store stays within the output, since each unit of the block still
// needs a byte at least. The last block of a text may overlap the one before it; its first
// units are ASCII then, and narrowed to the same bytes again.
std::size_t AsciiRun(const char16_t* units, std::size_t count, char* out) {
    if (count < kBlock) {
        std::size_t length = 0;
        for (; length < count && units[length] < 0x80u; ++length) {
            out[length] = static_cast<char>(units[length]);
        }
        return length;
    }
    for (std::size_t at = 0;; at += kBlock) {
        const bool last = count - at <= kBlock;
        if (last) {
            at = count - kBlock;
        }
        const __m128i block = LoadBlock(units + at);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(out + at), _mm_packus_epi16(block, block));
        if (const int other = BytesWithAny(block, 0xFF80)) {
            return at + static_cast<std::size_t>(__builtin_ctz(static_cast<unsigned>(other))) / 2;
        }
        if (last) {
            return count;
        }
    }
}

// Lanes of all ones for the units of `block` whose bits under `mask` are not all zero.
__m128i UnitsWithAny(__m128i block, std::uint16_t mask) {
    const __m128i masked = _mm_and_si128(block, _mm_set1_epi16(static_cast<short>(mask)));
    return _mm_xor_si128(_mm_cmpeq_epi16(masked, _mm_setzero_si128()), _mm_set1_epi32(-1));
}

// The exact UTF-8 size, so that the output is sized once and written through a pointer: one
// byte a unit, one more from U+0080 and another from U+0800, counted a block at a time (as
// bytes of one, summed). Surrogates are rare: a block with one is counted unit by unit.
std::size_t EncodedSize(const char16_t* units, std::size_t count) {
    std::size_t size = 0;
    std::size_t index = 0;
    __m128i extra = _mm_setzero_si128();  // two 64-bit sums
    while (count - index >= kBlock) {
        const __m128i block = LoadBlock(units + index);
        const __m128i top = _mm_and_si128(block, _mm_set1_epi16(static_cast<short>(0xF800)));
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(top, _mm_set1_epi16(static_cast<short>(0xD800))))) {
            for (const std::size_t end = index + kBlock; index < end;) {
                size += ScalarSize(units, count, index);
            }
            continue;
        }
        const __m128i more =
            _mm_packs_epi16(UnitsWithAny(block, 0xFF80), UnitsWithAny(block, 0xF800));
        extra = _mm_add_epi64(
            extra, _mm_sad_epu8(_mm_and_si128(more, _mm_set1_epi8(1)), _mm_setzero_si128()));
        size += kBlock;
        index += kBlock;
    }
    while (index < count) {
        size += ScalarSize(units, count, index);
    }
    std::uint64_t sums[2];
    _mm_storeu_si128(reinterpret_cast<__m128i*>(sums), extra);
    return size + static_cast<std::size_t>(sums[0] + sums[1]);
}

#else

std::size_t AsciiRun(const char16_t* units, std::size_t count, char* out) {
    std::size_t length = 0;
    for (; length < count && units[length] < 0x80u; ++length) {
        out[length] = static_cast<char>(units[length]);
    }
    return length;
}

std::size_t EncodedSize(const char16_t* units, std::size_t count) {
    std::size_t size = 0;
    for (std::size_t index = 0; index < count;) {
        size += ScalarSize(units, count, index);
    }
    return size;
}

#endif

char* EncodeThreeBytes(std::uint32_t codePoint, char* out) {
    out[0] = static_cast<char>(0xE0u | (codePoint >> 12));
    out[1] = static_cast<char>(0x80u | ((codePoint >> 6) & 0x3Fu));
    out[2] = static_cast<char>(0x80u | (codePoint & 0x3Fu));
    return out + 3;
}

// Writes exactly EncodedSize(units, count) bytes.
void Encode(const char16_t* units, std::size_t count, char* out) {
    std::size_t index = 0;
    while (index < count) {
        // Runs of ASCII go a block at a time; words of other letters, a unit at a time.
        if (units[index] < 0x80u) {
            const std::size_t run = AsciiRun(units + index, count - index, out);
            index += run;
            out += run;
            continue;
        }
        const std::uint32_t unit = units[index++];
        if (unit < 0x800u) {
            out[0] = static_cast<char>(0xC0u | (unit >> 6));
            out[1] = static_cast<char>(0x80u | (unit & 0x3Fu));
            out += 2;
        } else if (!IsSurrogate(unit)) {
            out = EncodeThreeBytes(unit, out);
        } else if (IsHighSurrogate(unit) && index < count && IsLowSurrogate(units[index])) {
            const std::uint32_t codePoint =
                0x10000u + ((unit - 0xD800u) << 10) + (units[index++] - 0xDC00u);
            out[0] = static_cast<char>(0xF0u | (codePoint >> 18));
            out[1] = static_cast<char>(0x80u | ((codePoint >> 12) & 0x3Fu));
            out[2] = static_cast<char>(0x80u | ((codePoint >> 6) & 0x3Fu));
            out[3] = static_cast<char>(0x80u | (codePoint & 0x3Fu));
            out += 4;
        } else {
            out = EncodeThreeBytes(kReplacement, out);
        }
    }
}

}  // namespace

std::u16string Utf8ToUtf16(std::string_view utf8) {
    // The module's own decoder, so that a host and the module read the same bytes as the same
    // text. It needs at most one unit a byte; its one failure, empty input, yields the right
    // length as well.
    std::u16string out(utf8.size(), u'\0');
    out.resize(ulo::DecodeUtf8(utf8.data(), utf8.size(), out.data(), out.size()));
    return out;
}

void Utf16ToUtf8(std::u16string_view utf16, std::string& out) {
    // Most texts are ASCII through and through: sized for that, they are narrowed in one pass.
    // Any other text is sized exactly from its first other unit on, and written from there.
    const char16_t* const units = utf16.data();
    const std::size_t count = utf16.size();
    out.resize(count);
    const std::size_t ascii = AsciiRun(units, count, out.data());
    if (ascii != count) {
        out.resize(ascii + EncodedSize(units + ascii, count - ascii));
        Encode(units + ascii, count - ascii, out.data() + ascii);
    }
}

std::string Utf16ToUtf8(std::u16string_view utf16) {
    std::string out;
    Utf16ToUtf8(utf16, out);
    return out;
}

ulo::string16_t ToFrameworkString(std::string_view utf8) {
    ulo::string16_t out;
    if (utf8.empty()) {
        return out;
    }
    // Decoded in place: one allocation, of one unit a byte (what the decoder may need).
    out.resize(utf8.size());
    out.resize(ulo::DecodeUtf8(utf8.data(), utf8.size(), &out[0], out.size()));
    return out;
}

void ToUtf8(const ulo::string16_t& text, std::string& out) {
    Utf16ToUtf8(std::u16string_view(text.c_str(), text.size()), out);
}

std::string ToUtf8(const ulo::string16_t& text) {
    return Utf16ToUtf8(std::u16string_view(text.c_str(), text.size()));
}

}  // namespace localization_manager::host
