#include "StringLocalizing/Model/KeyNotFoundException.h"

#include "ulo/rtl/TextConversion.h"

namespace LocalizationManager::StringLocalizing::Model {

KeyNotFoundException::KeyNotFoundException(const std::u16string& key)
    : ulo::MessageError("Key '" + ulo::WideToNarrowMessage(key) + "' not found") {}

}  // namespace LocalizationManager::StringLocalizing::Model
