#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

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

struct OptionSpec {
    std::string name;  // "--root"
    bool takesValue;
};

// The options and operands of one command line. "--name VALUE" and "--name=VALUE" are the
// same; "--" ends the options, so that an operand may begin with "-".
class Options {
  public:
    // Throws UsageError for an unknown option, a missing value, or a value given to a flag.
    static Options Parse(const std::vector<std::string>& arguments,
                         const std::vector<OptionSpec>& specs);

    bool HelpRequested() const { return helpRequested_; }
    bool Has(const std::string& name) const { return values_.count(name) != 0; }
    // The last value given for `name`, or `fallback`.
    std::string Value(const std::string& name, const std::string& fallback = "") const;
    // The last value given for `name`; throws UsageError when there is none or it is empty.
    std::string Required(const std::string& name, const std::string& placeholder) const;
    // Every value given for `name`, in order.
    const std::vector<std::string>& Values(const std::string& name) const;
    const std::vector<std::string>& Operands() const { return operands_; }

  private:
    bool helpRequested_ = false;
    std::map<std::string, std::vector<std::string>> values_;
    std::vector<std::string> operands_;
};

}  // namespace locmgr
