#pragma once

#include "StringLocalizing/Model/PluralFormRuleId.h"

#include <boost/function.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Model {

// The condition of one plural form over the discriminator number. May be empty: calling an
// empty entry throws boost::bad_function_call.
using PluralRuleEntry = boost::function<bool(std::int64_t)>;

// The ordered conditions of one rule: entry i decides form i.
using PluralRuleEntries = std::vector<PluralRuleEntry>;

// The plural rules of every language, read-only once created; safe for concurrent readers.
struct IPluralFormRules {
    // A copy of the entries of `ruleId`, or, when the id has no rule of its own, of the rule
    // of its language without qualifier. Throws std::out_of_range ("Rule with id '<id>' not
    // found") when neither exists.
    virtual PluralRuleEntries GetRuleEntries(const PluralFormRuleId& ruleId) const = 0;

    // The number of entries GetRuleEntries returns, truncated to 16 bits; fails the same way.
    virtual std::uint16_t GetRuleEntryCount(const PluralFormRuleId& ruleId) const = 0;

    virtual ~IPluralFormRules() = default;

    // The list GetRuleEntries copies, in place: valid and unchanged for the rules object's
    // life. Null when there is no such rule, and also when an implementation keeps no list to
    // share (the default); callers then fall back to GetRuleEntries.
    virtual const PluralRuleEntries* FindRuleEntries(const PluralFormRuleId& /*ruleId*/) const {
        return nullptr;
    }

    // The conditions of the rule FindRuleEntries finds, as text in the syntax of rule files
    // ("n % 10 == 1 && n % 100 != 11"), which is also C's: for tools that show a rule or hand
    // it to other programs. Null when there is no such rule or no text is kept for it.
    virtual const std::vector<std::string>* FindConditionTexts(
        const PluralFormRuleId& /*ruleId*/) const {
        return nullptr;
    }
};

}  // namespace LocalizationManager::StringLocalizing::Model
