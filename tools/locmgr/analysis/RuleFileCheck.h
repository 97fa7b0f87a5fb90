#pragma once

// A plural rule file on its own: whether the runtime's parser accepts it, and whether every
// number finds a form under it (a rule file gets no "otherwise" form appended).

#include "Finding.h"

#include <string>
#include <vector>

namespace locmgr::analysis {

// rule-parse-error, unreadable-file and rule-gap findings of the rule file at `path`, which
// the `cultures` use.
std::vector<Finding> CheckRuleFile(const std::u16string& path,
                                   const std::vector<std::string>& cultures);

}  // namespace locmgr::analysis
