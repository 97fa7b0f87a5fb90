#pragma once

// Progress of a long walk over a tree, shown on standard error only when that is a terminal:
// one line rewritten in place, a few times a second at most, erased when the walk ends. Piped
// or redirected output never sees it.

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace locmgr {

class Progress {
  public:
    Progress();
    ~Progress();

    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Update(const std::string& phase, std::size_t done, std::size_t total);

    // Update as a callback for the analysis, or an empty function when nothing is shown.
    std::function<void(const std::string&, std::size_t, std::size_t)> Callback();

  private:
    void Clear();

    const bool enabled_;
    bool shown_ = false;
    std::chrono::steady_clock::time_point last_;
};

}  // namespace locmgr
