#include "StringLocalizing/Compiling/CyclicReferenceException.h"

#include "ulo/rtl/TextConversion.h"

#include <algorithm>

namespace LocalizationManager::StringLocalizing::Compiling {

namespace {

std::vector<std::u16string> ChainOf(const std::vector<std::u16string>& visiting,
                                    const std::u16string& repeatedKey) {
    std::vector<std::u16string> chain;
    chain.reserve(visiting.size() + 1);
    chain.insert(chain.end(), visiting.begin(), visiting.end());
    chain.push_back(repeatedKey);
    return chain;
}

std::size_t CycleStartOf(const std::vector<std::u16string>& chain) {
    return static_cast<std::size_t>(std::find(chain.begin(), chain.end(), chain.back()) -
                                    chain.begin());
}

std::string FormatChain(const std::vector<std::u16string>& chain, std::size_t cycleStart) {
    std::u16string text;
    for (std::size_t index = 0; index + 1 < chain.size(); ++index) {
        if (index == cycleStart) {
            text += u'(';
        }
        text += chain[index];
        text += u"->";
    }
    text += chain.back();
    text += u')';
    return ulo::WideToNarrowMessage(text);
}

}  // namespace

CyclicReferenceException::CyclicReferenceException(const std::vector<std::u16string>& visiting,
                                                   const std::u16string& repeatedKey)
    : CyclicReferenceException(ChainOf(visiting, repeatedKey)) {}

CyclicReferenceException::CyclicReferenceException(std::vector<std::u16string> chain)
    : ulo::MessageError("Cyclic reference found:" + FormatChain(chain, CycleStartOf(chain))),
      chain_(std::move(chain)),
      cycleStart_(CycleStartOf(chain_)) {}

std::vector<std::u16string> CyclicReferenceException::CycleKeys() const {
    return std::vector<std::u16string>(chain_.begin() + static_cast<std::ptrdiff_t>(cycleStart_),
                                       chain_.end() - 1);
}

}  // namespace LocalizationManager::StringLocalizing::Compiling
