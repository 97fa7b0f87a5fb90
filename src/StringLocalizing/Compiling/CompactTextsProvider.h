#pragma once

#include "StringLocalizing/Compiling/IExpressionProvider.h"
#include "StringLocalizing/Model/CompactTexts.h"

#include <boost/shared_ptr.hpp>

namespace LocalizationManager::StringLocalizing::Compiling {

// The expressions of a compact store: a plain text as one text operand, a composite value's
// operands as they stand, and a key the store lacks asked of the parent. It serves the common
// texts, compiled before, to the compilers of any number of scopes at once; and a scope's own
// plain texts to the compiler of its composite values, which looks the composites up itself
// first, so that this provider is never asked for a value still being compiled. It never
// changes the store. Shares ownership of both.
class CompactTextsProvider : public IExpressionProvider {
  public:
    // Throws the null-pointer contract exception for a null argument.
    CompactTextsProvider(const boost::shared_ptr<const Model::CompactTexts>& texts,
                         const boost::shared_ptr<IExpressionProvider>& parentExpressionProvider);

    void GetExpression(const std::u16string& key, std::vector<Model::Operand>& operands) override;

  private:
    const boost::shared_ptr<const Model::CompactTexts> texts_;
    const boost::shared_ptr<IExpressionProvider> parentExpressionProvider_;
};

}  // namespace LocalizationManager::StringLocalizing::Compiling
