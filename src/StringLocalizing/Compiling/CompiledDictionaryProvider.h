#pragma once

#include "StringLocalizing/Compiling/IExpressionProvider.h"
#include "StringLocalizing/Model/ResourceDictionary.h"

#include <boost/shared_ptr.hpp>

namespace LocalizationManager::StringLocalizing::Compiling {

// The expressions of a dictionary compiled before, such as the common texts that a scope's
// compiler refers to: a key's operands as they stand, and a key the dictionary lacks asked of
// the parent. It never changes the dictionary, so the compilers of any number of scopes may
// read it at once. Shares ownership of both.
class CompiledDictionaryProvider : public IExpressionProvider {
  public:
    // `compiledDictionary` must hold no KeyRef. Throws the null-pointer contract exception for
    // a null argument.
    CompiledDictionaryProvider(
        const boost::shared_ptr<const Model::ResourceDictionary>& compiledDictionary,
        const boost::shared_ptr<IExpressionProvider>& parentExpressionProvider);

    void GetExpression(const std::u16string& key, std::vector<Model::Operand>& operands) override;

  private:
    const boost::shared_ptr<const Model::ResourceDictionary> compiledDictionary_;
    const boost::shared_ptr<IExpressionProvider> parentExpressionProvider_;
};

}  // namespace LocalizationManager::StringLocalizing::Compiling
