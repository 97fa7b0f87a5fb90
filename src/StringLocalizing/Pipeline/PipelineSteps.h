#pragma once

// The steps that build the text engine of a scope, one function each. The pipeline is made of
// them, and tools that check or explain a localization tree call the same functions, so that
// they see exactly what a request would. Texts come in two stores, compiled by the same
// compiler: the dictionary that tools read, and the compact store that the pipeline keeps.

#include "StringLocalizing/Model/CompactTexts.h"
#include "StringLocalizing/Model/IPluralFormRules.h"
#include "StringLocalizing/Model/PluralFormRuleId.h"
#include "StringLocalizing/Model/ResourceDictionary.h"
#include "StringLocalizing/Pipeline/IResourceProvider.h"
#include "localization_manager/Culture.h"

#include <boost/shared_ptr.hpp>

#include <string>

namespace LocalizationManager::StringLocalizing::Pipeline {

// The plural rules that the texts of a culture are resolved with.
struct CulturePluralRules {
    Model::PluralFormRuleId ruleId;
    boost::shared_ptr<Model::IPluralFormRules> rules;
    // The rule file that replaced the built-in rule of ruleId, and its text; both empty when
    // the built-in rules hold.
    std::u16string ruleFilePath;
    std::u16string ruleFileText;
};

// The rule id of a culture: its language and its first subtag as qualifier.
Model::PluralFormRuleId PluralFormRuleIdOf(const localization_manager::Culture& culture);

// The built-in rules, with the rule of the culture's id replaced by the provider's rule file
// when it has one. The rule file's parse errors pass through.
CulturePluralRules LoadPluralFormRules(IResourceProvider& resourceProvider,
                                       const localization_manager::Culture& culture);

// The parsed texts of `scope` for `culture`, not compiled. The provider's and the parser's
// errors pass through.
boost::shared_ptr<Model::ResourceDictionary> LoadScopeTexts(
    IResourceProvider& resourceProvider, const std::u16string& scope,
    const localization_manager::Culture& culture);

// LoadScopeTexts into the compact store.
boost::shared_ptr<Model::CompactTexts> LoadCompactTexts(
    IResourceProvider& resourceProvider, const std::u16string& scope,
    const localization_manager::Culture& culture);

// Compiles the common texts of a culture in place; their references reach only their own keys.
// The compiler's errors pass through.
void CompileCommonTexts(const boost::shared_ptr<Model::ResourceDictionary>& commonTexts);

// Compiles a scope's texts in place: references reach the scope's own keys first, then the
// compiled common texts, which are only read. The compiler's errors pass through.
void CompileScopeTexts(
    const boost::shared_ptr<Model::ResourceDictionary>& scopeTexts,
    const boost::shared_ptr<const Model::ResourceDictionary>& compiledCommonTexts);

// The same two compilations of the compact store: its composite values are expanded in place.
void CompileCommonTexts(const boost::shared_ptr<Model::CompactTexts>& commonTexts);
void CompileScopeTexts(const boost::shared_ptr<Model::CompactTexts>& scopeTexts,
                       const boost::shared_ptr<const Model::CompactTexts>& compiledCommonTexts);

}  // namespace LocalizationManager::StringLocalizing::Pipeline
