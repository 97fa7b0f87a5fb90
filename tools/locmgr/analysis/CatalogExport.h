#pragma once

// "locmgr export": for one culture, a translation catalog per scope of the reference, so that
// translators work in the tools they know. Each key of the reference's file is one unit (a key
// whose text has plural invocations one unit per choice of the other discriminators' forms,
// the first discriminator being the catalog's plural): the reference's text as source, the
// text the culture reads as target (none when the culture has none of its own), the key as
// context, and the comments the reference's file writes above the entry (and after it on its
// line) as notes. The catalog's plural rule is the culture's, built-in or from its rule file.

#include "TranslationUnit.h"
#include "TreeModel.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct CatalogExportOptions {
    std::string culture;                // as an application names it
    std::string reference = "neutral";  // "neutral" or a culture's folder name
    // The language the neutral texts are written in ("en"), whose plural rule tells which of
    // their forms is singular and plural; empty to read them with the culture's rule.
    std::string neutralLanguage;
    std::vector<std::string> scopes;  // empty: every scope of the reference
};

struct ExportedCatalog {
    Catalog catalog;      // its scope always set
    std::string problem;  // why the scope cannot be exported, or empty
};

// A scope the reference has no texts of.
class UnknownScope : public std::invalid_argument {
  public:
    using std::invalid_argument::invalid_argument;
};

// Throws UnknownScope, and std::invalid_argument for an unknown culture or reference.
std::vector<ExportedCatalog> ExportCatalogs(const TreeModel& model,
                                            const CatalogExportOptions& options);

}  // namespace locmgr::analysis
