#include "StringLocalizing/Pipeline/ResourceProcessingPipeline.h"

#include "StringLocalizing/Compiling/ResourceCompiler.h"
#include "StringLocalizing/Compiling/RootExpressionProvider.h"
#include "StringLocalizing/Model/PluralFormRules.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsePluralRuleFile.h"
#include "StringLocalizing/Resolving/KeyResolver.h"
#include "StringLocalizing/Resolving/PluralResolver.h"
#include "StringLocalizing/Resolving/RootStringProvider.h"
#include "StringLocalizing/Resolving/StringProvider.h"
#include "ulo/rtl/CodeContracts.h"

#include <boost/make_shared.hpp>

namespace LocalizationManager::StringLocalizing::Pipeline {

namespace {

// The two argument checks report this source text and these lines, which readers of the logs
// know them by, wherever they stand in our sources.
constexpr char kSourceText[] = "StringLocalizing/Pipeline/ResourceProcessingPipeline";
constexpr int kParamResolverCheckLine = 63;
constexpr int kCommonDictionaryCheckLine = 64;

boost::shared_ptr<Model::IPluralFormRules> LoadPluralFormRules(
    IResourceProvider& resourceProvider, const Model::PluralFormRuleId& ruleId) {
    if (!resourceProvider.HasPluralFormRules(ruleId)) {
        return Model::CreatePluralFormRules();
    }
    const ResourceFileText ruleFile = resourceProvider.GetPluralFormRulesText(ruleId);
    return Model::CreatePluralFormRules(ruleId,
                                        Parsing::ParsePluralRuleFile(ruleFile.text, ruleFile.path));
}

void LoadScope(IResourceProvider& resourceProvider, const std::u16string& scope,
               const localization_manager::Culture& culture,
               Model::ResourceDictionary& dictionary) {
    const ResourceFileText file = resourceProvider.GetLocalizationText(scope, culture);
    Parsing::ParseLocFile(file.text, file.path, dictionary);
}

}  // namespace

ResourceProcessingPipeline::ResourceProcessingPipeline(
    const boost::shared_ptr<IResourceProvider>& resourceProvider,
    const boost::shared_ptr<Resolving::IParamResolver>& paramResolver,
    const boost::shared_ptr<Model::ResourceDictionary>& commonResourceDictionary,
    const localization_manager::Culture& culture, const std::u16string& scope,
    const std::u16string& commonScope) {
    paramResolver_ = ULO_REQUIRE_NOT_NULL_AT(paramResolver, kSourceText, kParamResolverCheckLine);

    const Model::PluralFormRuleId ruleId{static_cast<std::int32_t>(culture.languageId),
                                         culture.firstSubtag.ToStdString()};
    IResourceProvider& provider = *ULO_REQUIRE_NOT_NULL(resourceProvider);
    pluralResolver_ = boost::make_shared<Resolving::PluralResolver>(
        paramResolver_, ruleId, LoadPluralFormRules(provider, ruleId));

    commonResourceDictionary_ =
        ULO_REQUIRE_NOT_NULL_AT(commonResourceDictionary, kSourceText, kCommonDictionaryCheckLine);
    // The first pipeline of a culture fills the shared common texts; an empty common file
    // leaves them empty, so the next pipeline reads it again.
    if (commonResourceDictionary_->empty()) {
        LoadScope(provider, commonScope, culture, *commonResourceDictionary_);
    }

    resourceDictionary_ = boost::make_shared<Model::ResourceDictionary>();
    LoadScope(provider, scope, culture, *resourceDictionary_);

    // The scope's references resolve to its own keys first, then to the common ones; the
    // common texts never see a scope's keys. The common texts are compiled by every pipeline,
    // also when an earlier one already did.
    const auto commonCompiler = boost::make_shared<Compiling::ResourceCompiler>(
        boost::make_shared<Compiling::RootExpressionProvider>());
    commonCompiler->Compile(commonResourceDictionary_);
    Compiling::ResourceCompiler(commonCompiler).Compile(resourceDictionary_);

    const auto keyResolver =
        boost::make_shared<Resolving::KeyResolver>(paramResolver_, pluralResolver_);
    stringProvider_ = boost::make_shared<Resolving::StringProvider>(
        keyResolver, resourceDictionary_,
        boost::make_shared<Resolving::RootStringProvider>(keyResolver, commonResourceDictionary_));
}

std::u16string ResourceProcessingPipeline::GetString(const std::u16string& key) const {
    return stringProvider_->GetString(key);
}

std::u16string_view ResourceProcessingPipeline::GetStringView(std::u16string_view key,
                                                              Resolving::TextBuffer& buffer) const {
    return stringProvider_->GetStringView(key, buffer);
}

}  // namespace LocalizationManager::StringLocalizing::Pipeline
