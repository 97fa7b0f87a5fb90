#include "StringLocalizing/Compiling/CompactTextsProvider.h"

#include "ulo/rtl/CodeContracts.h"

namespace LocalizationManager::StringLocalizing::Compiling {

CompactTextsProvider::CompactTextsProvider(
    const boost::shared_ptr<const Model::CompactTexts>& texts,
    const boost::shared_ptr<IExpressionProvider>& parentExpressionProvider)
    : texts_(ULO_REQUIRE_NOT_NULL(texts)),
      parentExpressionProvider_(ULO_REQUIRE_NOT_NULL(parentExpressionProvider)) {}

void CompactTextsProvider::GetExpression(const std::u16string& key,
                                         std::vector<Model::Operand>& operands) {
    Model::CompactTexts::Entry entry;
    if (!texts_->Find(key, entry)) {
        parentExpressionProvider_->GetExpression(key, operands);
        return;
    }
    if (entry.IsPlainText()) {
        operands.emplace_back(std::u16string(entry.plainText));
        return;
    }
    const std::vector<Model::Operand>& compiled = entry.value->operands;
    operands.insert(operands.end(), compiled.begin(), compiled.end());
}

}  // namespace LocalizationManager::StringLocalizing::Compiling
