#pragma once

// Which form a plural rule gives to which numbers, found by trying numbers. A rule's
// conditions are opaque callables, built by the engine's parser or its built-in table, so
// they are asked rather than read: the numbers tried are the small ones every rule tells
// apart, the numbers around every constant the rule file names, around powers of two and ten,
// and the ends of the 64-bit range. That finds every gap of the conditions the grammar can
// express except one at a number far from all of these.

#include "StringLocalizing/Model/IPluralFormRules.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace locmgr::analysis {

// The numbers to try, without repeats; small non-negative numbers first, so that the first
// number found for a form, or without one, is the simplest to read. `ruleText` is the text of
// a rule file (empty for a built-in rule): every decimal number in it adds itself and its
// neighbours, read both as written and as the 32-bit value the runtime stores; of a file that
// names more than 256 distinct numbers, only the first 256 do, so that the number of samples,
// and with it the cost of ClassifyNumbers, stays bounded whatever the file's size.
std::vector<std::int64_t> SampleNumbers(const std::u16string& ruleText);

// The form the runtime's plural resolver gives `number`: the first entry that holds; the
// entry count when none does.
std::size_t FormOfNumber(
    const LocalizationManager::StringLocalizing::Model::PluralRuleEntries& entries,
    std::int64_t number);

struct FormSamples {
    // For each form, the first numbers (in the order tried) that select it.
    std::vector<std::vector<std::int64_t>> numbersOfForm;
    // Numbers that no condition accepts, in the order tried.
    std::vector<std::int64_t> withoutForm;
};

// Evaluates `entries` on `numbers` as the runtime's plural resolver does: the first entry
// that holds gives the form. Keeps up to `perForm` numbers for each form and for the gaps.
FormSamples ClassifyNumbers(
    const LocalizationManager::StringLocalizing::Model::PluralRuleEntries& entries,
    const std::vector<std::int64_t>& numbers, std::size_t perForm);

}  // namespace locmgr::analysis
