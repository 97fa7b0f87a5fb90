#include "StringLocalizing/Resolving/UnexpandedReferenceException.h"

#include "ulo/rtl/TextConversion.h"

namespace LocalizationManager::StringLocalizing::Resolving {

UnexpandedReferenceException::UnexpandedReferenceException(const std::u16string& key)
    : std::logic_error("Key reference found (" + ulo::WideToNarrowMessage(key) +
                       "). Run compiler first"),
      key_(key) {}

}  // namespace LocalizationManager::StringLocalizing::Resolving
