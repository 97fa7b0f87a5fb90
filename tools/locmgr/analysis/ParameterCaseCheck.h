#pragma once

// One parameter written in spellings that differ only in case ("$count", "$Count"). The
// resolver is asked for each spelling as written, so at least one of them is usually left
// unanswered.

#include "FileUse.h"

#include <map>
#include <string>
#include <vector>

namespace locmgr::analysis {

// For each lower-cased name, how often each spelling occurs.
using ParameterSpellings = std::map<std::u16string, std::map<std::u16string, std::size_t>>;

ParameterSpellings SpellingsOf(const LocFile& file);

// parameter-case findings of `use`, whose texts are resolved together with common texts that
// spell their parameters as `commonSpellings` (empty for the common file itself). Each
// spelling other than the most frequent one is reported where `use` first writes it.
std::vector<Finding> CheckParameterCase(const FileUse& use,
                                        const ParameterSpellings& commonSpellings);

}  // namespace locmgr::analysis
