#include "StringLocalizing/Resolving/PluralFormCountException.h"

#include "ulo/rtl/TextConversion.h"

#include <boost/format.hpp>

namespace LocalizationManager::StringLocalizing::Resolving {

PluralFormCountException::PluralFormCountException(std::uint16_t expected, std::uint16_t got,
                                                   const std::u16string& discriminator)
    : std::logic_error(
          (boost::format(
               "Invalid plural form count (expected: %1%, got: %2%, discriminator: %3%)") %
           expected % got % ulo::WideToNarrowMessage(discriminator))
              .str()),
      expected_(expected),
      got_(got),
      discriminator_(discriminator) {}

}  // namespace LocalizationManager::StringLocalizing::Resolving
