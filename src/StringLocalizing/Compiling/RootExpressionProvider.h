#pragma once

#include "StringLocalizing/Compiling/IExpressionProvider.h"

namespace LocalizationManager::StringLocalizing::Compiling {

// The end of the expansion chain: every key that reaches it is missing. Stateless.
class RootExpressionProvider : public IExpressionProvider {
  public:
    // Always throws Model::KeyNotFoundException ("Key '<key>' not found"); `operands` is not
    // touched.
    void GetExpression(const std::u16string& key, std::vector<Model::Operand>& operands) override;
};

}  // namespace LocalizationManager::StringLocalizing::Compiling
