#include "StringLocalizing/Compiling/ExpansionLimitException.h"
#include "StringLocalizing/Model/KeyNotFoundException.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "StringLocalizing/Pipeline/ResourceProcessingPipeline.h"
#include "TestSupport/Cultures.h"
#include "TestSupport/ExpectThrowMessage.h"
#include "TestSupport/FakeParamResolver.h"
#include "ulo/rtl/CodeContracts.h"

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Pipeline {
namespace {

using localization_manager::Culture;
using Model::PluralFormRuleId;
using Testing::FakeParamResolver;
using Testing::MakeCulture;

constexpr std::uint32_t kRussian = 26;
constexpr std::uint32_t kPortuguese = 24;

// Texts by scope and rule files by rule id text; counts what it was asked.
class FakeResourceProvider : public IResourceProvider {
  public:
    std::map<std::u16string, std::u16string> scopes;
    std::map<std::string, std::u16string> ruleFiles;
    std::map<std::u16string, int> reads;

    ResourceFileText GetLocalizationText(const std::u16string& scope, const Culture&) override {
        ++reads[scope];
        const auto position = scopes.find(scope);
        if (position == scopes.end()) {
            throw std::runtime_error("cannot find localization file '" + ulo::WideToUtf8(scope) +
                                     ".lt'");
        }
        return {position->second, scope + u".lt"};
    }
    bool HasPluralFormRules(const PluralFormRuleId& id) override {
        return ruleFiles.count(Model::ToString(id)) != 0;
    }
    ResourceFileText GetPluralFormRulesText(const PluralFormRuleId& id) override {
        return {ruleFiles.at(Model::ToString(id)), u"Plural.rule"};
    }
    std::u16string GetBinaryResourcePath(const std::u16string&, const Culture&,
                                         const std::u16string&) override {
        throw std::logic_error("not used by the pipeline");
    }
};

struct PipelineTest : ::testing::Test {
    boost::shared_ptr<FakeResourceProvider> provider = boost::make_shared<FakeResourceProvider>();
    boost::shared_ptr<FakeParamResolver> params = boost::make_shared<FakeParamResolver>();
    boost::shared_ptr<CommonTexts> common = boost::make_shared<CommonTexts>();

    ResourceProcessingPipeline Build(const std::u16string& scope,
                                     const Culture& culture = MakeCulture(kRussian)) {
        return ResourceProcessingPipeline(provider, params, common, culture, scope, u"common");
    }
};

TEST_F(PipelineTest, ScopeTextsComeBeforeCommonTexts) {
    provider->scopes[u"common"] = u"app = 'Courier'\ntitle = 'common title'";
    provider->scopes[u"download"] =
        u"title = app + ': ' + $file\nfiles = $n + {$n: 'file', "
        u"'files', 'of files'}";
    const auto pipeline = Build(u"download");
    params->Set(u"file", u"a.txt");
    params->Set(u"n", u"3");
    EXPECT_EQ(u"Courier: a.txt", pipeline.GetString(u"Title"));
    EXPECT_EQ(u"Courier", pipeline.GetString(u"APP"));
    EXPECT_EQ(u"3files", pipeline.GetString(u"files"));
    EXPECT_THROW_MSG(pipeline.GetString(u"nothing"), Model::KeyNotFoundException,
                     "Key 'nothing' not found");
}

TEST_F(PipelineTest, CommonTextsAreReadOnceAndShared) {
    provider->scopes[u"common"] = u"app = 'Courier'";
    provider->scopes[u"a"] = u"x = app + ' a'";
    provider->scopes[u"b"] = u"x = app + ' b'";
    const auto first = Build(u"a");
    provider->scopes[u"common"] = u"app = 'changed on disk'";
    const auto second = Build(u"b");
    EXPECT_EQ(1, provider->reads[u"common"]);
    EXPECT_EQ(u"Courier a", first.GetString(u"x"));
    EXPECT_EQ(u"Courier b", second.GetString(u"x"));
}

TEST_F(PipelineTest, EmptyCommonFileIsReadAgainByLaterPipelinesOnly) {
    provider->scopes[u"common"] = u"; nothing yet";
    provider->scopes[u"a"] = u"x = 'a'";
    const auto early = Build(u"a");
    provider->scopes[u"common"] = u"late = 'arrived'";
    EXPECT_EQ(u"arrived", Build(u"a").GetString(u"late"));
    EXPECT_EQ(2, provider->reads[u"common"]);
    // The common texts a pipeline was built on never change under it.
    EXPECT_THROW_MSG(early.GetString(u"late"), Model::KeyNotFoundException, "Key 'late' not found");
}

TEST_F(PipelineTest, FailedBuildPublishesNoCommonTexts) {
    const struct {
        const char* name;
        std::u16string commonText;
        std::u16string scopeText;
    } cases[] = {
        {"broken common file", u"app = 'Courier'\nbroken =", u"x = app"},
        {"cycle in the common texts", u"app = a\na = app", u"x = app"},
        {"missing scope file", u"app = 'Courier'", u""},
    };
    for (const auto& testCase : cases) {
        provider->scopes[u"common"] = testCase.commonText;
        provider->scopes.erase(u"a");
        if (!testCase.scopeText.empty()) {
            provider->scopes[u"a"] = testCase.scopeText;
        }
        common = boost::make_shared<CommonTexts>();
        // The same request on the same files fails the same way, however often it is tried.
        std::vector<std::string> errors;
        for (int attempt = 0; attempt < 3; ++attempt) {
            try {
                Build(u"a");
                ADD_FAILURE() << testCase.name << " was built";
            } catch (const std::exception& error) {
                errors.emplace_back(ulo::FullMessage(error));
            }
            EXPECT_FALSE(common->Published()) << testCase.name;
        }
        EXPECT_EQ(std::vector<std::string>(3, errors.front()), errors) << testCase.name;
    }
}

TEST_F(PipelineTest, CommonTextsPastTheExpansionBoundFailEveryTime) {
    // Each copy of `b` costs a million characters: the 34th passes the bound of one file.
    std::u16string commonText = u"b = '" + std::u16string(1000000, u'x') + u"'\n";
    for (int copy = 10; copy < 50; ++copy) {
        const std::string key = "k" + std::to_string(copy);
        commonText += std::u16string(key.begin(), key.end()) + u" = b\n";
    }
    provider->scopes[u"common"] = commonText;
    provider->scopes[u"a"] = u"x = 'a'";
    for (int attempt = 0; attempt < 3; ++attempt) {
        EXPECT_THROW_MSG(Build(u"a"), Compiling::ExpansionLimitException,
                         "Expansion of key 'k43' exceeds the limit of 33554432 characters copied "
                         "by key references");
    }
    EXPECT_FALSE(common->Published());
}

TEST_F(PipelineTest, RuleFileReplacesTheBuiltInRuleOfItsIdOnly) {
    provider->scopes[u"common"] = u"";
    provider->scopes[u"a"] = u"x = {$n: 'one', 'other'}";
    provider->ruleFiles["ru"] = u"n == 1;\nn >= 0 || n < 0;";
    params->Set(u"n", u"1");
    EXPECT_EQ(u"one", Build(u"a").GetString(u"x"));
    params->Set(u"n", u"5");
    EXPECT_EQ(u"other", Build(u"a").GetString(u"x"));

    // Portuguese keeps its built-in two forms; a qualified culture falls back to them.
    params->Set(u"n", u"0");
    EXPECT_EQ(u"other", Build(u"a", MakeCulture(kPortuguese, "PT")).GetString(u"x"));
    EXPECT_EQ(u"one", Build(u"a", MakeCulture(kPortuguese, "br")).GetString(u"x"));

    // Russian without the file needs three forms.
    provider->ruleFiles.clear();
    EXPECT_THROW_MSG(Build(u"a").GetString(u"x"), std::logic_error,
                     "Invalid plural form count (expected: 3, got: 2, discriminator: n)");
}

TEST_F(PipelineTest, BrokenRuleFileIsReportedWithItsPath) {
    provider->scopes[u"a"] = u"x = 'y'";
    provider->ruleFiles["ru"] = u"n == 1";
    try {
        Build(u"a");
        FAIL() << "a rule without ';' was accepted";
    } catch (const Parsing::ParsingException& error) {
        EXPECT_EQ(0u, std::string(error.what()).find("parse error at file Plural.rule line 1"));
    }
}

TEST_F(PipelineTest, NullArgumentsReportTheirFixedLines) {
    using NullArgument =
        code_contracts::NullPointerException<code_contracts::RequireViolationException>;
    const auto expectLine = [](auto&& build, const char* argument, int line) {
        try {
            build();
            ADD_FAILURE() << argument << " was accepted as null";
        } catch (const NullArgument& error) {
            EXPECT_STREQ(argument, error.Location().CheckedText());
            EXPECT_STREQ("StringLocalizing/Pipeline/ResourceProcessingPipeline",
                         error.Location().SourceFile());
            EXPECT_EQ(line, error.Location().Line());
        }
    };
    expectLine([&] { ResourceProcessingPipeline(provider, nullptr, common, {}, u"a", u"c"); },
               "paramResolver", 63);
    expectLine([&] { ResourceProcessingPipeline(provider, params, nullptr, {}, u"a", u"c"); },
               "commonResourceDictionary", 64);
    EXPECT_THROW(ResourceProcessingPipeline(nullptr, params, common, {}, u"a", u"c"), NullArgument);
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Pipeline
