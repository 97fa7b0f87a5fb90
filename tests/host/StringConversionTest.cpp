#include "localization_manager/host/StringConversion.h"

#include <gtest/gtest.h>

#include <string>

namespace localization_manager::host {
namespace {

// The rules for malformed input belong to the platform layer's decoder and are tested with it;
// these cases check what the host adds around it.
TEST(StringConversionTest, Utf8ToUtf16) {
    const struct {
        std::string utf8;
        std::u16string utf16;
    } cases[] = {
        {"", u""},
        {"Загрузка – 🎉", u"Загрузка – 🎉"},
        {"a\xFF"
         "b\xE2\x82",
         u"a\uFFFDb\uFFFD"},
    };
    for (const auto& testCase : cases) {
        EXPECT_EQ(testCase.utf16, Utf8ToUtf16(testCase.utf8)) << testCase.utf8;
    }
}

TEST(StringConversionTest, Utf16ToUtf8) {
    const struct {
        std::u16string utf16;
        std::string utf8;
    } cases[] = {
        {u"", ""},
        {u"Загрузка – 🎉", "Загрузка – 🎉"},
        {std::u16string(1, u'\xD83C'), "\xEF\xBF\xBD"},
        {std::u16string(1, u'\xDF89') + u"x", "\xEF\xBF\xBDx"},
        // A high surrogate followed by another high one: the first is lone, the pair after it
        // is whole.
        {std::u16string{u'\xD83C', u'\xD83C', u'\xDF89'}, "\xEF\xBF\xBD🎉"},
    };
    for (const auto& testCase : cases) {
        EXPECT_EQ(testCase.utf8, Utf16ToUtf8(testCase.utf16));
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
