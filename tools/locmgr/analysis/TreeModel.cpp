#include "TreeModel.h"

#include "CultureFolder.h"
#include "File/FileSearch.h"
#include "StringLocalizing/Model/CultureNames.h"
#include "ulo/ResultCode.h"
#include "ulo/rtl/FileSystem.h"
#include "ulo/rtl/TextConversion.h"

#include <stdexcept>

namespace locmgr::analysis {

namespace {

using LocalizationManager::File::JoinPath;

}  // namespace

TreeModel::TreeModel(const std::string& root, const std::string& alternative,
                     const std::vector<std::string>& extraCultureNames)
    : inventory_(ScanTree(root, alternative)) {
    provider_ = std::make_unique<LocalizationManager::File::FileResourceProvider>(
        inventory_.root, inventory_.alternative);
    for (const CultureFolder& folder : inventory_.folders) {
        if (folder.culture) {
            cultures_.emplace(folder.name, *folder.culture);
        }
    }
    for (const std::string& name : extraCultureNames) {
        localization_manager::Culture culture;
        if (ulo::Failed(
                LocalizationManager::StringLocalizing::Model::ConvertCultureName(name, culture))) {
            throw std::invalid_argument("unknown culture name '" + name + "'");
        }
        cultures_.emplace(CultureName(culture), culture);
    }
}

std::pair<std::string, localization_manager::Culture> TreeModel::CultureNamed(
    const std::string& name) const {
    localization_manager::Culture culture;
    if (ulo::Failed(
            LocalizationManager::StringLocalizing::Model::ConvertCultureName(name, culture))) {
        throw std::invalid_argument("unknown culture name '" + name + "'");
    }
    const auto found = cultures_.find(CultureName(culture));
    if (found == cultures_.end()) {
        throw std::invalid_argument("the tree was not read for culture '" + name + "'");
    }
    return *found;
}

std::vector<Probe> TreeModel::ProbeScope(const std::string& scope,
                                         const localization_manager::Culture& culture) const {
    const std::vector<std::u16string> candidates =
        provider_->LocalizationFileCandidates(ulo::Utf8ToWide(scope), culture);
    const auto folders = LocalizationManager::File::CultureFolderNames(
        culture.languageId, culture.firstSubtag.ToStdString(), culture.secondSubtag.ToStdString());
    // The provider lists the alternative directory's folders first, each from the most
    // specific to "neutral", then the root's in the same order.
    const std::size_t perBase = folders.size();
    std::vector<Probe> probes;
    for (std::size_t index = 0; index < candidates.size(); ++index) {
        Probe probe;
        probe.path = candidates[index];
        probe.exists = ulo::filesystem::Exists(probe.path);
        probe.alternative = !inventory_.alternative.empty() && index < perBase;
        probe.folder = ulo::WideToNarrowMessage(folders[folders.size() - 1 - index % perBase]);
        probes.push_back(probe);
    }
    return probes;
}

std::u16string TreeModel::ServingFile(const std::string& scope,
                                      const localization_manager::Culture& culture) const {
    for (const Probe& probe : ProbeScope(scope, culture)) {
        if (probe.exists) {
            return probe.path;
        }
    }
    return std::u16string();
}

std::u16string TreeModel::NeutralFile(const std::string& scope) const {
    const std::u16string relative = u"Locs/" + ulo::Utf8ToWide(scope) + u".lt";
    for (const std::u16string* base : {&inventory_.alternative, &inventory_.root}) {
        if (base->empty()) {
            continue;
        }
        const std::u16string path = JoinPath(JoinPath(*base, u"neutral"), relative);
        if (ulo::filesystem::Exists(path)) {
            return path;
        }
    }
    return std::u16string();
}

std::u16string TreeModel::ReferenceFile(const std::string& reference,
                                        const std::string& scope) const {
    return reference == kNeutralFolder ? NeutralFile(scope)
                                       : ServingFile(scope, cultures_.at(reference));
}

std::u16string TreeModel::OwnFile(const std::string& scope,
                                  const localization_manager::Culture& culture) const {
    const std::vector<Probe> probes = ProbeScope(scope, culture);
    if (probes.empty()) {
        return std::u16string();
    }
    // The first probe is the most specific folder; the root's probes come last.
    std::u16string inRoot;
    for (const Probe& probe : probes) {
        if (probe.folder == probes.front().folder) {
            if (probe.exists) {
                return probe.path;
            }
            inRoot = probe.path;
        }
    }
    return inRoot;
}

std::u16string TreeModel::BaseFile(const std::string& scope,
                                   const localization_manager::Culture& culture) const {
    const std::u16string own = OwnFile(scope, culture);
    return ulo::filesystem::Exists(own) ? own : ServingFile(scope, culture);
}

std::u16string TreeModel::FolderOf(const std::string& cultureName) const {
    const CultureFolder* found = nullptr;
    for (const CultureFolder& folder : inventory_.folders) {
        if (folder.name == cultureName && (found == nullptr || !folder.alternative)) {
            found = &folder;
        }
    }
    return found != nullptr ? found->path : JoinPath(inventory_.root, ulo::Utf8ToWide(cultureName));
}

}  // namespace locmgr::analysis
