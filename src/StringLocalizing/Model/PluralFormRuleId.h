#pragma once

#include <cstdint>
#include <string>

namespace LocalizationManager::StringLocalizing::Model {

// Names one plural rule: a language (an id of the language table) and an optional qualifier
// that refines it ("br" under Portuguese). An empty qualifier is the language's default rule.
// Ordered by language id (signed), then by qualifier.
struct PluralFormRuleId {
    std::int32_t languageId = 0;
    std::string qualifier;
};

bool operator==(const PluralFormRuleId& left, const PluralFormRuleId& right);
bool operator!=(const PluralFormRuleId& left, const PluralFormRuleId& right);
bool operator<(const PluralFormRuleId& left, const PluralFormRuleId& right);

// The id as messages show it: the language's name, then "-" and the qualifier when there is
// one ("ru", "pt-br"). Throws std::range_error for a language id outside the language table.
std::string ToString(const PluralFormRuleId& id);

}  // namespace LocalizationManager::StringLocalizing::Model
