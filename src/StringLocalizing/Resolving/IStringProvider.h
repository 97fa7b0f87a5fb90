#pragma once

#include "StringLocalizing/Resolving/TextBuffer.h"

#include <string>
#include <string_view>

namespace LocalizationManager::StringLocalizing::Resolving {

// Answers requests for the text of a key, along a chain of providers.
struct IStringProvider {
    // The resolved text of `key` (any case). Throws Model::KeyNotFoundException when no
    // provider of the chain holds the key; resolution errors propagate.
    virtual std::u16string GetString(const std::u16string& key) const = 0;

    virtual ~IStringProvider() = default;

    // The text GetString gives, copied only where it must be: a view of text the provider's
    // dictionaries hold, or of `buffer`, into which it was resolved (emptied first). The view
    // is valid while the provider and `buffer` are unchanged. Fails as GetString does. By
    // default GetString's text is kept in `buffer`.
    virtual std::u16string_view GetStringView(std::u16string_view key, TextBuffer& buffer) const {
        return buffer.Assign(GetString(std::u16string(key)));
    }
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
