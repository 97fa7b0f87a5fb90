#include "Baseline.h"
#include "CheckReport.h"
#include "CheckSettings.h"
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
const OptionDefinition kBaselineOption =
    Valued("--baseline", "FILE", "leave out the findings this baseline accepts");
const OptionDefinition kWriteBaselineOption = Valued(
    "--write-baseline", "FILE", "accept every finding of this run: write them to FILE, exit 0");

int Run(const Options& options) {
    analysis::CheckOptions check;
    check.root = options.Value(kRootOption.name);
    check.alternative = options.Value(kAltOption.name);
    check.extraCultures = options.Values(kCultureOption.name);
    check.reference = ReferenceOption(options, check.extraCultures);
    const std::string writeBaseline = options.Value(kWriteBaselineOption.name);
    if (!writeBaseline.empty()) {
        if (options.Has(kBaselineOption.name)) {
            throw UsageError("--baseline and --write-baseline exclude each other");
        }
    } else {
        check.baseline = options.Value(kBaselineOption.name);
    }
    const std::string format = FormatOption(options, {"text", "json", "sarif"});
    if (!options.Operands().empty()) {
        throw UsageError("check takes no operands");
    }

    analysis::CheckResult result;
    bool baselineWritten = false;
    const int status = RunOnTree("check", [&] {
        Progress progress;
        check.progress = progress.Callback();
        result = analysis::CheckTree(check);
        if (!writeBaseline.empty()) {
            analysis::Baseline::Write(writeBaseline, result.findings,
                                      {check.root, check.alternative});
            std::cout << "baseline of " << result.findings.size() << " findings written to "
                      << writeBaseline << "\n";
            baselineWritten = true;
        }
    });
    if (status != kExitOk || baselineWritten) {
        return status;
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
            whose references expand beyond the module's limits, unreadable files, keys of
            the reference that a culture does not find (missing-key), parameters that a
            translation asks for and the reference does not ($fileNmae for $fileName)
  warnings  parameters written in two spellings ($count, $Count), scopes a culture has no
            file for, folders no culture reads, files the module never reads, a missing
            alternative directory, keys the reference lacks (obsolete-key), texts identical
            to the reference's (untranslated), parameters a translation drops

Every culture is compared with the reference ("neutral", or --reference), scope by scope,
along the module's search order: a culture reads the first file it finds for a scope and
never the reference's, so a key that file and the culture's common.lt lack fails at run
time. The summary gives each culture's completion: the keys with a text of its own, of the
reference's keys.

A file "locmgr.json" in the root sets the severity of each kind ("error", "warning", "off"),
for the whole tree or per culture, and the language of the "neutral" texts (cultures of that
language are not checked for untranslated texts); see docs/checking-translations.md.
--write-baseline records every finding of a run; a later run with --baseline reports only
the findings that the baseline does not hold, so an old tree can adopt the check at once.

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
     kReferenceOption,
     kFormatOption.Describe("text, json (schema in docs/checking-translations.md) or sarif "
                            "(SARIF 2.1.0, for code-scanning viewers)"),
     kStrictOption, kBaselineOption, kWriteBaselineOption},
    R"(  locmgr check --root examples/broken
  locmgr check --root examples/localization --alt examples/localization-alt --format sarif
  locmgr check --root examples/localization --write-baseline loc-baseline.json
  locmgr check --root examples/localization --baseline loc-baseline.json --strict
)",
    &Run,
};

}  // namespace locmgr
