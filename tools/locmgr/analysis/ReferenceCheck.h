#pragma once

// References to keys that the runtime cannot find: not in the file, and not in the common
// texts of the culture that reads it. The lookup is the runtime's: the scope's dictionary,
// then the common one; the common texts see only their own keys.

#include "FileUse.h"

#include <vector>

namespace locmgr::analysis {

// missing-reference findings of `use` when its culture's common texts are `common` (the same
// file when `use` is the common file itself). Nothing is checked against a common file that
// cannot be parsed: every scope of its cultures fails anyway, and that is reported for it.
std::vector<Finding> CheckMissingReferences(const FileUse& use, const LocFile& common);

}  // namespace locmgr::analysis
