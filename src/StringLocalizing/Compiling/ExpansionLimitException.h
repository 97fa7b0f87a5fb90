#pragma once

#include "ulo/rtl/MessageError.h"

#include <cstddef>
#include <string>

namespace LocalizationManager::StringLocalizing::Compiling {

// Key references are expanded textually, so a file can ask for far more memory than its size
// suggests ("k1 = k0 + k0", "k2 = k1 + k1", ... doubles the text on every line). What the
// references of one file copy while it is compiled is therefore bounded: each copied
// character counts one unit and each copied piece (a text, a parameter, a plural form and
// each of its forms' pieces) kExpansionUnitsPerOperand more, for the memory a piece takes
// besides its characters. The bound depends on the file and the common texts it refers to
// alone, lies far above any real file and turns a file that would exhaust the memory into an
// error naming the key. Texts written out without references cost nothing, however long.
constexpr std::size_t kMaxExpansionUnits = std::size_t{1} << 25;
constexpr std::size_t kExpansionUnitsPerOperand = 32;

// The references of one file copy more than kMaxExpansionUnits: Key() is the key whose
// expansion passed the bound.
class ExpansionLimitException : public ulo::MessageError {
  public:
    explicit ExpansionLimitException(const std::u16string& key);

    const std::u16string& Key() const noexcept { return key_; }

    // The bound that was passed, in units (kMaxExpansionUnits).
    std::size_t Limit() const noexcept { return kMaxExpansionUnits; }

  private:
    std::u16string key_;
};

}  // namespace LocalizationManager::StringLocalizing::Compiling
