#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Compiling {

// A chain of key references that leads back to a key whose compilation is under way.
// Message: "Cyclic reference found:" and the chain, the cycle in parentheses, for example
// "Cyclic reference found:a->(b->c->b)" or "Cyclic reference found:(x->x)".
class CyclicReferenceException : public std::runtime_error {
  public:
    // `visiting` holds the keys being compiled, outermost first; `repeatedKey` is the key
    // that was reached again.
    CyclicReferenceException(const std::vector<std::u16string>& visiting,
                             const std::u16string& repeatedKey);
};

}  // namespace LocalizationManager::StringLocalizing::Compiling
