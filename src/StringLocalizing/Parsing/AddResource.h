#pragma once

#include "StringLocalizing/Model/ResourceDictionary.h"

#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {

// Adds one parsed entry: the key is lower-cased first; a key already present throws
// DuplicateKeyException and leaves the dictionary as it was.
void AddResource(Model::ResourceDictionary& dictionary, const std::u16string& key,
                 const Model::Value& value);

}  // namespace LocalizationManager::StringLocalizing::Parsing
