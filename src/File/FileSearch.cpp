#include "File/FileSearch.h"

#include "StringLocalizing/Model/LanguageName.h"
#include "ulo/rtl/FileSystem.h"

#include <locale>
#include <utility>

namespace LocalizationManager::File {

std::u16string WidenFolderName(const std::string& name) {
    // Subtags come from hosts and are not required to be valid UTF-8; a strict decoder would
    // turn a stray byte into an exception, where a folder that does not exist is the answer.
    const auto& facet = std::use_facet<std::ctype<wchar_t>>(std::locale());
    std::u16string wide;
    wide.reserve(name.size());
    for (const char character : name) {
        wide.push_back(static_cast<char16_t>(facet.widen(character)));
    }
    return wide;
}

std::u16string JoinPath(const std::u16string& left, const std::u16string& right) {
    if (right.empty()) {
        return left;
    }
    std::u16string path = left;
    if (!path.empty() && path.back() != u'/' && path.back() != u'\\') {
        path += u'/';
    }
    path += right;
    return path;
}

bool IsFolderNamePart(const std::string& part) {
    return part != ".." && part.find_first_of("/\\") == std::string::npos;
}

std::vector<std::u16string> CultureFolderNames(std::uint32_t languageId,
                                               const std::string& firstSubtag,
                                               const std::string& secondSubtag) {
    const std::u16string language =
        WidenFolderName(StringLocalizing::Model::LanguageName(languageId));
    std::vector<std::u16string> names{u"neutral", language};
    if (!firstSubtag.empty() && IsFolderNamePart(firstSubtag)) {
        const std::u16string withFirst = language + u"-" + WidenFolderName(firstSubtag);
        names.push_back(withFirst);
        if (!secondSubtag.empty() && IsFolderNamePart(secondSubtag)) {
            names.push_back(withFirst + u"-" + WidenFolderName(secondSubtag));
        }
    }
    return names;
}

FileSearch::FileSearch(std::vector<std::u16string> relativePaths, std::u16string baseDirectory,
                       const localization_manager::Culture& culture)
    : relativePaths_(std::move(relativePaths)),
      baseDirectory_(std::move(baseDirectory)),
      languageId_(culture.languageId),
      firstSubtag_(culture.firstSubtag.ToStdString()),
      secondSubtag_(culture.secondSubtag.ToStdString()) {}

std::vector<std::u16string> FileSearch::Candidates() const {
    const std::vector<std::u16string> folders =
        CultureFolderNames(languageId_, firstSubtag_, secondSubtag_);
    std::vector<std::u16string> candidates;
    candidates.reserve(folders.size() * relativePaths_.size());
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder) {
        const std::u16string directory = JoinPath(baseDirectory_, *folder);
        for (const std::u16string& relativePath : relativePaths_) {
            candidates.push_back(JoinPath(directory, relativePath));
        }
    }
    return candidates;
}

std::u16string FileSearch::Find() const {
    for (const std::u16string& candidate : Candidates()) {
        // Existence only: a directory named like the candidate is taken as found and fails
        // later, when it is read. Kept so the lookup order never depends on file types.
        if (ulo::filesystem::Exists(candidate)) {
            return candidate;
        }
    }
    return std::u16string();
}

}  // namespace LocalizationManager::File
