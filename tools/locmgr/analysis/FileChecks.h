#pragma once

// The checks that need nothing but the file itself: whether the runtime can read and parse
// it, and the references it can never expand (those inside plural invocations).

#include "FileUse.h"

#include <string>
#include <vector>

namespace locmgr::analysis {

// unreadable-file, parse-error and duplicate-key findings.
std::vector<Finding> CheckLoading(const FileUse& use);

// reference-in-plural findings.
std::vector<Finding> CheckReferencesInPlurals(const FileUse& use);

}  // namespace locmgr::analysis
