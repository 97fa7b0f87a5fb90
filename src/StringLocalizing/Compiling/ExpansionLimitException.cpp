#include "StringLocalizing/Compiling/ExpansionLimitException.h"

#include "ulo/rtl/TextConversion.h"

namespace LocalizationManager::StringLocalizing::Compiling {

namespace {

std::string Quoted(const std::u16string& key) {
    return "'" + ulo::WideToNarrowMessage(key) + "'";
}

}  // namespace

ExpansionLimitException::ExpansionLimitException(const std::string& message)
    : std::runtime_error(message) {}

ExpansionLimitException ExpansionLimitException::ReferenceDepth(const std::u16string& key) {
    return ExpansionLimitException("Reference chain too long at key " + Quoted(key) +
                                   ": more than " + std::to_string(kMaxReferenceDepth) +
                                   " keys refer one to the next");
}

ExpansionLimitException ExpansionLimitException::OperandCount(const std::u16string& key) {
    return ExpansionLimitException("Expansion of key " + Quoted(key) + " exceeds " +
                                   std::to_string(kMaxCompiledOperands) + " operands");
}

ExpansionLimitException ExpansionLimitException::ExpansionSize(const std::u16string& key) {
    return ExpansionLimitException("Expansion of key " + Quoted(key) + " exceeds the limit of " +
                                   std::to_string(kMaxExpansionUnits) +
                                   " characters copied by key references");
}

}  // namespace LocalizationManager::StringLocalizing::Compiling
