#pragma once

// The search order of the localization tree. A culture is served from its culture folders,
// most specific first ("en-US-x", "en-US", "en", then "neutral"); within one culture folder
// every relative path of a lookup is tried before the next, less specific folder. The provider
// runs one search per base directory; tools that explain which file serves a request list the
// same candidates without touching the disk.

#include "localization_manager/Culture.h"

#include <cstdint>
#include <string>
#include <vector>

namespace LocalizationManager::File {

// A narrow folder name (language name, subtag, rule qualifier) as a path part: widened
// character by character through the global locale's ctype facet. Never throws; a byte the
// locale cannot widen gives a character no folder on disk is named with.
std::u16string WidenFolderName(const std::string& name);

// Whether a subtag or rule qualifier from a host can be part of a folder name. One holding a
// separator or equal to ".." could lead out of the localization directories, so the folders it
// would name are left out of every search.
bool IsFolderNamePart(const std::string& part);

// Appends `right` to `left` with "/" between them. An empty `right` leaves `left` unchanged;
// no separator is added after an empty `left` or one that already ends in "/" or "\". Parts
// holding separators of their own ("dialogs/download") are appended as they stand.
std::u16string JoinPath(const std::u16string& left, const std::u16string& right);

// The culture folder names of a culture, from the least to the most specific: "neutral", the
// language name L, L-T1 when the first subtag T1 is not empty, L-T1-T2 when T1 and the second
// subtag T2 are both not empty (a second subtag without a first is ignored). Throws
// std::range_error
// ("Unsupported language <id>") for a language id outside the language table.
std::vector<std::u16string> CultureFolderNames(std::uint32_t languageId,
                                               const std::string& firstSubtag,
                                               const std::string& secondSubtag);

// One lookup over one base directory: the relative paths to try in each culture folder of one
// culture. Built per lookup and thrown away; immutable, so concurrent use is safe.
class FileSearch {
  public:
    FileSearch(std::vector<std::u16string> relativePaths, std::u16string baseDirectory,
               const localization_manager::Culture& culture);

    // Every path the search tries, in order: culture folders from the most specific to
    // "neutral", and within each folder the relative paths in the order given. Looks at no
    // file. Throws std::range_error for a language id outside the language table.
    std::vector<std::u16string> Candidates() const;

    // The first candidate that exists (a directory of that name counts), or the empty string
    // when none does. Throws what Candidates throws, before any file is looked at.
    std::u16string Find() const;

  private:
    const std::vector<std::u16string> relativePaths_;
    const std::u16string baseDirectory_;
    const std::uint32_t languageId_;
    const std::string firstSubtag_;
    const std::string secondSubtag_;
};

}  // namespace LocalizationManager::File
