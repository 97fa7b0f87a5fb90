#include "StringLocalizing/Model/LanguageName.h"
#include "TestSupport/ExpectThrowMessage.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>

namespace LocalizationManager::StringLocalizing::Model {
namespace {

TEST(LanguageName, KeepsTheTableOrder) {
    const struct {
        std::uint32_t languageId;
        const char* name;
    } cases[] = {
        {0, "ar"},  {2, "zh-Hant"}, {3, "zh-Hans"}, {11, "fr"},      {24, "pt"},      {25, "pl"},
        {26, "ru"}, {27, "ro"},     {28, "es"},     {29, "sr-Cyrl"}, {30, "sr-Latn"}, {34, "vi"},
    };
    for (const auto& testCase : cases) {
        EXPECT_EQ(testCase.name, LanguageName(testCase.languageId)) << testCase.languageId;
    }
    std::set<std::string> names;
    for (std::uint32_t languageId = 0; languageId < kLanguageCount; ++languageId) {
        names.insert(LanguageName(languageId));
    }
    EXPECT_EQ(kLanguageCount, names.size()) << "every id has a name of its own";
}

TEST(LanguageName, RejectsIdsBeyondTheTable) {
    EXPECT_THROW_MSG(LanguageName(35), std::range_error, "Unsupported language 35");
    EXPECT_THROW_MSG(LanguageName(4294967295u), std::range_error,
                     "Unsupported language 4294967295");
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Model
