#pragma once

// The subcommands of locmgr. Each one lives in a file of its own and describes itself here:
// main only picks the command, parses its options and prints its help.

#include "Options.h"

#include <vector>

namespace locmgr {

struct Command {
    const char* name;
    const char* summary;  // one line for the overview
    const char* help;     // the text of "locmgr NAME --help"
    std::vector<OptionSpec> options;
    int (*run)(const Options& options);
};

extern const Command kGetCommand;
extern const Command kStreamCommand;
extern const Command kCultureCommand;
extern const Command kBatchCommand;
extern const Command kParseCommand;
extern const Command kCheckCommand;
extern const Command kCoverageCommand;
extern const Command kExplainCommand;
extern const Command kPseudoCommand;

}  // namespace locmgr
