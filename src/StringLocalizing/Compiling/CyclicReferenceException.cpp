#include "StringLocalizing/Compiling/CyclicReferenceException.h"

#include "ulo/rtl/TextConversion.h"

namespace LocalizationManager::StringLocalizing::Compiling {

namespace {

std::string FormatChain(const std::vector<std::u16string>& visiting,
                        const std::u16string& repeatedKey) {
    std::u16string chain;
    for (const std::u16string& key : visiting) {
        if (key == repeatedKey) {
            chain += u'(';
        }
        chain += key;
        chain += u"->";
    }
    chain += repeatedKey;
    chain += u')';
    return ulo::WideToNarrowMessage(chain);
}

}  // namespace

CyclicReferenceException::CyclicReferenceException(const std::vector<std::u16string>& visiting,
                                                   const std::u16string& repeatedKey)
    : std::runtime_error("Cyclic reference found:" + FormatChain(visiting, repeatedKey)) {}

}  // namespace LocalizationManager::StringLocalizing::Compiling
