#pragma once

// "locmgr export --format po": for one culture, a PO catalog per scope of the reference, so
// that translators work in the tools they know. Each key of the reference's file is one unit
// (a key whose text has plural invocations one unit per choice of the other discriminators'
// forms, the first discriminator being the catalog's plural): the reference's text as source,
// the text the culture reads as target (empty when the culture has none of its own), the key
// as context, and the comments the reference's file writes above the entry (and after it on
// its line) as notes. The header's Plural-Forms is the culture's rule, built-in or from its
// rule file.

#include "TreeModel.h"

#include <cstddef>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct PoExportOptions {
    std::string culture;                // as an application names it
    std::string reference = "neutral";  // "neutral" or a culture's folder name
    // The language the neutral texts are written in ("en"), whose plural rule tells which of
    // their forms is singular and plural; empty to read them with the culture's rule.
    std::string neutralLanguage;
    std::string outputDirectory;
    std::vector<std::string> scopes;  // empty: every scope of the reference
};

struct ExportedCatalog {
    std::string scope;
    std::string output;  // the file written
    std::size_t units = 0;
    std::size_t translated = 0;  // units with a target
    std::string problem;         // why nothing was written, or empty
};

// Throws std::invalid_argument for an unknown culture, reference or scope, and
// std::runtime_error when a file cannot be written.
std::vector<ExportedCatalog> ExportPo(const TreeModel& model, const PoExportOptions& options);

}  // namespace locmgr::analysis
