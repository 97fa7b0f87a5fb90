#include "StringLocalizing/Compiling/CompiledDictionaryProvider.h"

#include "ulo/rtl/CodeContracts.h"

namespace LocalizationManager::StringLocalizing::Compiling {

CompiledDictionaryProvider::CompiledDictionaryProvider(
    const boost::shared_ptr<const Model::ResourceDictionary>& compiledDictionary,
    const boost::shared_ptr<IExpressionProvider>& parentExpressionProvider)
    : compiledDictionary_(ULO_REQUIRE_NOT_NULL(compiledDictionary)),
      parentExpressionProvider_(ULO_REQUIRE_NOT_NULL(parentExpressionProvider)) {}

void CompiledDictionaryProvider::GetExpression(const std::u16string& key,
                                               std::vector<Model::Operand>& operands) {
    const auto position = compiledDictionary_->find(key);
    if (position == compiledDictionary_->end()) {
        parentExpressionProvider_->GetExpression(key, operands);
        return;
    }
    const std::vector<Model::Operand>& compiled = position->second.operands;
    operands.insert(operands.end(), compiled.begin(), compiled.end());
}

}  // namespace LocalizationManager::StringLocalizing::Compiling
