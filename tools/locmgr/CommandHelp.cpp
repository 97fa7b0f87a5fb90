#include "CommandHelp.h"

#include "OptionTable.h"

#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

namespace locmgr {

namespace {

constexpr std::size_t kSynopsisWidth = 80;

std::string SynopsisItem(const OptionDefinition& definition) {
    std::string item =
        definition.IsFlag() ? definition.name : definition.name + " " + definition.valueName;
    if (!definition.required) {
        item = "[" + item + "]";
    }
    return definition.repeatable ? item + "..." : item;
}

// "Usage: locmgr get --root DIR [--alt DIR] ... KEY...", wrapped below the first item.
std::string Synopsis(const Command& command) {
    const std::string lead = std::string("Usage: locmgr ") + command.name + " ";
    std::vector<std::string> items;
    for (const OptionDefinition& definition : command.options) {
        items.push_back(SynopsisItem(definition));
    }
    if (*command.operands != '\0') {
        items.emplace_back(command.operands);
    }
    std::string text = lead;
    std::size_t lineLength = lead.size();
    for (std::size_t index = 0; index < items.size(); ++index) {
        const std::string& item = items[index];
        if (index > 0 && lineLength + 1 + item.size() > kSynopsisWidth) {
            text += "\n" + std::string(lead.size(), ' ');
            lineLength = lead.size();
        } else if (index > 0) {
            text += ' ';
            ++lineLength;
        }
        text += item;
        lineLength += item.size();
    }
    return text + "\n";
}

// Boost's table, less the spaces it leaves at the end of wrapped lines.
std::string OptionList(const Command& command) {
    std::ostringstream table;
    table << VisibleOptions(command.options);
    std::string text;
    std::istringstream lines(table.str());
    for (std::string line; std::getline(lines, line);) {
        text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    }
    return text;
}

}  // namespace

void PrintOverview(std::ostream& out) {
    out << "Usage: locmgr COMMAND [OPTION]... [ARGUMENT]...\n"
           "  or:  locmgr help COMMAND\n"
           "  or:  locmgr --version\n"
           "\n"
           "Reads localized texts and binary resources through the localization manager\n"
           "module, as a host application does, and checks localization files. Every line the\n"
           "module traces is printed on standard error.\n"
           "\n"
           "Commands:\n";
    for (const Command* command : AllCommands()) {
        const std::string name = command->name;
        out << "  " << name << std::string(10 - name.size(), ' ') << command->summary << '\n';
    }
    out << "\n"
           "Options:\n"
           "  -h, --help     show this help and exit\n"
           "  --version      print the version of locmgr and exit\n"
           "\n"
           "Run 'locmgr COMMAND --help' or 'locmgr help COMMAND' for the options of a command.\n"
           "\n"
           "Exit status: 0 all went well, 1 a request failed, 2 bad usage or the module could\n"
           "not be loaded.\n"
           "\n"
           "Example:\n"
           "  locmgr get --root examples/localization --scope download --culture de windowTitle\n";
}

void PrintCommandHelp(const Command& command, std::ostream& out) {
    out << Synopsis(command) << '\n'
        << command.description << '\n'
        << OptionList(command) << '\n'
        << "Example:\n"
        << command.examples;
}

}  // namespace locmgr
