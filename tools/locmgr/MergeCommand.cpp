// "locmgr init" and "locmgr merge": a culture's own files started and kept up to date with the
// reference's. Init is the first merge of a culture that has no folder yet.

#include "CommandSupport.h"
#include "Commands.h"
#include "CultureMerge.h"
#include "MergeRecord.h"
#include "TreeModel.h"
#include "ulo/rtl/TextConversion.h"

#include <iostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace locmgr {

namespace {

const OptionDefinition kPruneOption =
    Flag("--prune", "remove the keys the reference no longer has (default: report them)");
const OptionDefinition kReviewedOption =
    Valued("--reviewed", "SCOPE:KEY",
           "keep the translation of KEY for the reference's new text: its review ends "
           "(repeatable)")
        .Repeatable();

std::pair<std::string, std::string> ScopeAndKey(const std::string& value) {
    const std::size_t colon = value.rfind(':');
    if (colon == std::string::npos || colon == 0 || colon + 1 == value.size()) {
        throw UsageError("--reviewed takes SCOPE:KEY, not '" + value + "'");
    }
    return {value.substr(0, colon), value.substr(colon + 1)};
}

void Print(const analysis::MergedScope& scope, bool prune) {
    std::vector<std::string> parts;
    if (!scope.copiedFrom.empty()) {
        parts.push_back("new, a copy of " + scope.copiedFrom);
    }
    const auto count = [&parts](std::size_t number, const char* what) {
        if (number > 0) {
            parts.push_back(std::to_string(number) + " " + what);
        }
    };
    count(scope.added.size(), "added");
    count(scope.updated.size(), "updated");
    count(scope.obsolete.size(), prune ? "removed" : "obsolete");
    count(scope.reviews.size(), "to review");
    std::cout << scope.file << ": ";
    for (std::size_t index = 0; index < parts.size(); ++index) {
        std::cout << (index == 0 ? "" : ", ") << parts[index];
    }
    std::cout << (parts.empty() ? "up to date\n" : "\n");
    for (const std::string& key : scope.added) {
        std::cout << "  added " << key << " (the reference's text, to translate)\n";
    }
    for (const std::string& key : scope.updated) {
        std::cout << "  updated " << key << " (the reference's new text, still to translate)\n";
    }
    for (const std::string& key : scope.obsolete) {
        std::cout << (prune ? "  removed " : "  obsolete ") << key
                  << (prune ? "\n" : " (the reference has no such key; --prune removes it)\n");
    }
    for (const analysis::ChangedReference& review : scope.reviews) {
        std::cout << "  review " << review.key << ": the reference's text was " << review.was
                  << " and is now " << review.now << "\n";
    }
}

int RunMerge(const std::string& command, const Options& options, bool init) {
    if (!options.Operands().empty()) {
        throw UsageError(command + " takes no operands");
    }
    analysis::MergeOptions mergeOptions;
    mergeOptions.culture = options.Required(kCultureOption.name, "NAME");
    std::vector<std::string> cultures{mergeOptions.culture};
    mergeOptions.reference = ReferenceOption(options, cultures);
    if (!init) {
        mergeOptions.scopes = options.Values(kScopeOption.name);
        mergeOptions.prune = options.Has(kPruneOption.name);
        for (const std::string& value : options.Values(kReviewedOption.name)) {
            mergeOptions.reviewed.push_back(ScopeAndKey(value));
        }
    }
    const std::string root = options.Value(kRootOption.name);
    const std::string recordPath = root + "/" + analysis::MergeRecord::kFileName;

    analysis::MergeRecord record;
    analysis::MergeResult result;
    std::string refusal;
    const int status = RunOnTree(command, [&] {
        record = analysis::MergeRecord::Read(recordPath);
        const analysis::TreeModel model(root, options.Value(kAltOption.name), cultures);
        const std::string name = model.CultureNamed(mergeOptions.culture).first;
        for (const analysis::CultureFolder& folder : model.Inventory().folders) {
            if (init && folder.name == name) {
                refusal = name + " has a folder already (" + ulo::WideToNarrowMessage(folder.path) +
                          "); \"locmgr merge\" brings it up to date";
                return;
            }
        }
        result = analysis::MergeCulture(model, mergeOptions, record);
    });
    if (status != kExitOk) {
        return status;
    }
    if (!refusal.empty()) {
        std::cerr << "locmgr " << command << ": " << refusal << "\n";
        return kExitFailed;
    }
    bool failed = false;
    for (const analysis::MergedScope& scope : result.scopes) {
        if (scope.problem.empty()) {
            Print(scope, mergeOptions.prune);
        } else {
            std::cout.flush();
            std::cerr << "locmgr " << command << ": scope " << scope.scope
                      << " left as it was: " << scope.problem << "\n";
            failed = true;
        }
    }
    std::cout.flush();
    for (const std::string& problem : result.problems) {
        std::cerr << "locmgr " << command << ": " << problem << "\n";
        failed = true;
    }
    try {
        record.Write(recordPath);
    } catch (const analysis::MergeRecordError& error) {
        std::cerr << "locmgr " << command << ": " << error.what() << "\n";
        failed = true;
    }
    return failed ? kExitFailed : kExitOk;
}

int RunInit(const Options& options) {
    return RunMerge("init", options, true);
}

int RunMergeCommand(const Options& options) {
    return RunMerge("merge", options, false);
}

}  // namespace

