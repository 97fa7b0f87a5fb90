#include "CommandSupport.h"
#include "Commands.h"
#include "TreeModel.h"
#include "UnusedKeys.h"

#include <iostream>
#include <string>
#include <vector>

namespace locmgr {

namespace {

const OptionDefinition kSourceOption =
    Valued("--source", "PATH",
           "a source file, or a folder searched for C and C++ files "
           "(repeatable)")
        .Required()
        .Repeatable();

int Run(const Options& options) {
    if (!options.Operands().empty()) {
        throw UsageError("unused takes no operands");
    }
    std::vector<std::string> cultures;
    const std::string reference = ReferenceOption(options, cultures);
    analysis::KeyUseResult result;
    std::string problem;
    const int status = RunOnTree("unused", [&] {
        const analysis::TreeModel model(options.Value(kRootOption.name),
                                        options.Value(kAltOption.name), cultures);
        try {
            result = analysis::FindKeyUses(model, reference, options.Values(kSourceOption.name));
        } catch (const analysis::SourceError& error) {
            problem = error.what();
        }
    });
    if (status != kExitOk) {
        return status;
    }
    if (!problem.empty()) {
        throw UsageError(problem);
    }
    for (const auto* findings : {&result.unused, &result.unknown}) {
        for (const analysis::KeyUseFinding& finding : *findings) {
            std::cout << finding.file << ":" << finding.line << ": " << finding.message << "\n";
        }
    }
    std::cout << result.unused.size() << " unused keys, " << result.unknown.size()
              << " unknown keys asked for, in " << result.sourceFiles << " source files\n";
    return result.unused.empty() && result.unknown.empty() ? kExitOk : kExitFailed;
}

}  // namespace

const Command kUnusedCommand{
    "unused",
    "list the keys no source file uses and the keys sources ask for in vain",
    "",
    R"(Reads the application's C and C++ sources and lists, with file and line:
  - the keys of the reference (every scope, "neutral" or --reference) that no source uses:
    neither their constant from "locmgr keys" (download::summary, with any namespace before
    it; a scope's constants include the common texts' keys) nor a string literal equal to the
    key (without case, as the module compares keys);
  - the keys that sources ask for and the reference has nowhere: string literals given as the
    first argument of Get, GetUtf16 or GetString, with the closest key of the reference.
Comments are not read. Headers that "locmgr keys" wrote are skipped: they name every key. A
key that sources build at run time ("error." + code) looks unused: keep such keys in a list
the sources spell out, or ignore their lines.

Exit status: 0 every key is used and every key asked for exists, 1 otherwise, 2 bad usage,
a missing source folder or an unreadable root directory.
)",
    {kRootOption, kAltOption, kReferenceOption, kSourceOption},
    R"(  locmgr unused --root examples/localization --source examples/host --source tools
)",
    &Run,
};

}  // namespace locmgr
