#include "PluralRule.h"

#include "StringLocalizing/Pipeline/PipelineSteps.h"
#include "ulo/rtl/MessageError.h"
#include "ulo/rtl/TextConversion.h"

#include <boost/shared_ptr.hpp>

#include <exception>
#include <new>
#include <utility>

namespace locmgr::analysis {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Pipeline = LocalizationManager::StringLocalizing::Pipeline;

std::string RuleInForce::Source() const {
    return file.empty() ? "built-in" : ulo::WideToNarrowMessage(file);
}

Model::PluralFormRuleId RuleIdOf(const localization_manager::Culture& culture) {
    return Pipeline::PluralFormRuleIdOf(culture);
}

RuleInForce RuleFor(LocalizationManager::File::FileResourceProvider& provider,
                    const localization_manager::Culture& culture) {
    RuleInForce rule;
    rule.id = RuleIdOf(culture);
    rule.idText = Model::ToString(rule.id);
    rule.candidates = provider.PluralFormRulesCandidates(rule.id);
    // Named also when it fails to load, so that the failure names it.
    rule.file = provider.FindPluralFormRulesFile(rule.id);
    try {
        // The pipeline's own step, so the rule is the one requests use.
        Pipeline::CulturePluralRules loaded = Pipeline::LoadPluralFormRules(provider, culture);
        rule.fileText = std::move(loaded.ruleFileText);
        rule.entries = loaded.rules->GetRuleEntries(rule.id);
        if (const auto* conditions = loaded.rules->FindConditionTexts(rule.id)) {
            rule.conditions = *conditions;
        }
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        rule.failure = ulo::FullMessage(error);
    }
    return rule;
}

}  // namespace locmgr::analysis
