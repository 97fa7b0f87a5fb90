#include "Commands.h"

namespace locmgr {

const std::vector<const Command*>& AllCommands() {
    // Built on first use: the commands are globals of other files, initialised before main.
    static const std::vector<const Command*> kCommands{
        &kGetCommand,    &kStreamCommand,   &kCultureCommand, &kBatchCommand,  &kParseCommand,
        &kCheckCommand,  &kCoverageCommand, &kExplainCommand, &kPseudoCommand, &kExportCommand,
        &kImportCommand, &kInitCommand,     &kMergeCommand,   &kKeysCommand,   &kUnusedCommand};
    return kCommands;
}

const Command* FindCommand(const std::string& name) {
    for (const Command* command : AllCommands()) {
        if (name == command->name) {
            return command;
        }
    }
    return nullptr;
}

}  // namespace locmgr
