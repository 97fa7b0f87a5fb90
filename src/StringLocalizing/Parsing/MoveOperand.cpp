#include "StringLocalizing/Parsing/MoveOperand.h"

#include <boost/variant/get.hpp>

#include <utility>

namespace LocalizationManager::StringLocalizing::Parsing {

namespace {

void SwapPluralForms(Model::PluralForm& left, Model::PluralForm& right) {
    left.param.swap(right.param);
    left.forms.swap(right.forms);
}

// Appends `operand` to `operands`, which has room for it.
void MoveToEnd(std::vector<Model::Operand>& operands, Model::Operand& operand) {
    if (auto* plural = boost::get<Model::PluralForm>(&operand)) {
        // An empty plural form is copied for nothing.
        operands.emplace_back(Model::PluralForm());
        SwapPluralForms(boost::get<Model::PluralForm>(operands.back()), *plural);
    } else {
        operands.push_back(std::move(operand));
    }
}

}  // namespace

void MovePluralForm(Model::PluralForm& source, Model::Operand& target) {
    target = Model::PluralForm();
    SwapPluralForms(boost::get<Model::PluralForm>(target), source);
}

void AppendMovedOperand(std::vector<Model::Operand>& operands, Model::Operand& operand) {
    if (operands.size() == operands.capacity()) {
        std::vector<Model::Operand> grown;
        grown.reserve(operands.empty() ? 1 : 2 * operands.size());
        for (Model::Operand& existing : operands) {
            MoveToEnd(grown, existing);
        }
        operands.swap(grown);
    }
    MoveToEnd(operands, operand);
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
