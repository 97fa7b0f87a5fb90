#include "StringLocalizing/Model/BuiltInPluralRules.h"
#include "StringLocalizing/Model/PluralFormRules.h"
#include "TestSupport/ExpectThrowMessage.h"

#include <boost/format/exceptions.hpp>

#include <gtest/gtest.h>

#include <stdexcept>

namespace LocalizationManager::StringLocalizing::Model {
namespace {

constexpr char kTooManyArgs[] =
    "boost::too_many_args: format-string referred to fewer arguments than were passed";

PluralRuleEntry Equals(std::int64_t value) {
    return [value](std::int64_t n) { return n == value; };
}

TEST(PluralFormRules, QualifierWithoutRuleFallsBackToTheLanguageRule) {
    const auto rules = CreatePluralFormRules();
    EXPECT_EQ(3, rules->GetRuleEntryCount({26, "ua"}));
    const PluralRuleEntries entries = rules->GetRuleEntries({26, "ua"});
    ASSERT_EQ(3u, entries.size());
    EXPECT_TRUE(entries[1](22)) << "the Russian few-form";

    EXPECT_EQ(2, rules->GetRuleEntryCount({24, "br"}));
    EXPECT_TRUE(rules->GetRuleEntries({24, "br"})[0](0)) << "Brazilian zero takes the one-form";
    EXPECT_FALSE(rules->GetRuleEntries({24, ""})[0](0));
}

TEST(PluralFormRules, UnknownIdsFail) {
    PluralFormRules rules;
    rules.AddRule(24, "br");
    EXPECT_EQ(0, rules.GetRuleEntryCount({24, "br"}));
    EXPECT_THROW_MSG(rules.GetRuleEntries({24, ""}), std::out_of_range,
                     "Rule with id 'pt' not found");
    EXPECT_THROW_MSG(rules.GetRuleEntries({24, "pt"}), std::out_of_range,
                     "Rule with id 'pt-pt' not found");
    EXPECT_THROW_MSG(rules.GetRuleEntryCount({7, "au"}), std::out_of_range,
                     "Rule with id 'en-au' not found");

    // Beyond the language table the message itself cannot be written.
    EXPECT_THROW_MSG(CreatePluralFormRules()->GetRuleEntryCount({35, ""}), std::range_error,
                     "Unsupported language 35");
}

TEST(PluralFormRules, AddRuleRefusesAnIdTwiceAndKeepsTheFirst) {
    PluralFormRules rules;
    const auto position = rules.AddRule(24, "br");
    EXPECT_EQ((PluralFormRuleId{24, "br"}), position->first);
    position->second.push_back(Equals(1));
    EXPECT_THROW_MSG(rules.AddRule(24, "br"), std::out_of_range,
                     "Rule with id 'pt-br' already added");
    EXPECT_EQ(1, rules.GetRuleEntryCount({24, "br"}));

    EXPECT_THROW_MSG(AddBuiltInPluralRules(rules), std::out_of_range,
                     "Rule with id 'pt-br' already added");
}

TEST(PluralFormRules, ValidationAllowsFiveEntriesAndFailsOnASixth) {
    PluralFormRules rules;
    AddBuiltInPluralRules(rules);
    rules.SetRule({7, ""}, PluralRuleEntries(5, Equals(1)));
    rules.Validate();
    EXPECT_EQ(6, rules.GetRuleEntryCount({7, ""}));
    EXPECT_TRUE(rules.GetRuleEntries({7, ""})[5](-7)) << "the appended entry always holds";

    PluralFormRules tooMany;
    AddBuiltInPluralRules(tooMany);
    tooMany.SetRule({7, ""}, PluralRuleEntries(6, Equals(1)));
    // The format names two placeholders and gets three values: its own error is what leaves.
    EXPECT_THROW_MSG(tooMany.Validate(), boost::io::too_many_args, kTooManyArgs);
}

TEST(PluralFormRules, AParsedRuleReplacesOnlyItsOwnId) {
    const auto rules = CreatePluralFormRules({26, ""}, {Equals(5)});
    const PluralRuleEntries russian = rules->GetRuleEntries({26, ""});
    ASSERT_EQ(1u, russian.size()) << "taken as written, with no appended entry";
    EXPECT_TRUE(russian[0](5));
    EXPECT_FALSE(russian[0](1));
    EXPECT_EQ(3, rules->GetRuleEntryCount({25, ""}));
    EXPECT_EQ(2, rules->GetRuleEntryCount({24, "br"}));
    EXPECT_EQ(1, rules->GetRuleEntryCount({26, "ua"})) << "falls back to the parsed rule";

    const auto added = CreatePluralFormRules({7, "au"}, PluralRuleEntries(7, Equals(1)));
    EXPECT_EQ(7, added->GetRuleEntryCount({7, "au"})) << "no limit on a parsed rule";
    EXPECT_EQ(2, added->GetRuleEntryCount({7, ""}));

    const auto empty = CreatePluralFormRules({7, ""}, {});
    EXPECT_EQ(0, empty->GetRuleEntryCount({7, ""}));
    EXPECT_TRUE(empty->GetRuleEntries({7, ""}).empty());
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Model
