#include "StringLocalizing/Model/PluralFormRules.h"

#include "StringLocalizing/Model/BuiltInPluralRules.h"

#include <boost/format.hpp>

#include <stdexcept>
#include <utility>

namespace LocalizationManager::StringLocalizing::Model {

namespace {

struct AlwaysTrue {
    bool operator()(std::int64_t) const { return true; }
};

// How rule files write a condition that always holds.
constexpr char kAlwaysTrueText[] = "n >= 0 || n < 1";

boost::shared_ptr<PluralFormRules> CreateValidatedBuiltInRules() {
    // Owned by the shared pointer before anything can throw.
    boost::shared_ptr<PluralFormRules> rules(new PluralFormRules());
    AddBuiltInPluralRules(*rules);
    rules->Validate();
    return rules;
}

}  // namespace

PluralRuleEntries PluralFormRules::GetRuleEntries(const PluralFormRuleId& ruleId) const {
    const PluralRuleEntries* entries = FindRuleEntries(ruleId);
    if (entries == nullptr) {
        throw std::out_of_range("Rule with id '" + ToString(ruleId) + "' not found");
    }
    return *entries;
}

const PluralRuleEntries* PluralFormRules::FindRuleEntries(const PluralFormRuleId& ruleId) const {
    auto found = rules_.find(ruleId);
    if (found == rules_.end() && !ruleId.qualifier.empty()) {
        found = rules_.find(PluralFormRuleId{ruleId.languageId, std::string()});
    }
    return found == rules_.end() ? nullptr : &found->second;
}

const std::vector<std::string>* PluralFormRules::FindConditionTexts(
    const PluralFormRuleId& ruleId) const {
    // The same rule as FindRuleEntries, so that the texts always describe the entries.
    auto found = rules_.find(ruleId);
    if (found == rules_.end() && !ruleId.qualifier.empty()) {
        found = rules_.find(PluralFormRuleId{ruleId.languageId, std::string()});
    }
    if (found == rules_.end()) {
        return nullptr;
    }
    const auto texts = conditionTexts_.find(found->first);
    return texts == conditionTexts_.end() ? nullptr : &texts->second;
}

void PluralFormRules::SetConditionTexts(const PluralFormRuleId& ruleId,
                                        std::vector<std::string> texts) {
    conditionTexts_[ruleId] = std::move(texts);
}

std::uint16_t PluralFormRules::GetRuleEntryCount(const PluralFormRuleId& ruleId) const {
    // Through the interface, so that the count always describes the list a resolver gets.
    const IPluralFormRules& rules = *this;
    return static_cast<std::uint16_t>(rules.GetRuleEntries(ruleId).size());
}

PluralFormRules::RuleMap::iterator PluralFormRules::AddRule(std::int32_t languageId,
                                                            const std::string& qualifier) {
    PluralFormRuleId ruleId{languageId, qualifier};
    if (rules_.find(ruleId) != rules_.end()) {
        throw std::out_of_range("Rule with id '" + ToString(ruleId) + "' already added");
    }
    return rules_.emplace(std::move(ruleId), PluralRuleEntries()).first;
}

void PluralFormRules::Validate() {
    for (auto& [ruleId, entries] : rules_) {
        if (entries.size() > kMaxListedEntries) {
            const std::string idText = ToString(ruleId);
            // Three values for two placeholders: Boost.Format's too_many_args leaves here. Keep.
            throw std::out_of_range(boost::str(
                boost::format(
                    "Too many entries (%1%, but %2% maximum allowed) found in rule with id '%2%'") %
                entries.size() % kMaxPluralForms % idText));
        }
        entries.push_back(AlwaysTrue());
        const auto texts = conditionTexts_.find(ruleId);
        if (texts != conditionTexts_.end()) {
            texts->second.push_back(kAlwaysTrueText);
        }
    }
}

void PluralFormRules::SetRule(const PluralFormRuleId& ruleId, const PluralRuleEntries& entries,
                              std::vector<std::string> conditionTexts) {
    rules_[ruleId] = entries;
    if (conditionTexts.empty() && !entries.empty()) {
        conditionTexts_.erase(ruleId);
    } else {
        conditionTexts_[ruleId] = std::move(conditionTexts);
    }
}

boost::shared_ptr<IPluralFormRules> CreatePluralFormRules() {
    return CreateValidatedBuiltInRules();
}

boost::shared_ptr<IPluralFormRules> CreatePluralFormRules(const PluralFormRuleId& ruleId,
                                                          const PluralRuleEntries& entries,
                                                          std::vector<std::string> conditionTexts) {
    const boost::shared_ptr<PluralFormRules> rules = CreateValidatedBuiltInRules();
    rules->SetRule(ruleId, entries, std::move(conditionTexts));
    return rules;
}

}  // namespace LocalizationManager::StringLocalizing::Model
