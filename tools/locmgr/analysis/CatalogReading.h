#pragma once

// Reading back the translation catalogs "locmgr export" writes, after translators and their
// tools have filled them in: GNU gettext PO through gettext's own library, XLIFF 1.2 through
// libxml2. Only what the import needs is kept: each unit's context and translations.

#include <stdexcept>
#include <string>
#include <vector>

namespace locmgr::analysis {

// A catalog that cannot be read, with the reader's own report.
class CatalogReadError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct ImportedUnit {
    std::string context;
    // In brace format: one, or one per plural form.
    std::vector<std::string> targets;
    // Whether a translator's text is there to take: a PO unit that is not fuzzy and has a
    // translation, an XLIFF target with text in a state other than "new" or
    // "needs-translation".
    bool translated = false;
};

struct ImportedCatalog {
    std::string path;
    std::string scope;  // as the catalog names it (PO Project-Id-Version, XLIFF original)
    std::vector<ImportedUnit> units;
};

// Reads a PO or an XLIFF catalog, told apart by their content. Throws CatalogReadError.
ImportedCatalog ReadCatalog(const std::string& path);

}  // namespace locmgr::analysis
