#pragma once

#include "OptionDefinition.h"
#include "UsageError.h"

#include <map>
#include <string>
#include <vector>

namespace locmgr {

// The options and operands of one command line, parsed by Boost.Program_options against the
// command's OptionDefinitions. "--name VALUE" and "--name=VALUE" are the same; "--" ends the
// options, so that an operand may begin with "-"; a lone "-" is an operand. Immutable once parsed.
class Options {
  public:
    // Throws UsageError for an unknown option (naming the nearest known one when there is a
    // plausible one), a missing value or a value given to a flag, and, unless help is asked
    // for, for a required option that is absent or empty.
    static Options Parse(const std::vector<std::string>& arguments,
                         const std::vector<OptionDefinition>& definitions);

    bool HelpRequested() const { return helpRequested_; }
    // Whether `name` ("--root") was given on the command line.
    bool Has(const std::string& name) const { return given_.count(name) != 0; }
    // The last value given for `name`, else its declared default, else "".
    std::string Value(const std::string& name) const;
    // The last value given for `name`; throws UsageError when there is none or it is empty.
    std::string Required(const std::string& name, const std::string& placeholder) const;
    // Every value given for `name`, in order.
    const std::vector<std::string>& Values(const std::string& name) const;
    const std::vector<std::string>& Operands() const { return operands_; }

  private:
    bool helpRequested_ = false;
    std::map<std::string, std::vector<std::string>> given_;
    std::map<std::string, std::string> defaults_;
    std::vector<std::string> operands_;
};

}  // namespace locmgr
