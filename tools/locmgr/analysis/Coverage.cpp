#include "Coverage.h"

#include "CultureFolder.h"
#include "File/FileSearch.h"
#include "LocFile.h"
#include "ulo/rtl/FileSystem.h"
#include "ulo/rtl/TextConversion.h"

#include <map>
#include <set>
#include <stdexcept>

namespace locmgr::analysis {

namespace {

using LocalizationManager::File::JoinPath;

// The keys of a file, lower-cased as the runtime compares them, each with its spelling in
// the file.
std::map<std::u16string, std::string> KeysOf(const LocFile* file) {
    std::map<std::u16string, std::string> keys;
    if (file == nullptr || !file->Dictionary()) {
        return keys;
    }
    for (const auto& entry : *file->Dictionary()) {
        const LocFile::IndexedEntry* source = file->FindEntry(entry.first);
        keys.emplace(entry.first,
                     ulo::WideToNarrowMessage(source != nullptr ? source->key : entry.first));
    }
    return keys;
}

std::string ProblemOf(const LocFile& file) {
    if (!file.ReadError().empty()) {
        return "cannot be read: " + file.ReadError();
    }
    if (file.ParseError()) {
        return "does not parse: " +
               file.ParseError()->report.substr(0, file.ParseError()->report.find('\n'));
    }
    if (!file.Duplicates().empty()) {
        return "defines a key twice: the runtime refuses it";
    }
    return std::string();
}

class CoverageBuilder {
  public:
    CoverageBuilder(const TreeModel& model, const std::string& reference)
        : model_(model), reference_(reference) {
        if (reference != kNeutralFolder && model.Cultures().count(reference) == 0) {
            throw std::invalid_argument("the reference '" + reference +
                                        "' is neither \"neutral\" nor a culture of the tree");
        }
    }

    CoverageReport Build() {
        CoverageReport report;
        report.reference = reference_;
        const std::set<std::u16string> referenceBinaries = ReferenceBinaries();
        for (const auto& [name, culture] : model_.Cultures()) {
            if (name == reference_) {
                continue;
            }
            CultureCoverage coverage;
            coverage.culture = name;
            const LocFile* common = FileOrNull(model_.ServingFile("common", culture));
            for (const std::string& scope : model_.Inventory().scopes) {
                coverage.scopes.push_back(ScopeOf(scope, culture, common));
            }
            coverage.binaries = BinaryGaps(culture, referenceBinaries);
            report.cultures.push_back(coverage);
        }
        report.shadowed = Shadowed();
        return report;
    }

  private:
    const LocFile* FileOrNull(const std::u16string& path) {
        return path.empty() ? nullptr : &files_.Get(path);
    }

    std::u16string ReferenceFile(const std::string& scope) const {
        return reference_ == kNeutralFolder
                   ? model_.NeutralFile(scope)
                   : model_.ServingFile(scope, model_.Cultures().at(reference_));
    }

    ScopeCoverage ScopeOf(const std::string& scope, const localization_manager::Culture& culture,
                          const LocFile* common) {
        ScopeCoverage coverage;
        coverage.scope = scope;
        const std::vector<Probe> probes = model_.ProbeScope(scope, culture);
        const Probe* served = nullptr;
        for (const Probe& probe : probes) {
            if (probe.exists && served == nullptr) {
                served = &probe;
            }
        }
        const std::u16string referencePath = ReferenceFile(scope);
        const auto referenceKeys = KeysOf(FileOrNull(referencePath));
        if (served == nullptr) {
            for (const auto& entry : referenceKeys) {
                coverage.missingKeys.push_back(entry.second);
            }
            return coverage;
        }
        coverage.file = served->path;
        coverage.fromAlternative = served->alternative;
        coverage.folder = served->folder;
        coverage.referenceFile = served->path == referencePath;
        const LocFile& file = files_.Get(served->path);
        coverage.problem = ProblemOf(file);
        const auto keys = KeysOf(&file);
        const auto commonKeys = KeysOf(common);
        for (const auto& [lower, written] : referenceKeys) {
            if (keys.count(lower) == 0) {
                coverage.missingKeys.push_back(written);
                if (commonKeys.count(lower) != 0) {
                    coverage.keysFromCommon.push_back(written);
                }
            }
        }
        for (const auto& [lower, written] : keys) {
            if (referenceKeys.count(lower) == 0 && !referenceKeys.empty()) {
                coverage.extraKeys.push_back(written);
            }
        }
        for (const Probe* probe = served + 1; probe != probes.data() + probes.size(); ++probe) {
            if (!probe->exists) {
                continue;
            }
            HiddenFile hidden{probe->path, {}};
            for (const auto& [lower, written] : KeysOf(&files_.Get(probe->path))) {
                if (keys.count(lower) == 0) {
                    hidden.hiddenKeys.push_back(written);
                }
            }
            if (!hidden.hiddenKeys.empty()) {
                coverage.hidden.push_back(hidden);
            }
        }
        return coverage;
    }

