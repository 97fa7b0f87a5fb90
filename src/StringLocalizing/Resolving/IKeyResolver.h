#pragma once

#include "StringLocalizing/Model/Value.h"

#include <string>

namespace LocalizationManager::StringLocalizing::Resolving {

// Turns a compiled value into its final text.
struct IKeyResolver {
    virtual std::u16string Resolve(const Model::Value& value) const = 0;

    virtual ~IKeyResolver() = default;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
