#pragma once

// Plural invocations whose number of forms differs from the form count of the rule in force:
// the runtime refuses such a text for every number, but only when it is asked for it, in that
// culture. Every invocation is checked, nested ones included, whether or not a request has
// ever reached its branch.

#include "FileUse.h"
#include "PluralRule.h"

#include <vector>

namespace locmgr::analysis {

// plural-form-count findings of `use` under `rules`, which all have the same form count;
// `use.cultures` are the cultures that read the file under them.
std::vector<Finding> CheckPluralFormCounts(const FileUse& use,
                                           const std::vector<const RuleInForce*>& rules);

}  // namespace locmgr::analysis
