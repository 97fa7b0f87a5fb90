#include "StringLocalizing/Pipeline/ResourceProcessingPipeline.h"

#include "StringLocalizing/Pipeline/PipelineSteps.h"
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

}  // namespace

ResourceProcessingPipeline::ResourceProcessingPipeline(
    const boost::shared_ptr<IResourceProvider>& resourceProvider,
    const boost::shared_ptr<Resolving::IParamResolver>& paramResolver,
    const boost::shared_ptr<CommonTexts>& commonResourceDictionary,
    const localization_manager::Culture& culture, const std::u16string& scope,
    const std::u16string& commonScope) {
    paramResolver_ = ULO_REQUIRE_NOT_NULL_AT(paramResolver, kSourceText, kParamResolverCheckLine);

    IResourceProvider& provider = *ULO_REQUIRE_NOT_NULL(resourceProvider);
    const CulturePluralRules plural = LoadPluralFormRules(provider, culture);
    pluralResolver_ =
        boost::make_shared<Resolving::PluralResolver>(paramResolver_, plural.ruleId, plural.rules);

    CommonTexts& commonTexts =
        *ULO_REQUIRE_NOT_NULL_AT(commonResourceDictionary, kSourceText, kCommonDictionaryCheckLine);
    // The first pipeline of a culture loads the common texts; an empty common file leaves them
    // empty, so the next pipeline reads it again.
    boost::shared_ptr<Model::CompactTexts> loadedCommonTexts;
    if (commonTexts.NeedsLoading()) {
        loadedCommonTexts = LoadCompactTexts(provider, commonScope, culture);
    }
    resourceDictionary_ = LoadCompactTexts(provider, scope, culture);
    if (loadedCommonTexts) {
        CompileCommonTexts(loadedCommonTexts);
        commonTexts.Publish(loadedCommonTexts);
    }
    commonResourceDictionary_ = commonTexts.Published();
    CompileScopeTexts(resourceDictionary_, commonResourceDictionary_);

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
