#pragma once

// What the module commands share: the options that name the localization tree, and turning a
// culture name into a culture with a message a user understands.

#include "ModuleSession.h"
#include "OptionDefinition.h"
#include "Options.h"
#include "localization_manager/Culture.h"

#include <functional>
#include <string>
#include <vector>

namespace locmgr {

// The options several commands share, as most of them use them; a command that uses one
// otherwise refines it (OptionDefinition::Describe, Repeatable, Required).
const OptionDefinition kModuleOption =
    Valued("--module", "PATH", "the module to load (default: the one beside locmgr)");
const OptionDefinition kRootOption =
    Valued("--root", "DIR", "the localization directory").Required();
const OptionDefinition kAltOption =
    Valued("--alt", "DIR", "an alternative directory, searched before the root");
const OptionDefinition kScopeOption =
    Valued("--scope", "SCOPE", "the scope (its texts are in Locs/SCOPE.lt)").Required();
const OptionDefinition kCultureOption =
    Valued("--culture", "NAME", "a culture name: ru, en-US, sr-Latn, anz, ...").Required();
const OptionDefinition kFormatOption =
    Valued("--format", "FORMAT", "text or json (schema in docs/checking-translations.md)")
        .Default("text");
const OptionDefinition kReferenceOption =
    Valued("--reference", "CULTURE", "compare with this culture instead of \"neutral\"")
        .Default("neutral");

// Converts `name` through the session's culture converter; on failure says so on standard
// error and returns false.
bool ConvertCultureOrReport(ModuleSession& session, const std::string& name,
                            localization_manager::Culture& culture);

// The value of --format, which must be one of `formats`; throws UsageError otherwise.
std::string FormatOption(const Options& options, const std::vector<std::string>& formats);

// The value of --reference as the analysis names it: "neutral", or the folder name of the
// culture given as an application writes it ("anz", "EN-us"). A culture is also
// appended to `extraCultures`, so that the tree is analysed for it even without a folder of
// its own. Throws UsageError for an unknown culture name.
std::string ReferenceOption(const Options& options, std::vector<std::string>& extraCultures);

// Constructs the session's manager over --root and --alt; on failure reports and returns
// false.
bool OpenTreeOrReport(ModuleSession& session, const Options& options);

// Runs an analysis of a tree for `command`: a tree, settings file, baseline or merge record
// that cannot be read is reported on standard error and gives kExitUsage; an unknown culture,
// reference or scope (std::invalid_argument) becomes a UsageError. kExitOk when the analysis ran.
int RunOnTree(const std::string& command, const std::function<void()>& analysis);

}  // namespace locmgr
