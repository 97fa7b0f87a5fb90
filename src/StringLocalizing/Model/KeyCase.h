#pragma once

#include <string>

namespace LocalizationManager::StringLocalizing::Model {

// Folds a key to lower case: each UTF-16 unit goes through the wide lower-case function of the
// process's current global locale on its own; surrogate units are left unchanged. Nothing
// else is done (no trimming, no normalisation). Applied to dictionary keys and to the key of
// every KeyRef, never to parameter names.
std::u16string LowerCaseKey(const std::u16string& key);

}  // namespace LocalizationManager::StringLocalizing::Model
