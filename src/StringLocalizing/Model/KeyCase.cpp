#include "StringLocalizing/Model/KeyCase.h"

#include <locale>

namespace LocalizationManager::StringLocalizing::Model {

namespace {

bool IsSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}

}  // namespace

std::u16string LowerCaseKey(const std::u16string& key) {
    // There is no ctype facet for char16_t; the wide facet covers every basic-plane unit
    // because wchar_t is wider than 16 bits here.
    const std::locale locale;
    const auto& facet = std::use_facet<std::ctype<wchar_t>>(locale);
    std::u16string lowered(key);
    for (char16_t& unit : lowered) {
        if (!IsSurrogate(unit)) {
            unit = static_cast<char16_t>(facet.tolower(static_cast<wchar_t>(unit)));
        }
    }
    return lowered;
}

}  // namespace LocalizationManager::StringLocalizing::Model
