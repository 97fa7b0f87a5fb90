#include "StringLocalizing/Pipeline/PipelineSteps.h"

#include "StringLocalizing/Compiling/CompactTextsProvider.h"
#include "StringLocalizing/Compiling/CompiledDictionaryProvider.h"
#include "StringLocalizing/Compiling/ResourceCompiler.h"
#include "StringLocalizing/Compiling/RootExpressionProvider.h"
#include "StringLocalizing/Model/PluralFormRules.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsePluralRuleFile.h"
#include "ulo/rtl/CodeContracts.h"

#include <boost/make_shared.hpp>

#include <cstdint>

namespace LocalizationManager::StringLocalizing::Pipeline {

Model::PluralFormRuleId PluralFormRuleIdOf(const localization_manager::Culture& culture) {
    return Model::PluralFormRuleId{static_cast<std::int32_t>(culture.languageId),
                                   culture.firstSubtag.ToStdString()};
}

CulturePluralRules LoadPluralFormRules(IResourceProvider& resourceProvider,
                                       const localization_manager::Culture& culture) {
    CulturePluralRules loaded{PluralFormRuleIdOf(culture), nullptr, {}, {}};
    if (!resourceProvider.HasPluralFormRules(loaded.ruleId)) {
        loaded.rules = Model::CreatePluralFormRules();
        return loaded;
    }
    ResourceFileText ruleFile = resourceProvider.GetPluralFormRulesText(loaded.ruleId);
    std::vector<std::string> conditionTexts;
    Model::PluralRuleEntries entries =
        Parsing::ParsePluralRuleFile(ruleFile.text, ruleFile.path, &conditionTexts);
    loaded.rules = Model::CreatePluralFormRules(loaded.ruleId, entries, std::move(conditionTexts));
    loaded.ruleFilePath = std::move(ruleFile.path);
    loaded.ruleFileText = std::move(ruleFile.text);
    return loaded;
}

boost::shared_ptr<Model::ResourceDictionary> LoadScopeTexts(
    IResourceProvider& resourceProvider, const std::u16string& scope,
    const localization_manager::Culture& culture) {
    const ResourceFileText file = resourceProvider.GetLocalizationText(scope, culture);
    auto texts = boost::make_shared<Model::ResourceDictionary>();
    Parsing::ParseLocFile(file.text, file.path, *texts);
    return texts;
}

boost::shared_ptr<Model::CompactTexts> LoadCompactTexts(
    IResourceProvider& resourceProvider, const std::u16string& scope,
    const localization_manager::Culture& culture) {
    ResourceFileText file = resourceProvider.GetLocalizationText(scope, culture);
    // The store keeps the file's text, where most of its keys and texts stay.
    auto texts = boost::make_shared<Model::CompactTexts>(std::move(file.text));
    Parsing::ParseLocFile(texts->Source(), file.path, *texts);
    return texts;
}

void CompileCommonTexts(const boost::shared_ptr<Model::ResourceDictionary>& commonTexts) {
    Compiling::ResourceCompiler(boost::make_shared<Compiling::RootExpressionProvider>())
        .Compile(commonTexts);
}

void CompileScopeTexts(
    const boost::shared_ptr<Model::ResourceDictionary>& scopeTexts,
    const boost::shared_ptr<const Model::ResourceDictionary>& compiledCommonTexts) {
    Compiling::ResourceCompiler(
        boost::make_shared<Compiling::CompiledDictionaryProvider>(
            compiledCommonTexts, boost::make_shared<Compiling::RootExpressionProvider>()))
        .Compile(scopeTexts);
}

namespace {

// A reference of a composite value reaches the composites first (the compiler's own
// dictionary), then the store's plain texts, then `beyond`: the keys of the store in either
// place come before those of `beyond`, as in a dictionary that holds both.
void CompileComposites(const boost::shared_ptr<Model::CompactTexts>& texts,
                       const boost::shared_ptr<Compiling::IExpressionProvider>& beyond) {
    ULO_REQUIRE_NOT_NULL(texts);
    // Owned by the store: the compiler keeps the store alive while it holds them.
    const boost::shared_ptr<Model::ResourceDictionary> composites(texts, &texts->Composites());
    Compiling::ResourceCompiler(boost::make_shared<Compiling::CompactTextsProvider>(texts, beyond))
        .Compile(composites);
}

}  // namespace

void CompileCommonTexts(const boost::shared_ptr<Model::CompactTexts>& commonTexts) {
    CompileComposites(commonTexts, boost::make_shared<Compiling::RootExpressionProvider>());
}

void CompileScopeTexts(const boost::shared_ptr<Model::CompactTexts>& scopeTexts,
                       const boost::shared_ptr<const Model::CompactTexts>& compiledCommonTexts) {
    CompileComposites(scopeTexts, boost::make_shared<Compiling::CompactTextsProvider>(
                                      compiledCommonTexts,
                                      boost::make_shared<Compiling::RootExpressionProvider>()));
}

}  // namespace LocalizationManager::StringLocalizing::Pipeline
