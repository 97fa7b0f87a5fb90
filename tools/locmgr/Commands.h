#pragma once

// The subcommands of locmgr. Each one lives in a file of its own and describes itself here:
// main only picks the command, parses its options and prints its help, which is generated
// from this description.

#include "OptionDefinition.h"
#include "Options.h"

#include <string>
#include <vector>

namespace locmgr {

struct Command {
    const char* name;
    const char* summary;      // one line for the overview
    const char* operands;     // the operands in the synopsis ("KEY...", "[NAME]..."), or ""
    const char* description;  // what the command does, for its help; the option list is added
    std::vector<OptionDefinition> options;
    const char* examples;  // command lines, one or more, each line indented by two spaces
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
extern const Command kExportCommand;
extern const Command kImportCommand;
extern const Command kInitCommand;
extern const Command kMergeCommand;
extern const Command kKeysCommand;
extern const Command kUnusedCommand;

// Every command, in the order the overview lists them.
const std::vector<const Command*>& AllCommands();

// The command called `name`, or nullptr.
const Command* FindCommand(const std::string& name);

}  // namespace locmgr
