#include "StringLocalizing/Model/KeyCase.h"

#include <gtest/gtest.h>

#include <locale>
#include <stdexcept>
#include <string>
#include <string_view>

namespace LocalizationManager::StringLocalizing::Model {
namespace {

// Installs a global locale for one test and restores the previous one.
class GlobalLocale {
  public:
    explicit GlobalLocale(const std::locale& locale) : previous_(std::locale::global(locale)) {}
    ~GlobalLocale() { std::locale::global(previous_); }

  private:
    std::locale previous_;
};

std::locale Utf8Locale() {
    try {
        return std::locale("C.UTF-8");
    } catch (const std::runtime_error&) {
        return std::locale::classic();
    }
}

const struct {
    std::u16string key;
    std::u16string expected;
} kFoldingCases[] = {
    {u"TiTlE", u"title"},
    {u"ABC_12_xyz", u"abc_12_xyz"},
    {u"already_lower", u"already_lower"},
    {u"", u""},
    {u" Padded ", u" padded "},            // no trimming
    {u"\xD83D\xDE00X", u"\xD83D\xDE00x"},  // surrogates pass unchanged
    {u"\xDC00", u"\xDC00"},                // also alone
};

TEST(LowerCaseKey, FoldsEachUnitAndNothingElse) {
    for (const auto& testCase : kFoldingCases) {
        EXPECT_EQ(testCase.expected, LowerCaseKey(testCase.key));
    }
}

TEST(LowerCaseKey, UsesTheGlobalLocale) {
    EXPECT_EQ(u"\u00C4", LowerCaseKey(u"\u00C4")) << "the classic locale folds ASCII only";
    const std::locale utf8 = Utf8Locale();
    if (utf8 == std::locale::classic()) {
        GTEST_SKIP() << "no C.UTF-8 locale on this machine";
    }
    const GlobalLocale scope(utf8);
    EXPECT_EQ(u"\u00E4\u0436", LowerCaseKey(u"\u00C4\u0416"));
}

TEST(KeyCaseFolder, FoldsAsLowerCaseKeyAndCopiesOnlyWhatChanges) {
    const KeyCaseFolder folder;
    for (const auto& testCase : kFoldingCases) {
        std::u16string buffer;
        const std::u16string_view folded = folder.Fold(testCase.key, buffer);
        EXPECT_EQ(testCase.expected, folded);
        EXPECT_EQ(testCase.key == testCase.expected, folded.data() == testCase.key.data())
            << "a key that folding leaves as it is is returned itself";
    }
}

TEST(KeyCaseFolder, FollowsTheGlobalLocaleOfEachCall) {
    const std::locale utf8 = Utf8Locale();
    if (utf8 == std::locale::classic()) {
        GTEST_SKIP() << "no C.UTF-8 locale on this machine";
    }
    const std::u16string key = u"\u00C4\u0416_Key";
    const KeyCaseFolder madeUnderClassic;
    std::u16string buffer;
    EXPECT_EQ(u"\u00C4\u0416_key", madeUnderClassic.Fold(key, buffer));
    {
        const GlobalLocale scope(utf8);
        EXPECT_EQ(u"\u00E4\u0436_key", madeUnderClassic.Fold(key, buffer));
        const KeyCaseFolder madeUnderUtf8;
        EXPECT_EQ(u"\u00E4\u0436_key", madeUnderUtf8.Fold(key, buffer));
    }
    EXPECT_EQ(u"\u00C4\u0416_key", madeUnderClassic.Fold(key, buffer));
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Model
