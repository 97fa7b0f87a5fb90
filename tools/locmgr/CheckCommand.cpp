#include "CheckReport.h"
#include "CommandSupport.h"
#include "Commands.h"
#include "Progress.h"
#include "TreeChecker.h"
#include "TreeScan.h"

#include <iostream>
#include <stdexcept>
#include <string>

namespace locmgr {

namespace {

const OptionDefinition kStrictOption = Flag("--strict", "fail on warnings too");

int Run(const Options& options) {
    analysis::CheckOptions check;
    check.root = options.Value(kRootOption.name);
    check.alternative = options.Value(kAltOption.name);
    check.extraCultures = options.Values(kCultureOption.name);
    const std::string format = FormatOption(options, {"text", "json", "sarif"});
    if (!options.Operands().empty()) {
        throw UsageError("check takes no operands");
    }

    analysis::CheckResult result;
    try {
        Progress progress;
        check.progress = progress.Callback();
        result = analysis::CheckTree(check);
    } catch (const analysis::TreeError& error) {
        std::cerr << "locmgr check: " << error.what() << "\n";
        return kExitUsage;
    } catch (const std::invalid_argument& error) {
        throw UsageError(error.what());
    }

    const analysis::ReportContext context{check.root, check.alternative};
    if (format == "json") {
        analysis::WriteJsonReport(std::cout, result, context);
    } else if (format == "sarif") {
        analysis::WriteSarifReport(std::cout, result, context);
    } else {
        analysis::WriteTextReport(std::cout, result);
    }
    const bool failed =
        result.errors > 0 || (options.Has(kStrictOption.name) && result.warnings > 0);
    return failed ? kExitFailed : kExitOk;
}

}  // namespace

const Command kCheckCommand{
    "check",
    "find every problem of a localization tree before shipping",
    "",
    R"(Checks a whole localization tree the way the module will read it, for every culture that has
a folder in the root or the alternative directory (and every culture given with --culture),
and reports every problem at once, with file, line and column:

  errors    files that do not parse (with the module's own report), keys defined twice,
            references to keys that neither the file nor the culture's common.lt holds,
            cyclic references, references inside plural invocations, plural invocations
            whose number of forms differs from the culture's plural rule (also in branches
            no request has reached yet), plural rule files that do not parse or that give no
            form to some number (the number is named), cultures without a common.lt, texts
            whose references expand beyond the module's limits, unreadable files
  warnings  parameters written in two spellings ($count, $Count), scopes a culture has no
            file for, folders no culture reads, files the module never reads, a missing
            alternative directory

The texts of "neutral" are checked against the plural rule of every checked culture that
reads them. Nothing is loaded through the module; the module's own parser, compiler, plural
rules and file search do the work, so what passes here is what the module accepts.

Exit status: 0 nothing is wrong, 1 errors were found (or, with --strict, warnings), 2 bad
usage or an unreadable root directory.
)",
    {kRootOption, kAltOption,
     kCultureOption.Describe("also check a culture that has no folder of its own")
         .Repeatable()
         .Optional(),
     kFormatOption.Describe("text, json (schema in docs/checking-translations.md) or sarif "
                            "(SARIF 2.1.0, for code-scanning viewers)"),
     kStrictOption},
    R"(  locmgr check --root examples/broken
  locmgr check --root examples/localization --alt examples/localization-alt --format sarif
)",
    &Run,
};

}  // namespace locmgr
