#pragma once

// The help texts of locmgr, generated from the command descriptions (Commands.h): the
// synopsis and the option list come from the OptionDefinitions, so they always match what the
// parser accepts. help2man turns the overview into the manual page.

#include "Commands.h"

#include <ostream>

namespace locmgr {

// "locmgr --help": what locmgr is, its commands and its own options.
void PrintOverview(std::ostream& out);

// "locmgr COMMAND --help", which "locmgr help COMMAND" prints too.
void PrintCommandHelp(const Command& command, std::ostream& out);

}  // namespace locmgr
