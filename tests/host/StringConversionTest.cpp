#include "localization_manager/host/StringConversion.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace localization_manager::host {
namespace {

// The rules for malformed input belong to the platform layer's decoder and are tested with it;
// these cases check what the host adds around it: malformed input on either side becomes U+FFFD.
TEST(StringConversionTest, Utf8AndUtf16) {
    const std::u16string r = u"\uFFFD";
    const struct {
        std::string utf8;
        std::u16string utf16;
        bool fromUtf8;   // Utf8ToUtf16(utf8) is utf16
        bool fromUtf16;  // Utf16ToUtf8(utf16) is utf8
    } cases[] = {
        {"", u"", true, true},
        {"Загрузка – 🎉", u"Загрузка – 🎉", true, true},
        {"a\xFF"
         "b\xE2\x82",
         u"a" + r + u"b" + r, true, false},
        {"\xEF\xBF\xBD", std::u16string(1, u'\xD83C'), false, true},
        {"\xEF\xBF\xBDx", std::u16string(1, u'\xDF89') + u"x", false, true},
        // A high surrogate followed by another high one: the first is lone, the pair after it
        // is whole.
        {"\xEF\xBF\xBD🎉", std::u16string{u'\xD83C', u'\xD83C', u'\xDF89'}, false, true},
    };
    for (const auto& testCase : cases) {
        if (testCase.fromUtf8) {
            EXPECT_EQ(testCase.utf16, Utf8ToUtf16(testCase.utf8)) << testCase.utf8;
        }
        if (testCase.fromUtf16) {
            EXPECT_EQ(testCase.utf8, Utf16ToUtf8(testCase.utf16)) << testCase.utf8;
        }
    }
}

// The text the module's decoder must read back from the encoding of `text`: the same, with
// each lone surrogate replaced.
std::u16string ReadBack(std::u16string text) {
    for (std::size_t index = 0; index < text.size(); ++index) {
        const bool high = text[index] >= 0xD800 && text[index] <= 0xDBFF;
        const bool low = text[index] >= 0xDC00 && text[index] <= 0xDFFF;
        if (high && index + 1 < text.size() && text[index + 1] >= 0xDC00 &&
            text[index + 1] <= 0xDFFF) {
            ++index;
        } else if (high || low) {
            text[index] = 0xFFFD;
        }
    }
    return text;
}

// Encodes `text` both ways (into a new string, and into a string that held a longer text,
// given a view that stops before the other half of a pair) and reads it back.
void ExpectEncodingReadsBack(const std::u16string& text) {
    const std::string utf8 = Utf16ToUtf8(text);
    ASSERT_EQ(ReadBack(text), Utf8ToUtf16(utf8));
    std::string reused(3 * text.size() + 20, 'x');
    const std::u16string padded = text + u'\xDF89';
    Utf16ToUtf8(std::u16string_view(padded).substr(0, text.size()), reused);
    ASSERT_EQ(utf8, reused);
}

// Every short text over units at the edges of each encoded length and both halves of a pair,
// alone and inside ASCII of every length around the blocks the encoder narrows at once, so
// that runs of ASCII, multi-byte units, pairs and lone surrogates meet at every position of a
// block, of a text's last block and of the text.
TEST(StringConversionTest, EncodingReadsBackAtEveryPosition) {
    const char16_t alphabet[] = {u'a', u'\x7F', u'\x80', u'\x7FF', u'\x800', 0xD83C, 0xDF89};
    constexpr std::size_t kLetters = sizeof(alphabet) / sizeof(alphabet[0]);
    for (std::size_t length = 0; length <= 5; ++length) {
        std::size_t combinations = 1;
        for (std::size_t position = 0; position < length; ++position) {
            combinations *= kLetters;
        }
        for (std::size_t number = 0; number < combinations; ++number) {
            std::u16string text;
            for (std::size_t rest = number, position = 0; position < length; ++position) {
                text.push_back(alphabet[rest % kLetters]);
                rest /= kLetters;
            }
            SCOPED_TRACE(testing::Message() << "letters " << length << ", number " << number);
            ExpectEncodingReadsBack(text);
            if (length > 3) {
                continue;
            }
            for (const std::size_t before : {1, 5, 7, 8, 9, 15, 16, 17, 23}) {
                for (const std::size_t after : {0, 1, 6, 7, 8, 9, 17}) {
                    ExpectEncodingReadsBack(std::u16string(before, u'b') + text +
                                            std::u16string(after, u'c'));
                }
            }
        }
    }
}

TEST(StringConversionTest, FrameworkStringsRoundTrip) {
    const std::string text = "sr-Latn: Preuzimanje je završeno 🎉";
    const ulo::string16_t framework = ToFrameworkString(text);
    EXPECT_EQ(Utf8ToUtf16(text), framework.ToStdString());
    EXPECT_EQ(text, ToUtf8(framework));
    std::string reused = "longer than the text, so that the buffer is kept";
    ToUtf8(framework, reused);
    EXPECT_EQ(text, reused);
    EXPECT_TRUE(ToFrameworkString("").empty());
}

}  // namespace
}  // namespace localization_manager::host
