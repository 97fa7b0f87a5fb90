#pragma once

#include "StringLocalizing/Model/IPluralFormRules.h"

#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Parsing {

// Parses the whole decoded text of a plural rule file into its conditions, at most five, in
// file order: condition i decides plural form i. An empty or blank text gives no conditions.
// `path` is used only in error reports. The conditions are never empty, hold no reference to
// the text and are defined for every argument.
//
// Throws ParsingException (with the positioned report) when the text breaks the syntax, holds
// a modulus of 0 or nests parentheses deeper than kMaxRuleNesting; other exceptions, such as
// std::bad_alloc, pass through.
//
// With `conditionTexts`, also gives the text of each condition as written, its whitespace
// runs (line breaks included) each made one space: "n % 10 == 1 && n % 100 != 11".
Model::PluralRuleEntries ParsePluralRuleFile(const std::u16string& text, const std::u16string& path,
                                             std::vector<std::string>* conditionTexts = nullptr);

}  // namespace LocalizationManager::StringLocalizing::Parsing
