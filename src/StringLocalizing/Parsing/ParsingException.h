#pragma once

#include "StringLocalizing/Parsing/SyntaxError.h"
#include "ulo/rtl/MessageError.h"

#include <optional>
#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {

class DuplicateKeyException;

// A localization or plural rule file that does not follow its syntax, or a duplicate key. The
// message is rendered from the fields: the positioned report of a syntax error, or the
// duplicate-key message. It is kept twice: wide, as it was built, and as narrow message text.
class ParsingException : public ulo::MessageError {
  public:
    explicit ParsingException(SyntaxError syntaxError);
    explicit ParsingException(const DuplicateKeyException& duplicate);

    const std::u16string& WideMessage() const noexcept { return report_; }

    // The syntax error; null when a key was defined twice.
    const SyntaxError* Syntax() const noexcept { return syntaxError_ ? &*syntaxError_ : nullptr; }

    // The key defined twice, lower-cased; null for a syntax error.
    const std::u16string* DuplicateKey() const noexcept {
        return duplicateKey_ ? &*duplicateKey_ : nullptr;
    }

  private:
    explicit ParsingException(const std::u16string& report);

    std::u16string report_;
    std::optional<SyntaxError> syntaxError_;
    std::optional<std::u16string> duplicateKey_;
};

}  // namespace LocalizationManager::StringLocalizing::Parsing
