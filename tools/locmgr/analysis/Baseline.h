#pragma once

// The findings a team has accepted for now, kept in a file, so that "locmgr check" fails only
// on new ones and an old tree can adopt the check at once. A finding matches an entry by kind,
// file (relative to the root or the alternative directory, so that the tree may move), key
// and message, not by line and column, which change with every edit above it. Each entry
// accepts one finding: a second finding of the same description is new.

#include "Finding.h"

#include <cstddef>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace locmgr::analysis {

class BaselineError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct TreeDirectories {
    std::string root;
    std::string alternative;  // empty when none
};

class Baseline {
  public:
    // Throws BaselineError for a file that cannot be read or is not a baseline.
    static Baseline Read(const std::string& path, const TreeDirectories& tree);
    // Throws BaselineError when the file cannot be written.
    static void Write(const std::string& path, const std::vector<Finding>& findings,
                      const TreeDirectories& tree);

    // Removes the findings the baseline accepts; returns how many.
    std::size_t Filter(std::vector<Finding>& findings) const;

  private:
    using Entry = std::tuple<std::string, std::string, std::string, std::string>;
    static Entry EntryOf(const Finding& finding, const TreeDirectories& tree);

    TreeDirectories tree_;
    std::multiset<Entry> entries_;
};

}  // namespace locmgr::analysis
