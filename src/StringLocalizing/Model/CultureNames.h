#pragma once

#include "localization_manager/Culture.h"

#include <cstdint>
#include <string>

namespace LocalizationManager::StringLocalizing::Model {

// Turns a culture name given by a host ("ru", "EN-us", "sr-Latn-RS", "anz-nz") into a Culture:
// the first entry of the culture name table, in key order, whose key is a prefix of the
// lower-cased name gives the language and default subtags; the rest of the name, as written,
// must be empty or begin with "-" and gives the subtags ("-a" sets the first subtag, "-a-b..."
// the first and, everything after the second "-", the second). Returns 0 and fills `culture`,
// or 0x8000004B ("Unspecified error") and leaves it unchanged for a name that matches no
// entry. The table is built once and only read; safe for concurrent callers.
std::int32_t ConvertCultureName(const std::string& name, localization_manager::Culture& culture);

// A culture as tracer lines show it: the language name, "-" and the first subtag (also when
// it is empty, so "ru" shows as "ru-"), then "-" and the second subtag when there is one.
// Throws std::range_error for a language id outside the language table.
std::string CultureText(const localization_manager::Culture& culture);

// The part of CultureText after the language name: "-" and the first subtag, then "-" and the
// second subtag when there is one.
std::string SubtagsText(const localization_manager::Culture& culture);

}  // namespace LocalizationManager::StringLocalizing::Model
