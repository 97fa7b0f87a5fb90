#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace LocalizationManager::StringLocalizing::Compiling {

// Key references are expanded textually, so a file can ask for far more work than its size
// suggests ("k1 = k0 + k0", "k2 = k1 + k1", ... doubles the text on every line), and a long
// chain of references recurses as deep as it is long. These limits lie far above any real
// text and turn such a file into an error naming the key instead of exhausting the memory or
// the stack.
constexpr std::size_t kMaxReferenceDepth = 128;         // keys being compiled at once
constexpr std::size_t kMaxCompiledOperands = 1u << 16;  // operands of one compiled value
constexpr std::size_t kMaxExpansionUnits = 1u << 25;    // copied by one Compile, see below

// A compiled value, a reference chain or the work of one Compile exceeded a limit above.
class ExpansionLimitException : public std::runtime_error {
  public:
    static ExpansionLimitException ReferenceDepth(const std::u16string& key);
    static ExpansionLimitException OperandCount(const std::u16string& key);
    static ExpansionLimitException ExpansionSize(const std::u16string& key);

  private:
    explicit ExpansionLimitException(const std::string& message);
};

}  // namespace LocalizationManager::StringLocalizing::Compiling
