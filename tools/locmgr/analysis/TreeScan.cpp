#include "TreeScan.h"

#include "CultureFolder.h"
#include "File/FileSearch.h"
#include "StringLocalizing/Model/LanguageName.h"
#include "ulo/rtl/TextConversion.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace locmgr::analysis {

namespace {

namespace fs = std::filesystem;
using LocalizationManager::File::JoinPath;

constexpr char kLocsFolder[] = "Locs";
constexpr char kTextExtension[] = ".lt";
constexpr char kRuleFileName[] = "Plural.rule";

bool IsUtf8(const std::string& text) {
    try {
        ulo::Utf8ToWide(text);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool EndsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool IsLanguageName(const std::string& name) {
    for (std::uint32_t id = 0; id < LocalizationManager::StringLocalizing::Model::kLanguageCount;
         ++id) {
        if (LocalizationManager::StringLocalizing::Model::LanguageName(id) == name) {
            return true;
        }
    }
    return false;
}

Finding Ignored(const std::u16string& path, const std::string& why) {
    Finding finding;
    finding.kind = FindingKind::kIgnoredFile;
    finding.file = ulo::WideToNarrowMessage(path);
    finding.message = why;
    return finding;
}

// The entries of a folder in name order (directory order differs between file systems, and
// the output must not). Unreadable folders give nothing.
std::vector<fs::directory_entry> List(const fs::path& folder) {
    std::vector<fs::directory_entry> entries;
    std::error_code error;
    fs::directory_iterator iterator(folder, fs::directory_options::skip_permission_denied, error);
    for (; !error && iterator != fs::directory_iterator(); iterator.increment(error)) {
        entries.push_back(*iterator);
    }
    std::sort(entries.begin(), entries.end(),
              [](const auto& left, const auto& right) { return left.path() < right.path(); });
    return entries;
}

bool IsDirectory(const fs::directory_entry& entry) {
    std::error_code error;
    return entry.is_directory(error) && !entry.is_symlink(error);
}

class Scanner {
  public:
    explicit Scanner(TreeInventory& inventory) : inventory_(inventory) {}

    void ScanBase(const std::string& base, bool alternative) {
        for (const fs::directory_entry& entry : List(base)) {
            std::error_code error;
            if (!entry.is_directory(error)) {
                continue;
            }
            const std::string name = entry.path().filename().string();
            const std::u16string basePath = alternative ? inventory_.alternative : inventory_.root;
            if (!IsUtf8(name)) {
                Warn(FindingKind::kUnknownFolder, basePath, name,
                     "folder name is not valid UTF-8: no culture reads it");
                continue;
            }
            CultureFolder folder;
            folder.name = name;
            folder.alternative = alternative;
            folder.path = JoinPath(basePath, ulo::Utf8ToWide(name));
            folder.neutral = name == kNeutralFolder;
            folder.culture = CultureOfFolder(name);
            if (!folder.neutral && !folder.culture) {
                Warn(FindingKind::kUnknownFolder, basePath, name,
                     "folder '" + name + "' is not named after a culture: no culture reads it");
                continue;
            }
            inventory_.folders.push_back(folder);
            ScanFolder(entry.path(), inventory_.folders.size() - 1);
        }
    }

  private:
    void Warn(FindingKind kind, const std::u16string& base, const std::string& name,
              const std::string& message) {
        Finding finding;
        finding.kind = kind;
        finding.file =
            ulo::WideToNarrowMessage(JoinPath(base, ulo::Utf8ToWide(IsUtf8(name) ? name : "?")));
        finding.message = message;
        inventory_.findings.push_back(finding);
    }

    std::u16string PathIn(std::size_t folder, const std::string& relative) const {
        return JoinPath(inventory_.folders[folder].path, ulo::Utf8ToWide(relative));
    }

    void ScanFolder(const fs::path& folderPath, std::size_t folder) {
        for (const fs::directory_entry& entry : List(folderPath)) {
            const std::string name = entry.path().filename().string();
            if (!IsUtf8(name)) {
                continue;
            }
            if (IsDirectory(entry)) {
                if (name == kLocsFolder) {
                    ScanLocs(entry.path(), folder);
                } else {
                    ScanSubfolder(entry.path(), name, folder);
                }
            } else if (name == kRuleFileName) {
                AddRuleFile(folder, "", PathIn(folder, name));
            } else if (EndsWith(name, kTextExtension)) {
                inventory_.findings.push_back(
                    Ignored(PathIn(folder, name), "texts are read only from the folder \"Locs\""));
            }
        }
    }

    // Every file below Locs ending in ".lt" is a scope, also in sub-folders
    // ("Locs/dialogs/save.lt" is the scope "dialogs/save"). A folder with such a name counts as
    // the runtime counts it: found, and then unreadable.
    void ScanLocs(const fs::path& locs, std::size_t folder) {
        std::error_code error;
        fs::recursive_directory_iterator iterator(
            locs, fs::directory_options::skip_permission_denied, error);
        std::vector<std::string> relatives;
        for (; !error && iterator != fs::recursive_directory_iterator();
             iterator.increment(error)) {
            const std::string relative = iterator->path().lexically_relative(locs).generic_string();
            if (!IsUtf8(relative)) {
                continue;
            }
            std::error_code typeError;
            const bool directory = iterator->is_directory(typeError);
            // "Locs/.lt" would be a scope without a name, which the runtime refuses.
            if (EndsWith(relative, kTextExtension) && relative.size() > 3 &&
                relative[relative.size() - 4] != '/') {
                relatives.push_back(relative);
            } else if (!directory) {
                inventory_.findings.push_back(
                    Ignored(PathIn(folder, std::string(kLocsFolder) + "/" + relative),
                            "only files named SCOPE.lt are read from \"Locs\""));
            }
        }
        std::sort(relatives.begin(), relatives.end());
        for (const std::string& relative : relatives) {
            const std::string scope = relative.substr(0, relative.size() - 3);
            inventory_.locFiles.push_back(
                {PathIn(folder, std::string(kLocsFolder) + "/" + relative), scope, folder});
            inventory_.scopes.push_back(scope);
        }
    }

    // A scope's binary resources, "Common", or a subtag folder holding a plural rule file.
    void ScanSubfolder(const fs::path& path, const std::string& name, std::size_t folder) {
        std::error_code error;
        fs::recursive_directory_iterator iterator(
            path, fs::directory_options::skip_permission_denied, error);
        std::vector<std::string> keys;
        for (; !error && iterator != fs::recursive_directory_iterator();
             iterator.increment(error)) {
            std::error_code typeError;
            if (iterator->is_directory(typeError)) {
                continue;
            }
            const std::string key = iterator->path().lexically_relative(path).generic_string();
            if (IsUtf8(key)) {
                keys.push_back(key);
            }
        }
        std::sort(keys.begin(), keys.end());
        for (const std::string& key : keys) {
            const std::u16string filePath = PathIn(folder, name + "/" + key);
            if (key == kRuleFileName) {
                AddRuleFile(folder, name, filePath);
            } else if (EndsWith(key, std::string("/") + kRuleFileName)) {
                inventory_.findings.push_back(
                    Ignored(filePath,
                            "plural rule files are read only as LANGUAGE/Plural.rule "
                            "or LANGUAGE/SUBTAG/Plural.rule"));
            } else {
                inventory_.binaries.push_back({filePath, folder, name, key});
            }
        }
    }

    // Only the root's LANGUAGE/Plural.rule and LANGUAGE/SUBTAG/Plural.rule are ever read.
    void AddRuleFile(std::size_t folderIndex, const std::string& qualifier,
                     const std::u16string& path) {
        const CultureFolder& folder = inventory_.folders[folderIndex];
        std::string why;
        if (folder.alternative) {
            why = "plural rule files are read from the root directory only";
        } else if (folder.neutral) {
            why = "no plural rule is read from \"neutral\"";
        } else if (!IsLanguageName(folder.name) && !qualifier.empty()) {
            why = "never read";
        } else if (!IsLanguageName(folder.name)) {
            const std::string language = LocalizationManager::StringLocalizing::Model::LanguageName(
                folder.culture->languageId);
            why = "a plural rule for the subtag \"" + folder.culture->firstSubtag.ToStdString() +
                  "\" is read only from " + language + "/" +
                  folder.culture->firstSubtag.ToStdString() + "/" + kRuleFileName;
        } else if (!LocalizationManager::File::IsFolderNamePart(qualifier)) {
            why = "never read";
        }
        if (!why.empty()) {
            inventory_.findings.push_back(Ignored(path, why));
            return;
        }
        inventory_.ruleFiles.push_back({path, folderIndex, qualifier});
    }

    TreeInventory& inventory_;
};

bool IsReadableDirectory(const std::string& path) {
    std::error_code error;
    if (!fs::is_directory(path, error)) {
        return false;
    }
    fs::directory_iterator probe(path, error);
    return !error;
}

}  // namespace

TreeInventory ScanTree(const std::string& root, const std::string& alternative) {
    if (!IsReadableDirectory(root)) {
        throw TreeError("cannot read the localization directory '" + root + "'");
    }
    if (!IsUtf8(root) || !IsUtf8(alternative)) {
        throw TreeError("directory names must be valid UTF-8");
    }
    TreeInventory inventory;
    inventory.root = ulo::Utf8ToWide(root);
    inventory.alternative = ulo::Utf8ToWide(alternative);
    Scanner scanner(inventory);
    if (!alternative.empty()) {
        if (IsReadableDirectory(alternative)) {
            scanner.ScanBase(alternative, true);
        } else {
            Finding finding;
            finding.kind = FindingKind::kMissingAlternative;
            finding.file = alternative;
            finding.message = "the alternative directory '" + alternative +
                              "' cannot be read: nothing is taken from it";
            inventory.findings.push_back(finding);
        }
    }
    scanner.ScanBase(root, false);
    std::sort(inventory.scopes.begin(), inventory.scopes.end());
    inventory.scopes.erase(std::unique(inventory.scopes.begin(), inventory.scopes.end()),
                           inventory.scopes.end());
    return inventory;
}

}  // namespace locmgr::analysis
