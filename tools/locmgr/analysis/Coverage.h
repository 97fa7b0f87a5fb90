#pragma once

// "locmgr coverage": per culture and scope, which file the runtime reads and how its keys
// compare with a reference culture's. The runtime reads one file per scope, the first it finds,
// and never merges files: a partial "en-US" file hides every key of "en" and "neutral" that it
// lacks. That is the trap this report is for.

#include "TreeModel.h"

#include <string>
#include <vector>

namespace locmgr::analysis {

// A file that exists for a scope and culture but comes after the one the runtime reads.
struct HiddenFile {
    std::u16string path;
    // Keys of this file that the file read lacks: the culture never sees their texts here.
    // Files whose every key the file read has are not listed.
    std::vector<std::string> hiddenKeys;
};

struct ScopeCoverage {
    std::string scope;
    std::u16string file;  // the file the runtime reads; empty when there is none
    bool fromAlternative = false;
    std::string folder;          // the culture folder of `file`
    bool referenceFile = false;  // `file` is the one the reference reads itself
    // Keys of the reference that the file lacks, and those of them the culture's common.lt
    // answers instead (with its own text).
    std::vector<std::string> missingKeys;
    std::vector<std::string> keysFromCommon;
    // Keys of the file that the reference lacks.
    std::vector<std::string> extraKeys;
    std::vector<HiddenFile> hidden;
    std::string problem;  // why the file cannot be read or parsed, when it cannot
};

// A binary resource of the reference that a culture gets no version of its own for.
struct BinaryGap {
    std::string scope;  // a scope's folder or "Common"
    std::string key;
    std::u16string servedFrom;  // the reference's file the culture gets, empty when none
};

struct CultureCoverage {
    std::string culture;
    std::vector<ScopeCoverage> scopes;
    std::vector<BinaryGap> binaries;
};

struct ShadowedFile {
    std::u16string rootFile;
    std::u16string alternativeFile;
};

struct CoverageReport {
    std::string reference;
    std::vector<CultureCoverage> cultures;
    // Root files with a file of the same path in the alternative directory.
    std::vector<ShadowedFile> shadowed;
};

// `reference` is "neutral" (the texts a culture without folders of its own reads) or the name
// of a culture of the model. Throws std::invalid_argument for another name.
CoverageReport ComputeCoverage(const TreeModel& model, const std::string& reference);

}  // namespace locmgr::analysis
