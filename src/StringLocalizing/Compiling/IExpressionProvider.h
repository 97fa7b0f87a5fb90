#pragma once

#include "StringLocalizing/Model/Value.h"

#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Compiling {

// A link of the chain that expands key references: a scope's compiler asks the common
// dictionary's compiler, which asks the root, which reports the key as missing.
struct IExpressionProvider {
    // Appends the compiled operands of `key` (lower-cased) to `operands`, or throws
    // Model::KeyNotFoundException when no link of the chain holds the key.
    virtual void GetExpression(const std::u16string& key,
                               std::vector<Model::Operand>& operands) = 0;

    virtual ~IExpressionProvider() = default;
};

}  // namespace LocalizationManager::StringLocalizing::Compiling
