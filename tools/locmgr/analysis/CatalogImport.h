#pragma once

// "locmgr import": translations from catalogs written by "locmgr export" and filled in by
// translators' tools, written back into the culture's own files. A key whose translations
// equal what the culture reads today is left as it is, byte for byte; a changed key gets a
// value rebuilt from its whole sentences (ValueBuilder) in place of its old one; a key the
// culture's file lacks is added after the key the reference's file puts before it. When the
// culture has no file of its own for a scope, its file starts as a copy of the file it reads
// today, so that every key it serves stays served. A catalog with a unit that cannot be taken
// (a placeholder dropped or unknown, a malformed text, a missing form) changes nothing.

#include "CatalogExport.h"
#include "CatalogReading.h"
#include "TreeModel.h"

#include <cstddef>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct ImportProblem {
    std::string catalog;  // the catalog's path
    std::string unit;     // the unit's context, or empty for the whole catalog
    std::string message;
};

struct ImportedScope {
    std::string catalog;
    std::string scope;
    std::string file;  // the file written, or empty when nothing changed
    std::size_t changed = 0;
    std::size_t added = 0;
    std::size_t untranslated = 0;  // keys left as they were for want of a translation
};

struct ImportResult {
    std::vector<ImportedScope> scopes;
    std::vector<ImportProblem> problems;
};

// `options.scopes` is ignored: each catalog names its scope (or its file name does). Throws
// std::invalid_argument for an unknown culture or reference (UnknownScope never leaves it).
ImportResult ImportCatalogs(const TreeModel& model, const CatalogExportOptions& options,
                            const std::vector<ImportedCatalog>& catalogs);

}  // namespace locmgr::analysis
