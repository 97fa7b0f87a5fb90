#include "StringLocalizing/Model/PluralFormRuleId.h"
#include "TestSupport/ExpectThrowMessage.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace LocalizationManager::StringLocalizing::Model {
namespace {

TEST(PluralFormRuleId, OrdersByLanguageThenQualifier) {
    const struct {
        PluralFormRuleId left;
        PluralFormRuleId right;
    } ascending[] = {
        {{-1, ""}, {0, ""}},  // signed language ids
        {{0, "zz"}, {1, ""}},     {{24, ""}, {24, "br"}},
        {{24, "BR"}, {24, "br"}}, {{24, "br"}, {24, "brx"}},
    };
    for (const auto& pair : ascending) {
        SCOPED_TRACE(pair.left.qualifier + " / " + pair.right.qualifier);
        EXPECT_TRUE(pair.left < pair.right);
        EXPECT_FALSE(pair.right < pair.left);
        EXPECT_FALSE(pair.left == pair.right);
        EXPECT_TRUE(pair.left != pair.right);
    }
    const PluralFormRuleId same{24, "br"};
    EXPECT_TRUE(same == (PluralFormRuleId{24, "br"}));
    EXPECT_FALSE(same != (PluralFormRuleId{24, "br"}));
    EXPECT_FALSE(same < same);
}

TEST(PluralFormRuleId, PrintsTheLanguageNameAndAnyQualifier) {
    EXPECT_EQ("ru", ToString({26, ""}));
    EXPECT_EQ("pt-br", ToString({24, "br"}));
    EXPECT_EQ("zh-Hant-hk", ToString({2, "hk"}));
    EXPECT_THROW_MSG(ToString({35, "br"}), std::range_error, "Unsupported language 35");
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Model
