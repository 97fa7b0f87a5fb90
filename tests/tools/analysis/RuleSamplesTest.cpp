// Gaps in a rule are found by trying numbers; these rules hide theirs in different places.

#include "RuleSamples.h"
#include "StringLocalizing/Model/PluralFormRuleId.h"
#include "StringLocalizing/Model/PluralFormRules.h"
#include "StringLocalizing/Parsing/ParsePluralRuleFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace locmgr::analysis {
namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
using ::testing::ElementsAre;

FormSamples Classify(const std::u16string& rule, std::size_t perForm = 3) {
    const auto entries =
        LocalizationManager::StringLocalizing::Parsing::ParsePluralRuleFile(rule, u"Plural.rule");
    return ClassifyNumbers(entries, SampleNumbers(rule), perForm);
}

TEST(RuleSamplesTest, NamesTheFirstNumberWithoutAForm) {
    const struct {
        std::u16string rule;
        std::int64_t firstWithoutForm;
    } cases[] = {
        {u"n == 1;", 0},
        {u"n % 10 == 1 && n % 100 != 11; n % 10 >= 2; n % 10 == 0;", 11},
        {u"n >= 0;", -1},
        {u"n != 123456789;", 123456789},
        {u"n < 2147483647;", 2147483647},
        // 4294967295 is stored as -1: n > -1 holds for every non-negative number.
        {u"n > 4294967295;", -1},
        {u"n % 1000 != 999 || n < 5000;", 9999},
        {u"", 0},
    };
    for (const auto& testCase : cases) {
        const FormSamples samples = Classify(testCase.rule);
        ASSERT_FALSE(samples.withoutForm.empty())
            << std::string(testCase.rule.begin(), testCase.rule.end());
        EXPECT_EQ(testCase.firstWithoutForm, samples.withoutForm.front());
    }
}

TEST(RuleSamplesTest, RulesEndingInAnAlwaysTrueConditionHaveNoGap) {
    for (const std::u16string rule :
         {u"n == 1; n >= 0 || n < 1;", u"n % 10 == 1; n % 10 != 1;", u"n < 0; n >= 0;"}) {
        EXPECT_TRUE(Classify(rule).withoutForm.empty());
    }
    // Nor does any built-in rule: validation appends the "otherwise" form to each.
    const auto rules = Model::CreatePluralFormRules();
    for (std::int32_t language = 0; language < 35; ++language) {
        const auto entries = rules->GetRuleEntries(Model::PluralFormRuleId{language, ""});
        EXPECT_TRUE(ClassifyNumbers(entries, SampleNumbers(u""), 1).withoutForm.empty())
            << language;
    }
}

TEST(RuleSamplesTest, ListsSmallNumbersForEachForm) {
    const FormSamples samples = Classify(
        u"n % 10 == 1 && n % 100 != 11;\n"
        u"n % 10 >= 2 && n % 10 <= 4 && (n % 100 < 10 || n % 100 >= 20);\n"
        u"n >= 0 || n < 1;",
        5);
    ASSERT_EQ(3u, samples.numbersOfForm.size());
    EXPECT_THAT(samples.numbersOfForm[0], ElementsAre(1, 21, 31, 41, 51));
    EXPECT_THAT(samples.numbersOfForm[1], ElementsAre(2, 3, 4, 22, 23));
    EXPECT_THAT(samples.numbersOfForm[2], ElementsAre(0, 5, 6, 7, 8));
}

TEST(RuleSamplesTest, TriesTheEndsOfTheRange) {
    const std::vector<std::int64_t> numbers = SampleNumbers(u"n == 4294967295;");
    for (const std::int64_t expected :
         {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(),
          std::int64_t{-1}, std::int64_t{4294967295}, std::int64_t{4294967296}}) {
        EXPECT_NE(numbers.end(), std::find(numbers.begin(), numbers.end(), expected)) << expected;
    }
}

// Every number tried costs an evaluation of the whole rule: the numbers must not grow with the
// number of constants, or a long rule makes the check quadratic.
TEST(RuleSamplesTest, NumbersTriedStayBoundedForHugeRules) {
    // "n == 2000 || n == 2001 || ... || ".
    const auto comparisons = [](int count) {
        std::u16string rule;
        for (int constant = 2000; constant < 2000 + count; ++constant) {
            const std::string comparison = "n == " + std::to_string(constant) + " || ";
            rule.append(comparison.begin(), comparison.end());
        }
        return rule;
    };
    const std::vector<std::int64_t> small = SampleNumbers(comparisons(256) + u"n == 0;");
    const std::vector<std::int64_t> large = SampleNumbers(comparisons(100000) + u"n == 0;");
    EXPECT_EQ(small.size(), large.size());
    // The first constants still add their neighbours; those past the first 256 do not.
    for (const std::int64_t expected : {2000, 2001, 2255, 2256, -2255, 4510}) {
        EXPECT_NE(large.end(), std::find(large.begin(), large.end(), expected)) << expected;
    }
    EXPECT_EQ(large.end(), std::find(large.begin(), large.end(), 2300));
    // A gap at one of the first constants is still found in a long rule.
    const std::u16string gap = u"n != 2100 && (" + comparisons(1000) + u"n >= 0 || n < 0);";
    EXPECT_EQ(2100, Classify(gap).withoutForm.front());
}

}  // namespace
}  // namespace locmgr::analysis
