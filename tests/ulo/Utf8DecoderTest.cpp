#include "ulo/rtl/TextConversion.h"
#include "ulo/rtl/Utf8Decoder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

namespace {

// The decoded text, with room for as many units as there are bytes; "<failed>" for a 0 result.
std::u16string Decode(const std::string& bytes) {
    std::u16string output(bytes.size(), u'\0');
    const std::size_t units =
        ulo::DecodeUtf8(bytes.data(), bytes.size(), &output[0], output.size());
    if (units == 0) {
        return u"<failed>";
    }
    EXPECT_LE(units, bytes.size());
    output.resize(units);
    return output;
}

TEST(Utf8DecoderTest, DecodesSequences) {
    const std::u16string r = u"\xFFFD";
    const std::string ascii32 = "0123456789abcdef0123456789ABCDEF";
    const struct {
        const char* name;
        std::string bytes;
        std::u16string expected;
    } cases[] = {
        {"ASCII", "Hello", u"Hello"},
        {"NUL", std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
        {"two bytes", "\xC3\xA9", u"\u00E9"},
        {"three bytes", "\xE2\x82\xAC", u"\u20AC"},
        {"four bytes", "\xF0\x9F\x98\x80", u"\xD83D\xDE00"},
        {"largest in the basic plane", "\xEF\xBF\xBF", u"\uFFFF"},
        {"largest code point", "\xF4\x8F\xBF\xBF", u"\xDBFF\xDFFF"},
        {"around the surrogates", "\xED\x9F\xBF\xEE\x80\x80", u"\uD7FF\uE000"},
        {"cut at the end", "a\xE2\x82", u"a" + r},
        {"four bytes cut at the end", "\xF0\x9F\x98", r},
        {"cut by ASCII", "\xE2\x82z", r + u"z"},
        {"cut by a lead byte", "\xC3\xC3\xA9", r + u"\u00E9"},
        {"lone continuation", "\x80", r},
        {"two continuations", "a\x80\xBF", u"a" + r + r},
        {"overlong two bytes", "\xC0\x80", r + r},
        {"overlong three bytes", "\xE0\x80\x80", r + r + r},
        {"overlong four bytes", "\xF0\x8F\xBF\xBF", r + r + r + r},
        {"encoded surrogate", "\xED\xA0\x80", r + r + r},
        {"above U+10FFFF", "\xF4\x90\x80\x80", r + r + r + r},
        {"no such lead", "\xF5\xFF", r + r},
        // Blocks of ASCII around multi-byte text, across every block boundary.
        {"mixed blocks", ascii32 + "\xC3\xA9" + ascii32 + "\xF0\x9F\x98\x80" + ascii32 + "\xE2",
         ulo::Utf8ToWide(ascii32) + u"\u00E9" + ulo::Utf8ToWide(ascii32) + u"\xD83D\xDE00" +
             ulo::Utf8ToWide(ascii32) + r},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        EXPECT_EQ(test.expected, Decode(test.bytes));
    }
}

TEST(Utf8DecoderTest, FailsOnEmptyInputAndShortOutput) {
    char16_t output[64] = {};
    const std::string ascii40(40, 'a');
    const struct {
        std::string bytes;
        std::size_t capacity;
        std::size_t units;
    } cases[] = {
        {"", 64, 0},
        {"A", 0, 0},
        {"AB", 1, 0},
        {"\xC3\xA9", 1, 1},
        {"\xF0\x9F\x98\x80", 1, 0},
        {"\xF0\x9F\x98\x80", 2, 2},
        {"\x80\x80", 1, 0},
        {ascii40, 39, 0},
        {ascii40, 40, 40},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(testing::Message() << test.bytes.size() << " bytes into " << test.capacity);
        EXPECT_EQ(test.units,
                  ulo::DecodeUtf8(test.bytes.data(), test.bytes.size(), output, test.capacity));
    }
}

TEST(Utf8DecoderTest, RoundTripsRandomText) {
    std::mt19937 random(20240611);
    // Weighted towards ASCII runs, as localization files are.
    std::uniform_int_distribution<int> kind(0, 9);
    std::u16string text;
    while (text.size() < 100000) {
        switch (kind(random)) {
            case 0:
                text +=
                    static_cast<char16_t>(std::uniform_int_distribution<int>(0x80, 0x7FF)(random));
                break;
            case 1: {
                auto unit = static_cast<char16_t>(
                    std::uniform_int_distribution<int>(0x800, 0xFFFF)(random));
                text += (unit >= 0xD800 && unit <= 0xDFFF) ? u'\uFFFD' : unit;
                break;
            }
            case 2: {
                const auto point = std::uniform_int_distribution<std::uint32_t>(0, 0xFFFFF)(random);
                text += static_cast<char16_t>(0xD800 + (point >> 10));
                text += static_cast<char16_t>(0xDC00 + (point & 0x3FF));
                break;
            }
            default:
                text.append(
                    std::uniform_int_distribution<std::size_t>(1, 40)(random),
                    static_cast<char16_t>(std::uniform_int_distribution<int>(0, 0x7F)(random)));
        }
    }
    EXPECT_EQ(text, Decode(ulo::WideToUtf8(text)));
}

}  // namespace
