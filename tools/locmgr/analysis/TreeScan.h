#pragma once

// What a localization tree holds on disk: its culture folders, the texts in their "Locs"
// folders, the plural rule files and the binary resources, in the root and the alternative
// directory. The runtime never lists a folder, it probes the paths of one request; the checks
// list everything so that they can ask, for every file, which requests would read it. Paths
// are built the way the runtime builds them (the directory as given, joined with "/"), so that
// they compare equal to the runtime's candidates.

#include "Finding.h"
#include "localization_manager/Culture.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace locmgr::analysis {

// The root directory cannot be read: the runtime refuses it too.
class TreeError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct CultureFolder {
    std::string name;
    bool alternative = false;  // in the alternative directory
    std::u16string path;
    bool neutral = false;
    std::optional<localization_manager::Culture> culture;  // the culture it is the folder of
};

struct LocFileEntry {
    std::u16string path;
    std::string scope;       // "download", "dialogs/save"
    std::size_t folder = 0;  // index into TreeInventory::folders
};

struct RuleFileEntry {
    std::u16string path;
    std::size_t folder = 0;
    std::string qualifier;  // the subtag folder, empty for LANGUAGE/Plural.rule
};

struct BinaryEntry {
    std::u16string path;
    std::size_t folder = 0;
    std::string scope;  // the folder it is in: a scope's name or "Common"
    std::string key;    // the path below that folder
};

struct TreeInventory {
    std::u16string root;
    std::u16string alternative;  // empty when none was given
    std::vector<CultureFolder> folders;
    std::vector<LocFileEntry> locFiles;
    std::vector<RuleFileEntry> ruleFiles;
    std::vector<BinaryEntry> binaries;
    std::vector<std::string> scopes;  // every scope some folder has a file of, sorted
    // Folders no culture reads and files the runtime never reads (warnings).
    std::vector<Finding> findings;
};

// Throws TreeError when `root` is not a readable directory. A missing alternative directory
// is a warning, as the runtime accepts it. Unreadable sub-folders are skipped; symbolic links
// to folders are not followed, so a loop in the tree cannot keep the scan going.
TreeInventory ScanTree(const std::string& root, const std::string& alternative);

}  // namespace locmgr::analysis
