#include "StringLocalizing/Model/PluralFormRuleId.h"

#include "StringLocalizing/Model/LanguageName.h"

#include <tuple>

namespace LocalizationManager::StringLocalizing::Model {

bool operator==(const PluralFormRuleId& left, const PluralFormRuleId& right) {
    return left.languageId == right.languageId && left.qualifier == right.qualifier;
}

bool operator!=(const PluralFormRuleId& left, const PluralFormRuleId& right) {
    return !(left == right);
}

bool operator<(const PluralFormRuleId& left, const PluralFormRuleId& right) {
    return std::tie(left.languageId, left.qualifier) < std::tie(right.languageId, right.qualifier);
}

std::string ToString(const PluralFormRuleId& id) {
    // Read unsigned, a negative language id lies outside the table like any other stray id.
    std::string text = LanguageName(static_cast<std::uint32_t>(id.languageId));
    if (!id.qualifier.empty()) {
        text += "-" + id.qualifier;
    }
    return text;
}

}  // namespace LocalizationManager::StringLocalizing::Model
