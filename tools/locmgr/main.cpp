// locmgr: the command-line host of the localization manager module, for developers and
// translators. It picks the subcommand, and turns every error into a message and an exit
// status: 0 all went well, 1 a request failed, 2 bad usage or the module could not be loaded.

#include "Commands.h"
#include "ModuleSession.h"
#include "Options.h"

#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

using locmgr::Command;

const Command* const kCommands[] = {
    &locmgr::kGetCommand,      &locmgr::kStreamCommand,  &locmgr::kCultureCommand,
    &locmgr::kBatchCommand,    &locmgr::kParseCommand,   &locmgr::kCheckCommand,
    &locmgr::kCoverageCommand, &locmgr::kExplainCommand, &locmgr::kPseudoCommand};

void PrintOverview(std::ostream& out) {
    out << "usage: locmgr COMMAND [OPTION]... [ARGUMENT]...\n"
           "\n"
           "Reads localized texts and binary resources through the localization manager\n"
           "module, as a host application does, and checks localization files. Every line the\n"
           "module traces is printed on standard error.\n"
           "\n"
           "Commands:\n";
    for (const Command* command : kCommands) {
        out << "  " << command->name << std::string(10 - std::string(command->name).size(), ' ')
            << command->summary << '\n';
    }
    out << "\n"
           "Run 'locmgr COMMAND --help' for the options of a command.\n"
           "\n"
           "Exit status: 0 all went well, 1 a request failed, 2 bad usage or the module could\n"
           "not be loaded.\n"
           "\n"
           "Example:\n"
           "  locmgr get --root examples/localization --scope download --culture de windowTitle\n";
}

const Command* FindCommand(const std::string& name) {
    for (const Command* command : kCommands) {
        if (name == command->name) {
            return command;
        }
    }
    return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.empty()) {
        PrintOverview(std::cerr);
        return locmgr::kExitUsage;
    }
    const std::string& name = arguments.front();
    if (name == "--help" || name == "-h" || name == "help") {
        PrintOverview(std::cout);
        return locmgr::kExitOk;
    }
    const Command* command = FindCommand(name);
    if (command == nullptr) {
        std::cerr << "locmgr: unknown command '" << name << "'\n"
                  << "Try 'locmgr --help'.\n";
        return locmgr::kExitUsage;
    }
    try {
        const locmgr::Options options =
            locmgr::Options::Parse({arguments.begin() + 1, arguments.end()}, command->options);
        if (options.HelpRequested()) {
            std::cout << command->help;
            return locmgr::kExitOk;
        }
        const int status = command->run(options);
        // Texts that never arrived are a failure, not a silent success (a full disk, a
        // closed descriptor).
        if (!std::cout.flush()) {
            std::cerr << "locmgr: cannot write to standard output\n";
            return locmgr::kExitFailed;
        }
        return status;
    } catch (const locmgr::UsageError& error) {
        std::cerr << "locmgr " << name << ": " << error.what() << "\n"
                  << "Try 'locmgr " << name << " --help'.\n";
        return locmgr::kExitUsage;
    } catch (const locmgr::ModuleUnavailable& error) {
        std::cerr << "locmgr: " << error.what() << "\n";
        return locmgr::kExitUsage;
    } catch (const std::exception& error) {
        std::cerr << "locmgr " << name << ": " << error.what() << "\n";
        return locmgr::kExitFailed;
    }
}
