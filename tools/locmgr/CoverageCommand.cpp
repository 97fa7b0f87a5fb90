#include "CommandSupport.h"
#include "Commands.h"
#include "Coverage.h"
#include "CoverageOutput.h"
#include "TreeModel.h"

#include <iostream>
#include <stdexcept>
#include <string>

namespace locmgr {

namespace {

int Run(const Options& options) {
    const std::string root = options.Value(kRootOption.name);
    const std::string alternative = options.Value(kAltOption.name);
    const std::string format = FormatOption(options, {"text", "json"});
    if (!options.Operands().empty()) {
        throw UsageError("coverage takes no operands");
    }
    std::vector<std::string> extra;
    const std::string reference = ReferenceOption(options, extra);
    try {
        const analysis::TreeModel model(root, alternative, extra);
        const analysis::CoverageReport report = analysis::ComputeCoverage(model, reference);
        if (format == "json") {
            analysis::WriteCoverageJson(std::cout, report, root, alternative);
        } else {
            analysis::WriteCoverageText(std::cout, report);
        }
    } catch (const analysis::TreeError& error) {
        std::cerr << "locmgr coverage: " << error.what() << "\n";
        return kExitUsage;
    } catch (const std::invalid_argument& error) {
        throw UsageError(error.what());
    }
    return kExitOk;
}

}  // namespace

const Command kCoverageCommand{
    "coverage",
    "show which file serves each scope and which keys a culture lacks",
    "",
    R"(For every culture that has a folder in the tree and every scope, shows the file the module
reads, the keys of the reference culture that it lacks (and which of them the culture's
common.lt answers instead), the keys it has that the reference lacks, the binary resources of
the reference that the culture has no version of its own for, and the root files that the
alternative directory replaces.

The module reads one file per scope, the first one it finds, and never merges files: a file
in "en-US" that holds only a few keys hides every other key of "en" and "neutral", and those
texts are then missing for en-US. Such hidden files are listed under the file that hides them,
with the keys that are lost.

The reference is "neutral" (the texts every culture falls back to) unless --reference names a
culture. The exit status is 0 whatever the coverage; use "locmgr check" to fail a build.
)",
    {kRootOption, kAltOption, kReferenceOption, kFormatOption},
    "  locmgr coverage --root examples/localization --alt examples/localization-alt\n",
    &Run,
};

}  // namespace locmgr
