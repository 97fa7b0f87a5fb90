#include "PluralRule.h"

#include "File/FileStream.h"
#include "StringLocalizing/Model/PluralFormRules.h"
#include "StringLocalizing/Parsing/ParsePluralRuleFile.h"
#include "ulo/rtl/TextConversion.h"

#include <boost/shared_ptr.hpp>

#include <exception>
#include <new>

namespace locmgr::analysis {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

std::string RuleInForce::Source() const {
    return file.empty() ? "built-in" : ulo::WideToNarrowMessage(file);
}

Model::PluralFormRuleId RuleIdOf(const localization_manager::Culture& culture) {
    return Model::PluralFormRuleId{static_cast<std::int32_t>(culture.languageId),
                                   culture.firstSubtag.ToStdString()};
}

RuleInForce RuleFor(const LocalizationManager::File::FileResourceProvider& provider,
                    const localization_manager::Culture& culture) {
    RuleInForce rule;
    rule.id = RuleIdOf(culture);
    rule.idText = Model::ToString(rule.id);
    rule.candidates = provider.PluralFormRulesCandidates(rule.id);
    rule.file = provider.FindPluralFormRulesFile(rule.id);
    try {
        boost::shared_ptr<Model::IPluralFormRules> rules;
        if (rule.file.empty()) {
            rules = Model::CreatePluralFormRules();
        } else {
            rule.fileText = LocalizationManager::File::GetFileContent(rule.file);
            rules = Model::CreatePluralFormRules(
                rule.id, Parsing::ParsePluralRuleFile(rule.fileText, rule.file));
        }
        rule.entries = rules->GetRuleEntries(rule.id);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        rule.failure = error.what();
    }
    return rule;
}

}  // namespace locmgr::analysis
