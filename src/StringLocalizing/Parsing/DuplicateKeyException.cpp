#include "StringLocalizing/Parsing/DuplicateKeyException.h"

#include "ulo/rtl/TextConversion.h"

namespace LocalizationManager::StringLocalizing::Parsing {

DuplicateKeyException::DuplicateKeyException(const std::u16string& key)
    : ulo::MessageError("duplicate key found (keys are case insensitive): '" +
                        ulo::WideToNarrowMessage(key) + "'"),
      key_(key) {}

}  // namespace LocalizationManager::StringLocalizing::Parsing
