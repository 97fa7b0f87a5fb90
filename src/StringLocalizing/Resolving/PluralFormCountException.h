#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace LocalizationManager::StringLocalizing::Resolving {

// A plural form invocation whose number of forms is not the form count of the culture's plural
// rule. Message: "Invalid plural form count (expected: E, got: G, discriminator: <param>)".
class PluralFormCountException : public std::logic_error {
  public:
    PluralFormCountException(std::uint16_t expected, std::uint16_t got,
                             const std::u16string& discriminator);

    std::uint16_t Expected() const noexcept { return expected_; }
    std::uint16_t Got() const noexcept { return got_; }
    const std::u16string& Discriminator() const noexcept { return discriminator_; }

  private:
    std::uint16_t expected_;
    std::uint16_t got_;
    std::u16string discriminator_;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
