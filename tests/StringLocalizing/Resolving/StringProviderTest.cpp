// The resolving chain as the engine builds it for a scope: parse, compile against the common
// texts, then a StringProvider over the scope with a RootStringProvider over the common texts.

#include "StringLocalizing/Model/KeyNotFoundException.h"
#include "StringLocalizing/Model/PluralFormRules.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Pipeline/PipelineSteps.h"
#include "StringLocalizing/Resolving/KeyResolver.h"
#include "StringLocalizing/Resolving/PluralResolver.h"
#include "StringLocalizing/Resolving/RootStringProvider.h"
#include "StringLocalizing/Resolving/StringProvider.h"
#include "TestSupport/ExpectThrowMessage.h"
#include "TestSupport/FakeParamResolver.h"
#include "ulo/rtl/CodeContracts.h"

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

namespace LocalizationManager::StringLocalizing::Resolving {
namespace {

using Model::CompactTexts;
using Testing::FakeParamResolver;

constexpr std::int32_t kRussian = 26;

boost::shared_ptr<CompactTexts> Parse(const std::u16string& text) {
    auto texts = boost::make_shared<CompactTexts>();
    Parsing::ParseLocFile(text, u"test.lt", *texts);
    return texts;
}

struct ScopeChain {
    boost::shared_ptr<FakeParamResolver> params = boost::make_shared<FakeParamResolver>();
    boost::shared_ptr<IStringProvider> provider;

    ScopeChain(const std::u16string& commonText, const std::u16string& scopeText) {
        const auto common = Parse(commonText);
        const auto scope = Parse(scopeText);
        Pipeline::CompileCommonTexts(common);
        Pipeline::CompileScopeTexts(scope, common);

        const auto plurals = boost::make_shared<PluralResolver>(
            params, Model::PluralFormRuleId{kRussian, ""}, Model::CreatePluralFormRules());
        const auto keys = boost::make_shared<KeyResolver>(params, plurals);
        provider = boost::make_shared<StringProvider>(
            keys, scope, boost::make_shared<RootStringProvider>(keys, common));
    }
};

const std::u16string kCommon =
    u"app = 'Курьер'\nfiles = $count + ' ' + {$count: 'файл', 'файла', 'файлов'}\n"
    u"title = 'Common title'\nbroken = $absent";
const std::u16string kScope = u"title = app + ': загрузка'\nstatus = 'Загружено ' + files\n";

TEST(StringProvider, ScopeFirstThenCommon) {
    ScopeChain chain(kCommon, kScope);
    chain.params->Set(u"count", u"22");
    const struct {
        std::u16string key;
        std::u16string text;
    } cases[] = {
        {u"title", u"Курьер: загрузка"},  // the scope's entry hides the common one
        {u"TITLE", u"Курьер: загрузка"},
        {u"Status", u"Загружено 22 файла"},
        {u"files", u"22 файла"},  // only in the common texts
        {u"APP", u"Курьер"},
    };
    for (const auto& testCase : cases) {
        EXPECT_EQ(testCase.text, chain.provider->GetString(testCase.key))
            << ulo::WideToUtf8(testCase.key);
        TextBuffer buffer;
        EXPECT_EQ(testCase.text, chain.provider->GetStringView(testCase.key, buffer))
            << ulo::WideToUtf8(testCase.key);
    }
}

TEST(StringProvider, MissingKeyIsReportedLowerCased) {
    ScopeChain chain(kCommon, kScope);
    EXPECT_THROW_MSG(chain.provider->GetString(u"No_Such_Key"), Model::KeyNotFoundException,
                     "Key 'no_such_key' not found");
    EXPECT_THROW_MSG(chain.provider->GetString(u""), Model::KeyNotFoundException,
                     "Key '' not found");
}

TEST(StringProvider, FailingEntryIsNotLookedUpInTheParent) {
    ScopeChain chain(u"broken = 'fine in common'", u"broken = $absent");
    EXPECT_THROW_MSG(chain.provider->GetString(u"broken"), std::out_of_range,
                     "no parameter 'absent'");
}

TEST(StringProvider, NullArgumentsViolateTheContract) {
    using NullArgument =
        code_contracts::NullPointerException<code_contracts::RequireViolationException>;
    const auto dictionary = boost::make_shared<CompactTexts>();
    const ScopeChain chain(u"", u"");
    const auto keys = boost::make_shared<KeyResolver>(
        chain.params,
        boost::make_shared<PluralResolver>(chain.params, Model::PluralFormRuleId{kRussian, ""},
                                           Model::CreatePluralFormRules()));
    EXPECT_THROW(RootStringProvider(nullptr, dictionary), NullArgument);
    EXPECT_THROW(RootStringProvider(keys, nullptr), NullArgument);
    EXPECT_THROW(StringProvider(keys, dictionary, nullptr), NullArgument);
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Resolving
