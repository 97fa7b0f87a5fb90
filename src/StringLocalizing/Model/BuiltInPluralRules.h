#pragma once

namespace LocalizationManager::StringLocalizing::Model {

class PluralFormRules;

// Adds the built-in rule of every language of the language table (without qualifier), and the
// Brazilian Portuguese rule (language 24, qualifier "br"), each with its listed conditions in
// form order. The "otherwise" form is not listed: validation appends it. Throws
// std::out_of_range when `rules` already holds one of these ids.
void AddBuiltInPluralRules(PluralFormRules& rules);

}  // namespace LocalizationManager::StringLocalizing::Model
