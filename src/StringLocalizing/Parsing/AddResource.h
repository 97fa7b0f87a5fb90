#pragma once

#include "StringLocalizing/Model/KeyCase.h"
#include "StringLocalizing/Model/ResourceDictionary.h"

#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {

// Adds one parsed entry, taking over its value: the key is lower-cased first; a key already
// present throws DuplicateKeyException and leaves the dictionary and `value` as they were.
void AddResource(Model::ResourceDictionary& dictionary, const Model::KeyCaseFolder& keyCaseFolder,
                 const std::u16string& key, Model::Value&& value);

}  // namespace LocalizationManager::StringLocalizing::Parsing
