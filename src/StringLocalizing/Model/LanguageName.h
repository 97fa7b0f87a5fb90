#pragma once

// The language table: language ids as cultures, rule ids and folders use them, and their
// names. It lives in the model because the plural rule ids, the file layer and the component
// layer all name languages, and the model is the one layer every one of them may include.

#include <cstdint>
#include <string>

namespace LocalizationManager::StringLocalizing::Model {

// Language ids run from 0 to kLanguageCount - 1 without gaps.
constexpr std::uint32_t kLanguageCount = 35;

// The name of a language ("ar", "zh-Hant", "sr-Latn"), exactly as folder names and messages
// use it. Ids are stored and exchanged as numbers, so the table never changes order. Throws
// std::range_error ("Unsupported language <id>") for an id of kLanguageCount or above.
std::string LanguageName(std::uint32_t languageId);

}  // namespace LocalizationManager::StringLocalizing::Model
