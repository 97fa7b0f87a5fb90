#include "TestSupport/ExpectThrowMessage.h"
#include "ulo/rtl/TextConversion.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace ulo {
namespace {

const char kInvalidUtf8[] =
    "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character";

std::string Misplaced(const std::string& unit) {
    return "Misplaced UTF-16 surrogate U+" + unit +
           " encountered while trying to encode UTF-32 sequence";
}

struct NarrowCase {
    const char* name;
    std::u16string wide;
    std::string narrow;
};

TEST(WideToNarrowMessageTest, EncodesEveryUnitOnItsOwn) {
    const NarrowCase cases[] = {
        {"empty", u"", ""},
        {"ascii", u"key", "key"},
        {"last one-byte unit", u"\x7F", "\x7F"},
        {"first two-byte unit", u"\x80", "\xC2\x80"},
        {"last two-byte unit", u"\x7FF", "\xDF\xBF"},
        {"first three-byte unit", u"\x800", "\xE0\xA0\x80"},
        {"last unit", u"\xFFFF", "\xEF\xBF\xBF"},
        {"lone high surrogate", std::u16string(1, 0xD800), "\xED\xA0\x80"},
        {"lone low surrogate", std::u16string(1, 0xDC00), "\xED\xB0\x80"},
        {"surrogate pair, one group per unit", u"\U0001F600", "\xED\xA0\xBD\xED\xB8\x80"},
        {"embedded zero", std::u16string(u"a\0b", 3), std::string("a\0b", 3)},
    };
    for (const NarrowCase& testCase : cases) {
        EXPECT_EQ(testCase.narrow, WideToNarrowMessage(testCase.wide)) << testCase.name;
    }
}

TEST(Utf8ConversionTest, WellFormedTextConvertsBothWays) {
    const struct {
        std::u16string wide;
        std::string utf8;
    } cases[] = {
        {u"", ""},
        {u"a\u00E9\u20AC", "a\xC3\xA9\xE2\x82\xAC"},
        {u"\U0001F600", "\xF0\x9F\x98\x80"},
        {u"\U0010FFFF", "\xF4\x8F\xBF\xBF"},
        {std::u16string(u"a\0b", 3), std::string("a\0b", 3)},
    };
    for (const auto& testCase : cases) {
        EXPECT_EQ(testCase.utf8, WideToUtf8(testCase.wide));
        EXPECT_EQ(testCase.wide, Utf8ToWide(testCase.utf8));
    }
}

TEST(WideToUtf8Test, MisplacedSurrogateNamesTheUnitTheLibraryReports) {
    const struct {
        const char* name;
        std::u16string wide;
        std::string unit;
    } cases[] = {
        {"lone low surrogate", std::u16string(1, 0xDC00), "0xdc00"},
        {"low surrogate after text", std::u16string{u'a', 0xDC00}, "0xdc00"},
        {"pair in the wrong order", std::u16string{0xDC00, 0xD800}, "0xdc00"},
        {"lone high surrogate", std::u16string(1, 0xD800), "0xd800"},
        {"high surrogate at the end", std::u16string{u'a', 0xD801}, "0xd801"},
        {"two high surrogates at the end", std::u16string{0xD800, 0xD801}, "0xd801"},
        // The library names the unit that fails to complete the pair, not the surrogate.
        {"high surrogate before text", std::u16string{0xD800, u'a'}, "0x61"},
        {"high surrogate before a pair", std::u16string{0xD800, 0xD800, 0xDC00}, "0xd800"},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        EXPECT_THROW_MSG(WideToUtf8(testCase.wide), std::out_of_range, Misplaced(testCase.unit));
    }
}

TEST(Utf8ToWideTest, MoreThanFourLeadingOnesReadAsFour) {
    // The lead byte's bits above the four-byte width are masked away.
    EXPECT_EQ(u"\U00010000", Utf8ToWide("\xF8\x90\x80\x80"));
    EXPECT_EQ(u"\U00100000", Utf8ToWide("\xFC\x80\x80\x80"));
}

TEST(Utf8ToWideTest, MalformedInputFailsWithOneMessage) {
    const struct {
        const char* name;
        std::string narrow;
    } cases[] = {
        {"starts with a continuation byte", "\x80"},
        {"continuation byte after text", "a\x80"},
        {"stray continuation byte", "\xC3\xA9\xBF"},
        {"truncated sequence", "\xC3"},
        {"truncated four-byte sequence", "a\xF0\x9F\x98"},
        {"above U+10FFFF", "\xF4\x90\x80\x80"},
        // This Boost also refuses what older versions let through: a second byte that is no
        // continuation byte, an overlong form and an encoded surrogate.
        {"non-continuation byte inside a sequence", "\xC3\x41"},
        {"overlong form", "\xC0\x80"},
        {"encoded surrogate", "\xED\xA0\x80"},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        EXPECT_THROW_MSG(Utf8ToWide(testCase.narrow), std::out_of_range, kInvalidUtf8);
    }
}

// "Invalid UTF-32 code point U+... encountered while trying to encode UTF-16 sequence" cannot
// come out of these helpers: the UTF-8 decoder refuses values above U+10FFFF and surrogates
// before they reach the UTF-16 encoder, and UTF-16 decoding cannot produce such values for the
// UTF-8 encoder. This sweeps the encoded surrogates, the four-byte sequences around U+10FFFF and
// every lead byte that is read as a four-byte one.
TEST(Utf8ToWideTest, NoInputReachesTheUtf32Failure) {
    std::vector<std::string> inputs;
    const char edges[] = {'\x80', '\xBF'};
    for (int second = 0x80; second <= 0xBF; ++second) {
        for (const char third : edges) {
            inputs.push_back({'\xED', static_cast<char>(second), third});
        }
        for (int lead = 0xF0; lead <= 0xFF; ++lead) {
            for (const char third : edges) {
                for (const char fourth : edges) {
                    inputs.push_back(
                        {static_cast<char>(lead), static_cast<char>(second), third, fourth});
                }
            }
        }
    }
    for (const std::string& input : inputs) {
        try {
            Utf8ToWide(input);
        } catch (const std::out_of_range& error) {
            ASSERT_EQ(std::string(kInvalidUtf8), error.what()) << ::testing::PrintToString(input);
        }
    }
}

}  // namespace
}  // namespace ulo
