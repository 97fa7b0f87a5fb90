#include "CultureFolder.h"

#include "File/FileSearch.h"
#include "StringLocalizing/Model/LanguageName.h"
#include "ulo/rtl/TextConversion.h"

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;

ulo::types::basic_string_t<char> Subtag(const std::string& text) {
    return ulo::types::basic_string_t<char>(text);
}

}  // namespace

std::string CultureName(const localization_manager::Culture& culture) {
    const auto names = LocalizationManager::File::CultureFolderNames(
        culture.languageId, culture.firstSubtag.ToStdString(), culture.secondSubtag.ToStdString());
    return ulo::WideToNarrowMessage(names.back());
}

std::optional<localization_manager::Culture> CultureOfFolder(const std::string& folderName) {
    // The longest language name that begins the folder name: "sr-Latn-RS" is Serbian (Latin)
    // with the subtag "RS", never a language "sr" (there is none, and none may appear).
    std::optional<localization_manager::Culture> best;
    std::size_t bestLength = 0;
    for (std::uint32_t id = 0; id < Model::kLanguageCount; ++id) {
        const std::string language = Model::LanguageName(id);
        if (folderName.compare(0, language.size(), language) != 0 ||
            language.size() <= bestLength) {
            continue;
        }
        const std::string rest = folderName.substr(language.size());
        if (!rest.empty() && rest.front() != '-') {
            continue;
        }
        localization_manager::Culture culture;
        culture.languageId = id;
        if (!rest.empty()) {
            const std::size_t secondDash = rest.find('-', 1);
            culture.firstSubtag = Subtag(rest.substr(
                1, secondDash == std::string::npos ? std::string::npos : secondDash - 1));
            if (secondDash != std::string::npos) {
                culture.secondSubtag = Subtag(rest.substr(secondDash + 1));
            }
        }
        // Only a name that the runtime builds for this culture is read ("de-" or "en--x" are
        // not: empty subtags are left out of the folder names).
        if (CultureName(culture) != folderName) {
            continue;
        }
        best = culture;
        bestLength = language.size();
    }
    return best;
}

}  // namespace locmgr::analysis
