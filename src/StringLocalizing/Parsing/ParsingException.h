#pragma once

#include "ulo/rtl/MessageError.h"

#include <stdexcept>
#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {

// A localization or plural rule file that does not follow its syntax, or a duplicate key. The
// report is kept twice: wide, as it was built, and as narrow message text for what().
class ParsingException : public ulo::MessageError {
  public:
    explicit ParsingException(const std::u16string& report);

    const std::u16string& WideMessage() const noexcept { return report_; }

  private:
    std::u16string report_;
};

}  // namespace LocalizationManager::StringLocalizing::Parsing
