#pragma once

// "locmgr pseudo": a pseudo-localized copy of texts, laid out as an alternative directory, so
// that an application run with it shows every text it takes from the tree changed and every
// other text unchanged, without any change to the application or the module.
//
// Without a culture the whole root is copied folder by folder: through the alternative
// directory every culture then reads the copy of exactly the file it read before, so plural
// invocations keep the form counts of their cultures and "locmgr check" of the root with the
// copy as the alternative directory finds what it finds without it. With a culture, the files
// that culture reads are written into its own folder only, which changes that culture (and
// cultures below it, such as de-AT under de) and no other.

#include "PseudoText.h"
#include "TreeModel.h"

#include <optional>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct PseudoFile {
    std::u16string source;
    std::string output;
    std::size_t keys = 0;
    std::string problem;  // why the file was not written (it does not parse), or empty
};

struct PseudoOptions {
    std::string outputDirectory;
    std::optional<std::string> culture;  // as an application names it
    PseudoStyle style = PseudoStyle::kAccents;
};

// Throws std::invalid_argument for an unknown culture or an output directory that is the root
// or inside it, and std::runtime_error when a file cannot be written.
std::vector<PseudoFile> WritePseudoTree(const TreeModel& model, const PseudoOptions& options);

}  // namespace locmgr::analysis
