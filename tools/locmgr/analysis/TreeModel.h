#pragma once

// A localization tree as the runtime will see it: what is on disk, the cultures the tree is
// meant for, and which file the runtime reads for a scope and culture. The lookups go through
// the runtime's own file resource provider, so the answer is the runtime's answer.

#include "File/FileResourceProvider.h"
#include "TreeScan.h"
#include "localization_manager/Culture.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace locmgr::analysis {

// The scope whose texts every other scope of the same culture falls back to.
inline constexpr char kCommonScope[] = "common";

// One path the runtime tries for a file, in order.
struct Probe {
    std::u16string path;
    bool exists = false;
    bool alternative = false;  // in the alternative directory
    std::string folder;        // the culture folder: "neutral", "en", "en-US"
};

class TreeModel {
  public:
    // The cultures are those named by the culture folders of both directories and those in
    // `extraCultureNames` (culture names as an application passes them: "fr", "anz"), which
    // lets a tree be checked for a culture it serves only from "neutral". Throws TreeError for
    // an unreadable root and std::invalid_argument for an unknown culture name.
    TreeModel(const std::string& root, const std::string& alternative,
              const std::vector<std::string>& extraCultureNames = {});

    const TreeInventory& Inventory() const { return inventory_; }
    // The runtime's provider over the tree; immutable and safe for concurrent callers, so the
    // pipeline's steps may use it from a const model.
    LocalizationManager::File::FileResourceProvider& Provider() const { return *provider_; }
    // By name ("de", "en-US"), sorted.
    const std::map<std::string, localization_manager::Culture>& Cultures() const {
        return cultures_;
    }

    // The culture an application calls `name` ("FR", "anz"), and its name in Cultures().
    // Throws std::invalid_argument for an unknown culture name or a culture the model was not
    // read for.
    std::pair<std::string, localization_manager::Culture> CultureNamed(
        const std::string& name) const;

    // The paths the runtime tries for the file of `scope`, in order, each with whether it
    // exists (the runtime's own existence test).
    std::vector<Probe> ProbeScope(const std::string& scope,
                                  const localization_manager::Culture& culture) const;
    // The file the runtime reads for `scope` in `culture`, or empty.
    std::u16string ServingFile(const std::string& scope,
                               const localization_manager::Culture& culture) const;
    // The file a culture without folders of its own reads: "neutral" of the alternative
    // directory, then of the root; or empty.
    std::u16string NeutralFile(const std::string& scope) const;
    // The file of `scope` that a comparison with `reference` ("neutral" or a culture of the
    // model) reads: NeutralFile, or the file that culture reads; or empty. Throws
    // std::out_of_range for a reference that is neither.
    std::u16string ReferenceFile(const std::string& reference, const std::string& scope) const;
    // Where the culture's own file of `scope` is: the file of its most specific folder that the
    // runtime finds first (the alternative directory before the root), else where that file
    // would be in the root. Files written for a culture go there.
    std::u16string OwnFile(const std::string& scope,
                           const localization_manager::Culture& culture) const;
    // The file a culture's own file of `scope` starts from: OwnFile when it exists, else the
    // file the culture reads today (so that writing it changes nothing it serves), or empty.
    std::u16string BaseFile(const std::string& scope,
                            const localization_manager::Culture& culture) const;

    // The folder where a culture's own files belong (for findings about the culture as a
    // whole): its folder in the root, else in the alternative directory, else where it would be
    // in the root.
    std::u16string FolderOf(const std::string& cultureName) const;

  private:
    TreeInventory inventory_;
    std::unique_ptr<LocalizationManager::File::FileResourceProvider> provider_;
    std::map<std::string, localization_manager::Culture> cultures_;
};

}  // namespace locmgr::analysis
