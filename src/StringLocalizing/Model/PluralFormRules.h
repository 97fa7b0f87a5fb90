#pragma once

#include "StringLocalizing/Model/IPluralFormRules.h"
#include "StringLocalizing/Model/PluralFormRuleId.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

namespace LocalizationManager::StringLocalizing::Model {

// The plural rules of every language: for each rule id, the conditions of its forms in form
// order. Filled, validated and given a parsed rule only while it is being created (see
// CreatePluralFormRules); once shared it is only read, takes no locks and is safe for any
// number of concurrent readers. Held by boost::shared_ptr; not copyable.
class PluralFormRules : public IPluralFormRules {
  public:
    using RuleMap = std::map<PluralFormRuleId, PluralRuleEntries>;

    // Rules may have at most this many entries before validation appends the always-true one,
    // so that no rule has more forms than a plural form invocation may hold.
    static constexpr std::size_t kMaxListedEntries = 5;
    static constexpr std::size_t kMaxPluralForms = kMaxListedEntries + 1;

    // An object without any rule.
    PluralFormRules() = default;
    PluralFormRules(const PluralFormRules&) = delete;
    PluralFormRules& operator=(const PluralFormRules&) = delete;

    // Exact id first, then the language's rule without qualifier; std::out_of_range
    // ("Rule with id '<id asked for>' not found") when neither exists.
    PluralRuleEntries GetRuleEntries(const PluralFormRuleId& ruleId) const override;
    std::uint16_t GetRuleEntryCount(const PluralFormRuleId& ruleId) const override;
    const PluralRuleEntries* FindRuleEntries(const PluralFormRuleId& ruleId) const override;
    const std::vector<std::string>* FindConditionTexts(
        const PluralFormRuleId& ruleId) const override;

    // Creation only. Inserts an empty rule and returns its position, to which the caller
    // appends the conditions in form order. Throws std::out_of_range ("Rule with id '<id>'
    // already added") and changes nothing when the id already has a rule.
    RuleMap::iterator AddRule(std::int32_t languageId, const std::string& qualifier);

    // Creation only. The text of each condition of the rule of `ruleId`, in form order; the
    // rule itself is added or set separately.
    void SetConditionTexts(const PluralFormRuleId& ruleId, std::vector<std::string> texts);

    // Creation only. Appends to every rule, in id order, a last entry that always holds (and
    // its text to the rule's texts, where it has them), so
    // that every number finds a form. A rule with more than kMaxListedEntries entries fails
    // with Boost.Format's boost::io::too_many_args; rules visited before it have already been
    // given their entry.
    void Validate();

    // Creation only. Stores `entries` under `ruleId` as they stand, replacing any rule of that
    // id: no limit, no appended entry (a rule read from a rule file is taken as written).
    // The rule's texts are replaced by `conditionTexts`, which may be empty when none are known.
    void SetRule(const PluralFormRuleId& ruleId, const PluralRuleEntries& entries,
                 std::vector<std::string> conditionTexts = {});

  private:
    RuleMap rules_;
    std::map<PluralFormRuleId, std::vector<std::string>> conditionTexts_;
};

// The built-in rules of every language, validated. Throws only what allocation throws.
boost::shared_ptr<IPluralFormRules> CreatePluralFormRules();

// The built-in rules, validated, with the rule of `ruleId` then set to `entries` as parsed
// from a rule file (replaced, or added when the built-in table has no such id).
// `conditionTexts` are the entries' texts, when the caller has them.
boost::shared_ptr<IPluralFormRules> CreatePluralFormRules(
    const PluralFormRuleId& ruleId, const PluralRuleEntries& entries,
    std::vector<std::string> conditionTexts = {});

}  // namespace LocalizationManager::StringLocalizing::Model
