#pragma once

#include "StringLocalizing/Model/Value.h"

#include <vector>

namespace LocalizationManager::StringLocalizing::Parsing {

// Moves for the operands the grammar builds. Operand's own move constructor copies a plural
// form with every one of its forms, because Boost's pointer containers have no move
// constructor; and a vector grows by copying elements whose move constructor may throw, as
// Operand's may. These hand a plural form over by swapping its members instead, so building a
// value costs no copy of what is already built. Both leave their source valid but unspecified.

// Makes `target` hold the plural form `source`.
void MovePluralForm(Model::PluralForm& source, Model::Operand& target);

// Appends `operand` to `operands`, growing the vector by moving its elements.
void AppendMovedOperand(std::vector<Model::Operand>& operands, Model::Operand& operand);

}  // namespace LocalizationManager::StringLocalizing::Parsing
