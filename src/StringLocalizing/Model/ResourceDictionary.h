#pragma once

#include "StringLocalizing/Model/Value.h"

#include <map>
#include <string>

namespace LocalizationManager::StringLocalizing::Model {

// The texts of one localization file: lower-cased key to value, ordered by plain code-unit
// comparison of the keys. Storing and looking up keys lower-cased (see LowerCaseKey) makes the
// dictionary case-insensitive.
using ResourceDictionary = std::map<std::u16string, Value>;

}  // namespace LocalizationManager::StringLocalizing::Model
