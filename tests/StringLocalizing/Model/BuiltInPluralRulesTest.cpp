#include "StringLocalizing/Model/LanguageName.h"
#include "StringLocalizing/Model/PluralFormRules.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Model {
namespace {

using Formula = int (*)(std::int64_t n);

// The expected plural forms of the built-in rules, written independently of the rule table as
// the usual C plural expressions.
struct ExpectedRules {
    std::vector<PluralFormRuleId> ruleIds;
    int formCount;
    Formula form;
};

// clang-format off
const ExpectedRules kExpectedRules[] = {
    {{{2, ""}, {3, ""}, {9, ""}, {15, ""}, {18, ""}, {19, ""}, {20, ""}, {33, ""}, {34, ""}}, 1,
     [](std::int64_t) { return 0; }},
    {{{1, ""}, {5, ""}, {6, ""}, {7, ""}, {8, ""}, {10, ""}, {12, ""}, {13, ""}, {14, ""},
      {17, ""}, {23, ""}, {24, ""}, {28, ""}, {32, ""}}, 2,
     [](std::int64_t n) { return n != 1 ? 1 : 0; }},
    {{{11, ""}, {24, "br"}}, 2,
     [](std::int64_t n) { return n > 1 ? 1 : 0; }},
    {{{0, ""}}, 6, [](std::int64_t n) {
         return n == 0 ? 0 : n == 1 ? 1 : n == 2 ? 2
              : n%100>=3 && n%100<=10 ? 3 : n%100>=11 ? 4 : 5; }},
    {{{4, ""}}, 3, [](std::int64_t n) {
         return n == 1 ? 0 : n >= 2 && n <= 4 ? 1 : 2; }},
    {{{16, ""}}, 5, [](std::int64_t n) {
         return n == 1 ? 0 : n == 2 ? 1 : n%10>=3 && n%10<=6 ? 2 : n%10>=7 && n%10<=9 ? 3 : 4; }},
    {{{21, ""}}, 3, [](std::int64_t n) {
         return n%10==1 && n%100!=11 ? 0 : n%10>=2 && (n%100<10 || n%100>=20) ? 1 : 2; }},
    {{{22, ""}}, 3, [](std::int64_t n) {
         return n%10==1 && n%100!=11 ? 0 : n == 0 ? 1 : 2; }},
    {{{25, ""}}, 3, [](std::int64_t n) {
         return n == 1 ? 0 : n%10>=2 && n%10<=4 && (n%100<10 || n%100>20) ? 1 : 2; }},
    {{{26, ""}}, 3, [](std::int64_t n) {
         return n%10==1 && n%100!=11 ? 0
              : n%10>=2 && n%10<=4 && !(n%100>=10 && n%100<=20) ? 1 : 2; }},
    {{{27, ""}}, 3, [](std::int64_t n) {
         return n == 1 ? 0 : n == 0 || (n%100>0 && n%100<20) ? 1 : 2; }},
    {{{29, ""}, {30, ""}}, 3, [](std::int64_t n) {
         return n%10==1 && n%100!=11 ? 0
              : n%10>=2 && n%10<=4 && (n%100<10 || n%100>=20) ? 1 : 2; }},
    {{{31, ""}}, 4, [](std::int64_t n) {
         return n == 1 ? 0 : n%100==2 ? 1 : n%100==3 || n%100==4 ? 2 : 3; }},
};
// clang-format on

std::vector<std::int64_t> Discriminators() {
    std::vector<std::int64_t> numbers;
    for (std::int64_t n = -200; n <= 1200; ++n) {
        numbers.push_back(n);
    }
    constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
    // Beyond 32 bits: a rule that narrowed n would see 1, 2 or 11 in several of these.
    numbers.insert(numbers.end(),
                   {kMin, kMin + 1, kMax, kMax - 1, 1000000001, 1000000000000011, -1000000000002,
                    4294967297, 4294967298, 4294967307, -4294967295, 2147483648, -2147483649,
                    100000000000000102, -100000000000000112});
    return numbers;
}

// The form a plural resolver picks: the first entry that holds.
int ChosenForm(const PluralRuleEntries& entries, std::int64_t n) {
    for (std::size_t index = 0; index < entries.size(); ++index) {
        if (entries[index](n)) {
            return static_cast<int>(index);
        }
    }
    return -1;
}

TEST(BuiltInPluralRules, EveryRuleChoosesTheFormOfItsPluralExpression) {
    const auto rules = CreatePluralFormRules();
    const std::vector<std::int64_t> numbers = Discriminators();
    std::vector<int> rulesPerLanguage(kLanguageCount, 0);
    for (const ExpectedRules& expected : kExpectedRules) {
        for (const PluralFormRuleId& ruleId : expected.ruleIds) {
            SCOPED_TRACE(ToString(ruleId));
            if (ruleId.qualifier.empty()) {
                ++rulesPerLanguage.at(ruleId.languageId);
            }
            const PluralRuleEntries entries = rules->GetRuleEntries(ruleId);
            ASSERT_EQ(expected.formCount, rules->GetRuleEntryCount(ruleId));
            for (const std::int64_t n : numbers) {
                ASSERT_EQ(expected.form(n), ChosenForm(entries, n)) << "n = " << n;
            }
        }
    }
    EXPECT_EQ(std::vector<int>(kLanguageCount, 1), rulesPerLanguage)
        << "every language is checked once";
}

TEST(BuiltInPluralRules, TheAppendedFormTakesWhatNoListedEntryCovers) {
    const auto rules = CreatePluralFormRules();
    const PluralRuleEntries czech = rules->GetRuleEntries({4, ""});
    EXPECT_EQ(2, ChosenForm(czech, 5));
    const PluralRuleEntries arabic = rules->GetRuleEntries({0, ""});
    EXPECT_EQ(5, ChosenForm(arabic, 100));
    EXPECT_EQ(5, ChosenForm(arabic, 101));
    EXPECT_EQ(5, ChosenForm(arabic, 102));
    EXPECT_EQ(3, ChosenForm(arabic, 103));
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Model
