#include "localization_manager/host/StringConversion.h"

#include <gtest/gtest.h>

#include <string>

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

TEST(StringConversionTest, FrameworkStringsRoundTrip) {
    const std::string text = "sr-Latn: Preuzimanje je završeno 🎉";
    const ulo::string16_t framework = ToFrameworkString(text);
    EXPECT_EQ(Utf8ToUtf16(text), framework.ToStdString());
    EXPECT_EQ(text, ToUtf8(framework));
    EXPECT_TRUE(ToFrameworkString("").empty());
}

}  // namespace
}  // namespace localization_manager::host
