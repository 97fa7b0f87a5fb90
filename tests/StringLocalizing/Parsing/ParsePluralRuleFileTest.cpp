#include "StringLocalizing/Model/PluralFormRules.h"
#include "StringLocalizing/Parsing/ParsePluralRuleFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "StringLocalizing/Parsing/PluralFormRulesGrammar.h"
#include "StringLocalizing/Parsing/SourceIterator.h"
#include "TestSupport/ExpectThrowMessage.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Parsing {
namespace {

using Grammar = PluralFormRulesGrammar<SourceIterator>;
using Limits = std::numeric_limits<std::int64_t>;

Model::PluralRuleEntries Parse(const std::u16string& text) {
    return ParsePluralRuleFile(text, u"Plural.rule");
}

std::u16string Nested(int depth) {
    return std::u16string(depth, u'(') + u"n == 1" + std::u16string(depth, u')');
}

std::u16string Chain(int operands, const std::u16string& separator) {
    std::u16string text = u"n == 1";
    for (int operand = 1; operand < operands; ++operand) {
        text += separator + u"n == 1";
    }
    return text + u";";
}

// Which entries hold, per number of a spread that tells the rules below apart.
std::vector<std::vector<bool>> Evaluate(const Model::PluralRuleEntries& entries) {
    static const std::int64_t kNumbers[] = {
        Limits::min(), -11, -1, 0, 1, 2, 3, 4, 5, 11, 21, 4294967295, Limits::max()};
    std::vector<std::vector<bool>> table;
    for (const std::int64_t n : kNumbers) {
        std::vector<bool> row;
        for (const Model::PluralRuleEntry& entry : entries) {
            row.push_back(entry(n));
        }
        table.push_back(row);
    }
    return table;
}

TEST(ParsePluralRuleFile, SpellingsOfTheSameRuleAgree) {
    const std::vector<std::vector<std::u16string>> groups = {
        {u"n==1;", u"n == 1 ;", u"\tn\r\n==\n1\r;", u"(n == 1);", u"((n == 1));"},
        {u"n % 10 == 1;", u"n%10==1;", u"n\n%\n10\n==\n1\n;", u"n % 010 == 1;"},
        {u"n == 1 || n == 2 && n == 3;", u"n == 1 || (n == 2 && n == 3);"},
        {u"n <= 4;", u"n < 4 || n == 4;", u"n<=4;"},
        {u"n >= 4;", u"n > 4 || n == 4;", u"n>=4;"},
        // 4294967295 is -1, and n % -1 is 0 for every n, the smallest included.
        {u"n % 4294967295 == 0;", u"n >= 0 || n < 1;"},
    };
    for (const auto& group : groups) {
        const auto expected = Evaluate(Parse(group.front()));
        for (const std::u16string& text : group) {
            EXPECT_EQ(expected, Evaluate(Parse(text)))
                << std::string(group.front().begin(), group.front().end()) << " vs "
                << std::string(text.begin(), text.end());
        }
    }
}

TEST(ParsePluralRuleFile, ConditionTextsAreAsWrittenOnOneLine) {
    std::vector<std::string> texts{"left over"};
    ParsePluralRuleFile(u"  n % 10 == 1 &&\r\n\tn % 100 != 11 ;\n(n==2)||n<1;\n", u"Plural.rule",
                        &texts);
    EXPECT_EQ((std::vector<std::string>{"n % 10 == 1 && n % 100 != 11", "(n==2)||n<1"}), texts);
    ParsePluralRuleFile(u" \n", u"Plural.rule", &texts);
    EXPECT_TRUE(texts.empty());
}

// Every built-in rule writes its conditions as a rule file would; read back, they decide as the
// built-in conditions do.
TEST(ParsePluralRuleFile, BuiltInRulesReadBackFromTheirTexts) {
    const auto rules = Model::CreatePluralFormRules();
    std::vector<Model::PluralFormRuleId> ids{{24, "br"}};
    for (std::int32_t language = 0; language < 35; ++language) {
        ids.push_back({language, ""});
    }
    for (const Model::PluralFormRuleId& id : ids) {
        SCOPED_TRACE(Model::ToString(id));
        const Model::PluralRuleEntries& entries = *rules->FindRuleEntries(id);
        const std::vector<std::string>* texts = rules->FindConditionTexts(id);
        ASSERT_NE(nullptr, texts);
        ASSERT_EQ(entries.size(), texts->size());
        for (std::size_t form = 0; form < entries.size(); ++form) {
            const std::string& text = (*texts)[form];
            const Model::PluralRuleEntries parsed =
                Parse(std::u16string(text.begin(), text.end()) + u";");
            for (std::int64_t n = -1100; n <= 1100; ++n) {
                ASSERT_EQ(entries[form](n), parsed[0](n)) << text << " at " << n;
            }
        }
    }
}

TEST(ParsePluralRuleFile, ReportNamesThePathItWasGiven) {
    EXPECT_THROW_MSG(ParsePluralRuleFile(u"n == 1", u"/srv/loc/ru/Plural.rule"), ParsingException,
                     "parse error at file /srv/loc/ru/Plural.rule line 1 column 7\n\"n == 1\"\n"
                     "       ^- expecting \";\" here");
}

// Far beyond the depth at which an unguarded descent would exhaust the stack.
TEST(ParsePluralRuleFile, HostileNestingFailsWithoutExhaustingTheStack) {
    EXPECT_THROW(Parse(std::u16string(200000, u'(')), ParsingException);
}

TEST(ParsePluralRuleFile, NestingCountsOpenParenthesesOnly) {
    const std::u16string deep = Nested(kMaxRuleNesting);
    EXPECT_EQ(3u, Parse(deep + u" && " + deep + u";\n" + deep + u";\n" + deep + u";").size());
}

// A left fold of this many operands would recurse once per operand when called and when
// destroyed, and take quadratic time to build.
TEST(ParsePluralRuleFile, LongChainsEvaluateAndDestroyWithoutDeepRecursion) {
    constexpr int kOperands = 200000;
    {
        const auto anyOf = Parse(Chain(kOperands, u" || "));
        const Model::PluralRuleEntries copy = anyOf;
        EXPECT_TRUE(copy.at(0)(1));
        EXPECT_FALSE(anyOf.at(0)(0));
    }
    {
        const auto allOf = Parse(Chain(kOperands, u" && "));
        EXPECT_TRUE(allOf.at(0)(1));
        EXPECT_FALSE(allOf.at(0)(0));
    }
}

TEST(PluralFormRulesGrammar, ComparisonFollowsTheOperatorValue) {
    using Operator = Grammar::Operator;
    const Grammar::NumberExpression identity = [](std::int64_t n) { return n; };
    // Below, at and above the constant 4.
    const std::vector<std::vector<bool>> expected = {
        {false, true, false}, {true, false, true},  {true, false, false},
        {true, true, false},  {false, false, true}, {false, true, true},
    };
    for (int value = 0; value < 6; ++value) {
        const auto predicate = Grammar::MakeComparison(identity, static_cast<Operator>(value), 4);
        EXPECT_EQ(expected[value], (std::vector<bool>{predicate(3), predicate(4), predicate(5)}))
            << "operator " << value;
    }
    EXPECT_THROW_MSG(Grammar::MakeComparison(identity, static_cast<Operator>(6), 4),
                     std::logic_error, "unexpected compare operator type");
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Parsing
