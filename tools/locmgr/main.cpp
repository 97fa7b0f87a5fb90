// locmgr: the command-line host of the localization manager module, for developers and
// translators. It picks the subcommand, and turns every error into a message and an exit
// status: 0 all went well, 1 a request failed, 2 bad usage or the module could not be loaded.

#include "ClosestName.h"
#include "CommandHelp.h"
#include "Commands.h"
#include "ModuleSession.h"
#include "Options.h"
#include "localization_manager/Version.h"

#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

using locmgr::Command;

constexpr char kHelpCommand[] = "help";

// "unknown command 'chekc'; did you mean 'check'?" and the pointer to the overview.
int UnknownCommand(const std::string& name) {
    std::vector<std::string> known;
    if (!name.empty() && name.front() == '-') {
        known = {"--help", "--version"};
    } else {
        for (const Command* command : locmgr::AllCommands()) {
            known.emplace_back(command->name);
        }
        known.emplace_back(kHelpCommand);
    }
    std::cerr << "locmgr: unknown command '" << name << "'";
    const std::string closest = locmgr::ClosestName(name, known);
    if (!closest.empty()) {
        std::cerr << "; did you mean '" << closest << "'?";
    }
    std::cerr << "\nTry 'locmgr --help'.\n";
    return locmgr::kExitUsage;
}

// "locmgr help [COMMAND]".
int Help(const std::vector<std::string>& arguments) {
    if (arguments.size() == 1) {
        locmgr::PrintOverview(std::cout);
        return locmgr::kExitOk;
    }
    if (arguments.size() > 2) {
        std::cerr << "locmgr help: give one COMMAND\nTry 'locmgr --help'.\n";
        return locmgr::kExitUsage;
    }
    const Command* command = locmgr::FindCommand(arguments[1]);
    if (command == nullptr) {
        return UnknownCommand(arguments[1]);
    }
    locmgr::PrintCommandHelp(*command, std::cout);
    return locmgr::kExitOk;
}

int RunCommand(const Command& command, const std::vector<std::string>& arguments) {
    const std::string name = command.name;
    try {
        const locmgr::Options options = locmgr::Options::Parse(arguments, command.options);
        if (options.HelpRequested()) {
            locmgr::PrintCommandHelp(command, std::cout);
            return locmgr::kExitOk;
        }
        const int status = command.run(options);
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

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.empty()) {
        locmgr::PrintOverview(std::cerr);
        return locmgr::kExitUsage;
    }
    const std::string& name = arguments.front();
    if (name == "--help" || name == "-h") {
        locmgr::PrintOverview(std::cout);
        return locmgr::kExitOk;
    }
    if (name == "--version") {
        std::cout << "locmgr " << LOCALIZATION_MANAGER_VERSION_STRING << '\n';
        return locmgr::kExitOk;
    }
    if (name == kHelpCommand) {
        return Help(arguments);
    }
    const Command* command = locmgr::FindCommand(name);
    if (command == nullptr) {
        return UnknownCommand(name);
    }
    return RunCommand(*command, {arguments.begin() + 1, arguments.end()});
}
