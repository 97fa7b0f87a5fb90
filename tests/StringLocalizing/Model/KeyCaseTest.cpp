#include "StringLocalizing/Model/KeyCase.h"

#include <gtest/gtest.h>

#include <locale>
#include <stdexcept>
#include <string>

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

TEST(LowerCaseKey, FoldsEachUnitAndNothingElse) {
    const struct {
        std::u16string key;
        std::u16string expected;
    } cases[] = {
        {u"TiTlE", u"title"},
        {u"ABC_12_xyz", u"abc_12_xyz"},
        {u"", u""},
        {u" Padded ", u" padded "},            // no trimming
        {u"\xD83D\xDE00X", u"\xD83D\xDE00x"},  // surrogates pass unchanged
        {u"\xDC00", u"\xDC00"},                // also alone
    };
    for (const auto& testCase : cases) {
        EXPECT_EQ(testCase.expected, LowerCaseKey(testCase.key));
    }
}

TEST(LowerCaseKey, UsesTheGlobalLocale) {
    EXPECT_EQ(u"\u00C4", LowerCaseKey(u"\u00C4")) << "the classic locale folds ASCII only";
    std::locale utf8;
    try {
        utf8 = std::locale("C.UTF-8");
    } catch (const std::runtime_error&) {
        GTEST_SKIP() << "no C.UTF-8 locale on this machine";
    }
    const GlobalLocale scope(utf8);
    EXPECT_EQ(u"\u00E4\u0436", LowerCaseKey(u"\u00C4\u0416"));
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Model
