#pragma once

#include <stdexcept>
#include <string>

namespace LocalizationManager::StringLocalizing::Resolving {

// A value that still holds a key reference when it is resolved: the compiler never expands
// references inside plural forms. Message: "Key reference found (<key>). Run compiler first".
class UnexpandedReferenceException : public std::logic_error {
  public:
    explicit UnexpandedReferenceException(const std::u16string& key);

    const std::u16string& Key() const noexcept { return key_; }

  private:
    std::u16string key_;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
