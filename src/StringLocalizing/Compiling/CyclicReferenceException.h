#pragma once

#include "ulo/rtl/MessageError.h"

#include <cstddef>
#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Compiling {

// A chain of key references that leads back to a key whose compilation is under way.
// Message: "Cyclic reference found:" and the chain, the cycle in parentheses, for example
// "Cyclic reference found:a->(b->c->b)" or "Cyclic reference found:(x->x)".
class CyclicReferenceException : public ulo::MessageError {
  public:
    // `visiting` holds the keys being compiled, outermost first; `repeatedKey` is the key
    // that was reached again.
    CyclicReferenceException(const std::vector<std::u16string>& visiting,
                             const std::u16string& repeatedKey);

    // The keys of the chain as the message shows them: those being compiled, outermost first,
    // then the repeated key. For "a->(b->c->b)": a, b, c, b.
    const std::vector<std::u16string>& Chain() const noexcept { return chain_; }

    // Where the cycle begins in Chain(): the first position of the repeated key (1 above).
    std::size_t CycleStart() const noexcept { return cycleStart_; }

    // The keys of the cycle, each once, in the order of the chain: b, c above.
    std::vector<std::u16string> CycleKeys() const;

  private:
    explicit CyclicReferenceException(std::vector<std::u16string> chain);

    std::vector<std::u16string> chain_;
    std::size_t cycleStart_;
};

}  // namespace LocalizationManager::StringLocalizing::Compiling
