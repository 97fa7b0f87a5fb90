#pragma once

#include <string>

namespace LocalizationManager::StringLocalizing::Resolving {

// Answers requests for the text of a key, along a chain of providers.
struct IStringProvider {
    // The resolved text of `key` (any case). Throws Model::KeyNotFoundException when no
    // provider of the chain holds the key; resolution errors propagate.
    virtual std::u16string GetString(const std::u16string& key) const = 0;

    virtual ~IStringProvider() = default;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
