#pragma once

#include "ulo/rtl/MessageError.h"

#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {

// A key added twice to one dictionary (keys are compared lower-cased). The parser turns it
// into a ParsingException with the same message.
class DuplicateKeyException : public ulo::MessageError {
  public:
    // `key` is the lower-cased key.
    explicit DuplicateKeyException(const std::u16string& key);

    // The lower-cased key.
    const std::u16string& Key() const noexcept { return key_; }

  private:
    std::u16string key_;
};

}  // namespace LocalizationManager::StringLocalizing::Parsing
