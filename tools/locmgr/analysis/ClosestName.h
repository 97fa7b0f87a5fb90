#pragma once

#include <string>
#include <vector>

namespace locmgr {

// Of `candidates`, the one nearest to the mistyped `typed` by edit distance (insertions,
// deletions, substitutions and swaps of neighbours each count one), for a "did you mean"
// hint; the first of equally near ones. Empty when none is near enough to be a plausible
// slip: more than half of the longer name would have to change. Leading dashes do not count.
std::string ClosestName(const std::string& typed, const std::vector<std::string>& candidates);

}  // namespace locmgr
