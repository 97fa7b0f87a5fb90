#include "StringLocalizing/Model/PluralFormRules.h"
#include "StringLocalizing/Resolving/PluralResolver.h"
#include "TestSupport/ExpectThrowMessage.h"
#include "TestSupport/FakeParamResolver.h"
#include "ulo/rtl/CodeContracts.h"

#include <boost/lexical_cast.hpp>
#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

namespace LocalizationManager::StringLocalizing::Resolving {
namespace {

using Model::PluralFormRuleId;
using Model::PluralRuleEntries;
using Testing::FakeParamResolver;

constexpr std::int32_t kRussian = 26;
constexpr std::int32_t kPortuguese = 24;

// Rules holding exactly the given entries under every id it is asked for.
struct FixedRules : Model::IPluralFormRules {
    explicit FixedRules(PluralRuleEntries entries) : entries_(std::move(entries)) {}
    PluralRuleEntries GetRuleEntries(const PluralFormRuleId&) const override { return entries_; }
    std::uint16_t GetRuleEntryCount(const PluralFormRuleId& id) const override {
        return static_cast<std::uint16_t>(GetRuleEntries(id).size());
    }
    PluralRuleEntries entries_;
};

struct PluralResolverTest : ::testing::Test {
    boost::shared_ptr<FakeParamResolver> params = boost::make_shared<FakeParamResolver>();
    Model::PluralForm invocation{u"n", {}};

    std::uint16_t IndexFor(const std::u16string& discriminator,
                           const PluralFormRuleId& id = {kRussian, ""},
                           boost::shared_ptr<Model::IPluralFormRules> rules = nullptr) {
        params->Set(u"n", discriminator);
        const PluralResolver resolver(params, id, rules ? rules : Model::CreatePluralFormRules());
        return resolver.GetPluralFormIndex(invocation);
    }
};

TEST_F(PluralResolverTest, ChoosesTheFirstEntryThatHolds) {
    const struct {
        std::u16string discriminator;
        std::uint16_t index;
    } cases[] = {{u"1", 0},
                 {u"21", 0},
                 {u"3", 1},
                 {u"11", 2},
                 {u"5", 2},
                 {u"+1", 0},
                 {u"-1", 2},
                 {u"-22", 2},
                 {u"9223372036854775807", 2},
                 {u"-9223372036854775808", 2}};
    for (const auto& testCase : cases) {
        EXPECT_EQ(testCase.index, IndexFor(testCase.discriminator))
            << ulo::WideToUtf8(testCase.discriminator);
    }
    const auto bothHold = boost::make_shared<FixedRules>(
        PluralRuleEntries{[](std::int64_t) { return true; }, [](std::int64_t) { return true; }});
    EXPECT_EQ(0, IndexFor(u"7", {kRussian, ""}, bothHold));
}

TEST_F(PluralResolverTest, DiscriminatorMustBeAWholeDecimalInteger) {
    for (const std::u16string text : {u" 1", u"1 ", u"", u"1.0", u"one", u"0x10", u"1\u0660",
                                      u"9223372036854775808", u"\uFF11"}) {
        EXPECT_THROW_MSG(IndexFor(text), boost::bad_lexical_cast,
                         "bad lexical cast: source type value could not be interpreted as target");
    }
}

TEST_F(PluralResolverTest, ReadsTheDiscriminatorAsLexicalCastDoes) {
    std::int64_t seen = 0;
    const auto recording =
        boost::make_shared<FixedRules>(PluralRuleEntries{[&seen](std::int64_t n) {
            seen = n;
            return true;
        }});
    for (const std::u16string text :
         {u"0", u"-0", u"+0", u"007", u"-000000000000000001", u"123456789012345678",
          u"-999999999999999999", u"1234567890123456789", u"-9223372036854775808", u"+", u"-",
          u"--1", u"+-1", u"1-", u"12a", u"\u0661"}) {
        const std::string narrow = ulo::WideToUtf8(text);
        std::int64_t expected = 0;
        if (!boost::conversion::try_lexical_convert(narrow, expected)) {
            EXPECT_THROW(IndexFor(text, {kRussian, ""}, recording), boost::bad_lexical_cast)
                << narrow;
            continue;
        }
        IndexFor(text, {kRussian, ""}, recording);
        EXPECT_EQ(expected, seen) << narrow;
    }
}

TEST_F(PluralResolverTest, ReportsWhenNoEntryHolds) {
    const auto onlyOne =
        boost::make_shared<FixedRules>(PluralRuleEntries{[](std::int64_t n) { return n == 1; }});
    EXPECT_THROW_MSG(IndexFor(u"-5", {kRussian, ""}, onlyOne), std::logic_error,
                     "Cannot find rule entry with id 'ru' and discriminator value -5");
    EXPECT_THROW_MSG(IndexFor(u"2", {kPortuguese, "xx"}, onlyOne), std::logic_error,
                     "Cannot find rule entry with id 'pt-xx' and discriminator value 2");
    const auto none = boost::make_shared<FixedRules>(PluralRuleEntries{});
    EXPECT_THROW(IndexFor(u"1", {kRussian, ""}, none), std::logic_error);
}

TEST_F(PluralResolverTest, EmptyEntryFailsWithTheFunctionLibrarysError) {
    const auto withHole = boost::make_shared<FixedRules>(
        PluralRuleEntries{[](std::int64_t n) { return n == 1; }, Model::PluralRuleEntry()});
    EXPECT_EQ(0, IndexFor(u"1", {kRussian, ""}, withHole)) << "later entries are not evaluated";
    EXPECT_THROW_MSG(IndexFor(u"2", {kRussian, ""}, withHole), boost::bad_function_call,
                     "call to empty boost::function");
}

TEST_F(PluralResolverTest, QualifierFallsBackToTheLanguagesRule) {
    EXPECT_EQ(1, IndexFor(u"0", {kPortuguese, ""}));
    EXPECT_EQ(0, IndexFor(u"0", {kPortuguese, "br"})) << "pt-br has a rule of its own";
    EXPECT_EQ(2, IndexFor(u"0", {kRussian, "xx"})) << "ru-xx uses the rule of ru";
    EXPECT_EQ(0, IndexFor(u"21", {kRussian, "xx"}));
    const PluralResolver resolver(params, {kRussian, "xx"}, Model::CreatePluralFormRules());
    EXPECT_EQ(3, resolver.GetPluralFormCount());
}

TEST_F(PluralResolverTest, UnknownRuleIdFailsOnIndexAndCount) {
    params->Set(u"n", u"1");
    const PluralResolver resolver(params, {35, "q"}, Model::CreatePluralFormRules());
    EXPECT_THROW(resolver.GetPluralFormCount(), std::exception);
    EXPECT_THROW(resolver.GetPluralFormIndex(invocation), std::exception);
}

TEST_F(PluralResolverTest, NullArgumentsViolateTheContract) {
    using NullArgument =
        code_contracts::NullPointerException<code_contracts::RequireViolationException>;
    EXPECT_THROW(PluralResolver(nullptr, {kRussian, ""}, Model::CreatePluralFormRules()),
                 NullArgument);
    EXPECT_THROW(PluralResolver(params, {kRussian, ""}, nullptr), NullArgument);
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Resolving