const Command kInitCommand{
    "init",
    "start a culture: its folder with a file for every scope of the reference",
    "",
    R"(Creates the folder of a culture that has none yet, with a file for every scope of the
reference ("neutral", or --reference): a copy of the file the culture reads today (the
reference's, or a parent culture's), comments and all, plus any key of the reference that
file lacks. The application shows the same texts as before while translation is under way,
and "locmgr check" lists every text still identical to the reference's as untranslated.
Translate the files in place, or with "locmgr export" and "locmgr import"; keep them up to
date with "locmgr merge", which also records the reference's texts (see its help).

Exit status: 0 the folder was created, 1 the culture has a folder already or a file could
not be written, 2 bad usage or an unreadable root directory.
)",
    {kRootOption, kAltOption,
     kCultureOption.Describe("the culture to start, as an application names it"),
     kReferenceOption.Describe("copy the texts of this culture instead of \"neutral\"")},
    R"(  locmgr init --root examples/localization --culture fr
  locmgr check --root examples/localization --culture fr
)",
    &RunInit,
};

const Command kMergeCommand{
    "merge",
    "bring a culture's files up to date with the reference's keys",
    "",
    R"(Brings the files of a culture up to date with the reference ("neutral", or --reference),
scope by scope, and says what changed:
  added     a key of the reference that the culture would not find (its request would fail)
            is added with the reference's text, after the key the reference puts before it;
  obsolete  a key the reference no longer has is listed, or removed with --prune (its comment
            lines go with it);
  updated   a text still the reference's old text gets the reference's new one;
  review    a translation whose reference text changed since the last merge.
A scope the culture has no file of its own for gets one, a copy of the file it reads today.
Everything else stays as it was, byte for byte: translations, comments, blank lines, order.

The reference's texts at each merge are kept in locmgr.merge.json at the root of the tree
(keep it under version control with the texts): when the reference's text of a key that the
culture translated has changed since its last merge, merge lists the key for review, with
the reference's text then and now, at every run until the translation changes or
--reviewed SCOPE:KEY keeps it.

Exit status: 0 every scope was merged, 1 a file could not be merged (it is named, and left as
it was) or --reviewed names no pending review, 2 bad usage or an unreadable root directory.
)",
    {kRootOption, kAltOption,
     kCultureOption.Describe("the culture to merge, as an application names it"), kReferenceOption,
     kScopeOption.Describe("only this scope (repeatable)").Repeatable().Optional(), kPruneOption,
     kReviewedOption},
    R"(  locmgr merge --root examples/localization --culture de
  locmgr merge --root examples/localization --culture de --prune
  locmgr merge --root examples/localization --culture de --reviewed download:title
)",
    &RunMergeCommand,
};

}  // namespace locmgr
