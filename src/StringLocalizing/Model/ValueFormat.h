#pragma once

#include "StringLocalizing/Model/ResourceDictionary.h"

#include <string>

namespace LocalizationManager::StringLocalizing::Model {

// Writes a value back in localization file syntax, in one canonical form: operands joined by
// " + ", texts quoted with the escapes \n, \\ and \' applied, references as their (lower-cased)
// key, parameters as "$name", plural forms as "{$name: form, form}". Parsing the result gives
// an equal value.
std::u16string FormatValue(const Value& value);

// One "key = value" line per entry, in dictionary order, each ending in a line feed.
std::u16string FormatDictionary(const ResourceDictionary& dictionary);

}  // namespace LocalizationManager::StringLocalizing::Model
