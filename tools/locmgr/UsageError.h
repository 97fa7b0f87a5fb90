#pragma once

#include <stdexcept>

namespace locmgr {

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

// A command line that makes no sense; main shows it with a pointer to the command's help and
// exits with status 2.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace locmgr
