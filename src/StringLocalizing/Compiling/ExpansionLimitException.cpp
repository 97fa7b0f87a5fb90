#include "StringLocalizing/Compiling/ExpansionLimitException.h"

#include "ulo/rtl/TextConversion.h"

namespace LocalizationManager::StringLocalizing::Compiling {

ExpansionLimitException::ExpansionLimitException(const std::u16string& key)
    : ulo::MessageError("Expansion of key '" + ulo::WideToNarrowMessage(key) +
                        "' exceeds the limit of " + std::to_string(kMaxExpansionUnits) +
                        " characters copied by key references"),
      key_(key) {}

}  // namespace LocalizationManager::StringLocalizing::Compiling
