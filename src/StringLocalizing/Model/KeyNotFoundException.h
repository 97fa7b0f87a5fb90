#pragma once

#include "ulo/rtl/MessageError.h"

#include <stdexcept>
#include <string>

namespace LocalizationManager::StringLocalizing::Model {

// A key that neither the dictionary nor any fallback holds. Raised by the compiler and the
// string providers. Message: "Key '<key>' not found", the key as narrow message text.
class KeyNotFoundException : public ulo::MessageError {
  public:
    explicit KeyNotFoundException(const std::u16string& key);
};

}  // namespace LocalizationManager::StringLocalizing::Model
