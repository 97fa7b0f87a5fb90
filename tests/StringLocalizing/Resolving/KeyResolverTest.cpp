#include "StringLocalizing/Model/PluralFormRules.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Resolving/KeyResolver.h"
#include "StringLocalizing/Resolving/PluralResolver.h"
#include "TestSupport/ExpectThrowMessage.h"
#include "TestSupport/FakeParamResolver.h"
#include "ulo/rtl/CodeContracts.h"

#include <boost/lexical_cast.hpp>
#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

namespace LocalizationManager::StringLocalizing::Resolving {
namespace {

using Testing::FakeParamResolver;

constexpr std::int32_t kEnglish = 7;

// Resolves the value of `a` in a one-entry file under the English rule (two forms).
struct KeyResolverTest : ::testing::Test {
    boost::shared_ptr<FakeParamResolver> params = boost::make_shared<FakeParamResolver>();

    std::u16string Resolve(const std::u16string& valueText) {
        Model::ResourceDictionary dictionary;
        Parsing::ParseLocFile(u"a = " + valueText, u"test.lt", dictionary);
        const auto plurals = boost::make_shared<PluralResolver>(
            params, Model::PluralFormRuleId{kEnglish, ""}, Model::CreatePluralFormRules());
        return KeyResolver(params, plurals).Resolve(dictionary.at(u"a"));
    }
};

TEST_F(KeyResolverTest, ResolvesOperandsInOrder) {
    params->Set(u"name", u"report.pdf");
    params->Set(u"Count", u"3");
    params->Set(u"count", u"1");
    EXPECT_EQ(u"Saved report.pdf in 3 files, 1 folder.",
              Resolve(u"'Saved ' + $name + ' in ' + $Count + {$Count: ' file', ' files'} + ', ' "
                      u"+ $count + {$count: ' folder', ' folders'} + '.'"));
    EXPECT_EQ((std::vector<std::u16string>{u"name", u"Count", u"Count", u"count", u"count"}),
              params->Asked());
}

TEST_F(KeyResolverTest, ResolvesTheChosenFormByTheSameRules) {
    params->Set(u"files", u"2");
    params->Set(u"folders", u"1");
    EXPECT_EQ(u"2 files in one folder",
              Resolve(u"{$files: 'one file', $files + ' files'} + ' in ' + "
                      u"{$folders: 'one folder', {$files: 'x', $folders + ' folders'}}"));
    params->Set(u"folders", u"4");
    EXPECT_EQ(u"2 files in 4 folders",
              Resolve(u"{$files: 'one file', $files + ' files'} + ' in ' + "
                      u"{$folders: 'one folder', {$files: 'x', $folders + ' folders'}}"));
}

TEST_F(KeyResolverTest, DiscriminatorErrorsComeBeforeTheFormCount) {
    params->Set(u"n", u"1");
    EXPECT_THROW_MSG(Resolve(u"{$n: 'one', 'two', 'three'}"), std::logic_error,
                     "Invalid plural form count (expected: 2, got: 3, discriminator: n)");
    params->Set(u"n", u"lots");
    EXPECT_THROW(Resolve(u"{$n: 'one', 'two', 'three'}"), boost::bad_lexical_cast);
    EXPECT_THROW_MSG(Resolve(u"{$missing: 'one'}"), std::out_of_range, "no parameter 'missing'");
}

TEST_F(KeyResolverTest, RefusesUncompiledReferences) {
    EXPECT_THROW_MSG(Resolve(u"'text first ' + Other_Key"), std::logic_error,
                     "Key reference found (other_key). Run compiler first");
}

TEST_F(KeyResolverTest, EmptyValueAsksNobody) {
    const auto plurals = boost::make_shared<PluralResolver>(
        params, Model::PluralFormRuleId{kEnglish, ""}, Model::CreatePluralFormRules());
    EXPECT_EQ(u"", KeyResolver(params, plurals).Resolve(Model::Value{}));
    EXPECT_TRUE(params->Asked().empty());
}

TEST_F(KeyResolverTest, NullArgumentsViolateTheContractInOrder) {
    using NullArgument =
        code_contracts::NullPointerException<code_contracts::RequireViolationException>;
    try {
        KeyResolver(nullptr, nullptr);
        FAIL() << "null resolvers were accepted";
    } catch (const NullArgument& error) {
        EXPECT_STREQ("paramResolver", error.Location().CheckedText());
    }
    EXPECT_THROW(KeyResolver(params, nullptr), NullArgument);
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Resolving
