#include "StringLocalizing/Model/LanguageName.h"

#include <boost/format.hpp>

#include <stdexcept>

namespace LocalizationManager::StringLocalizing::Model {

namespace {

// Not alphabetical by English name (Traditional before Simplified Chinese, Portuguese before
// Polish, ...): the ids are what cultures and rule ids store.
// clang-format off
constexpr const char* kLanguageNames[kLanguageCount] = {
    "ar", "bg", "zh-Hant", "zh-Hans", "cs", "da", "nl", "en", "et", "fa", "fi", "fr",  //  0..11
    "de", "el", "hu", "id", "ga", "it", "ja", "kk", "ko", "lt", "lv", "nb",            // 12..23
    "pt", "pl", "ru", "ro", "es", "sr-Cyrl", "sr-Latn", "sl", "sv", "tr", "vi",        // 24..34
};
// clang-format on

}  // namespace

std::string LanguageName(std::uint32_t languageId) {
    if (languageId >= kLanguageCount) {
        // "%1" without its closing "%" is rejected by Boost.Format as an ill-formed format.
        throw std::range_error(boost::str(boost::format("Unsupported language %1%") % languageId));
    }
    return kLanguageNames[languageId];
}

}  // namespace LocalizationManager::StringLocalizing::Model