    // The binary resource files of the reference's own folders.
    std::set<std::u16string> ReferenceBinaries() const {
        std::set<std::string> folders;
        if (reference_ == kNeutralFolder) {
            folders.insert(kNeutralFolder);
        } else {
            const localization_manager::Culture& culture = model_.Cultures().at(reference_);
            for (const std::u16string& name : LocalizationManager::File::CultureFolderNames(
                     culture.languageId, culture.firstSubtag.ToStdString(),
                     culture.secondSubtag.ToStdString())) {
                if (name != u"neutral") {
                    folders.insert(ulo::WideToNarrowMessage(name));
                }
            }
        }
        std::set<std::u16string> files;
        for (const BinaryEntry& binary : model_.Inventory().binaries) {
            if (folders.count(model_.Inventory().folders[binary.folder].name) != 0) {
                files.insert(binary.path);
            }
        }
        return files;
    }

    std::vector<BinaryGap> BinaryGaps(const localization_manager::Culture& culture,
                                      const std::set<std::u16string>& referenceFiles) const {
        std::vector<BinaryGap> gaps;
        std::set<std::pair<std::string, std::string>> seen;
        for (const BinaryEntry& binary : model_.Inventory().binaries) {
            if (referenceFiles.count(binary.path) == 0 ||
                !seen.emplace(binary.scope, binary.key).second) {
                continue;
            }
            std::u16string served;
            for (const std::u16string& candidate : model_.Provider().BinaryResourceCandidates(
                     ulo::Utf8ToWide(binary.scope), culture, ulo::Utf8ToWide(binary.key))) {
                if (ulo::filesystem::Exists(candidate)) {
                    served = candidate;
                    break;
                }
            }
            if (served.empty() || referenceFiles.count(served) != 0) {
                gaps.push_back({binary.scope, binary.key, served});
            }
        }
        return gaps;
    }

    std::vector<ShadowedFile> Shadowed() const {
        std::vector<ShadowedFile> shadowed;
        const TreeInventory& inventory = model_.Inventory();
        if (inventory.alternative.empty()) {
            return shadowed;
        }
        const auto check = [&](const std::u16string& path) {
            if (path.compare(0, inventory.root.size(), inventory.root) != 0) {
                return;
            }
            std::u16string relative = path.substr(inventory.root.size());
            while (!relative.empty() && relative.front() == u'/') {
                relative.erase(0, 1);
            }
            const std::u16string alternative = JoinPath(inventory.alternative, relative);
            if (ulo::filesystem::Exists(alternative)) {
                shadowed.push_back({path, alternative});
            }
        };
        for (const LocFileEntry& file : inventory.locFiles) {
            if (!inventory.folders[file.folder].alternative) {
                check(file.path);
            }
        }
        for (const BinaryEntry& binary : inventory.binaries) {
            if (!inventory.folders[binary.folder].alternative) {
                check(binary.path);
            }
        }
        return shadowed;
    }

    const TreeModel& model_;
    const std::string reference_;
    LocFileCache files_;
};

}  // namespace

CoverageReport ComputeCoverage(const TreeModel& model, const std::string& reference) {
    return CoverageBuilder(model, reference).Build();
}

}  // namespace locmgr::analysis
