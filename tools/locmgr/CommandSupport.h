#pragma once

// What the module commands share: the options that name the localization tree, and turning a
// culture name into a culture with a message a user understands.

#include "ModuleSession.h"
#include "Options.h"
#include "localization_manager/Culture.h"

#include <string>
#include <vector>

namespace locmgr {

const OptionSpec kModuleOption{"--module", true};
const OptionSpec kRootOption{"--root", true};
const OptionSpec kAltOption{"--alt", true};
const OptionSpec kScopeOption{"--scope", true};
const OptionSpec kCultureOption{"--culture", true};
const OptionSpec kFormatOption{"--format", true};

// Converts `name` through the session's culture converter; on failure says so on standard
// error and returns false.
bool ConvertCultureOrReport(ModuleSession& session, const std::string& name,
                            localization_manager::Culture& culture);

// The value of --format, which must be one of `formats` (the first is the default); throws
// UsageError otherwise.
std::string FormatOption(const Options& options, const std::vector<std::string>& formats);

// Constructs the session's manager over --root and --alt; on failure reports and returns
// false.
bool OpenTreeOrReport(ModuleSession& session, const Options& options);

}  // namespace locmgr
