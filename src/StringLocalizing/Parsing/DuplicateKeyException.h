#pragma once

#include <stdexcept>
#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {

// A key added twice to one dictionary (keys are compared lower-cased). The parser turns it
// into a ParsingException with the same message.
class DuplicateKeyException : public std::runtime_error {
  public:
    // `key` is the lower-cased key.
    explicit DuplicateKeyException(const std::u16string& key);
};

}  // namespace LocalizationManager::StringLocalizing::Parsing
