#include "ClosestName.h"

#include <algorithm>
#include <cstddef>

namespace locmgr {

namespace {

std::string WithoutDashes(const std::string& name) {
    const std::size_t start = name.find_first_not_of('-');
    return start == std::string::npos ? std::string() : name.substr(start);
}

// Optimal string alignment distance: Levenshtein plus the swap of two neighbours, the
// commonest slip of a typist ("--scpoe").
std::size_t EditDistance(const std::string& a, const std::string& b) {
    std::vector<std::vector<std::size_t>> d(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        d[i][0] = i;
    }
    for (std::size_t j = 0; j <= b.size(); ++j) {
        d[0][j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t cost = a[i - 1] == b[j - 1] ? 0 : 1;
            d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + cost});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
            }
        }
    }
    return d[a.size()][b.size()];
}

}  // namespace

std::string ClosestName(const std::string& typed, const std::vector<std::string>& candidates) {
    // Names on a command line are short; a longer token is no slip, and the distance table
    // stays small whatever is typed.
    constexpr std::size_t kLongestSlip = 64;
    const std::string word = WithoutDashes(typed);
    if (word.empty() || word.size() > kLongestSlip) {
        return "";
    }
    std::string best;
    std::size_t bestDistance = 0;
    for (const std::string& candidate : candidates) {
        const std::string name = WithoutDashes(candidate);
        const std::size_t distance = EditDistance(word, name);
        if (distance * 2 > std::max(word.size(), name.size())) {
            continue;
        }
        if (best.empty() || distance < bestDistance) {
            best = candidate;
            bestDistance = distance;
        }
    }
    return best;
}

}  // namespace locmgr
