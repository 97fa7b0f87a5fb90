#include "TreeChecker.h"

#include "Baseline.h"
#include "CheckSettings.h"
#include "CompileCheck.h"
#include "CultureFolder.h"
#include "FileChecks.h"
#include "LocFile.h"
#include "ParameterCaseCheck.h"
#include "PluralCountCheck.h"
#include "PluralRule.h"
#include "ReferenceCheck.h"
#include "RuleFileCheck.h"
#include "TreeModel.h"
#include "ulo/rtl/TextConversion.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <thread>
#include <utility>

namespace locmgr::analysis {

namespace {

using Cultures = std::set<std::string>;

// Reading and parsing is what a large tree spends its time on; a few threads share it.
constexpr unsigned kMaxThreads = 4;

std::vector<std::string> List(const Cultures& cultures) {
    return {cultures.begin(), cultures.end()};
}

class Checker {
  public:
    explicit Checker(const CheckOptions& options)
        : options_(options),
          model_(options.root, options.alternative, options.extraCultures),
          settings_(ReadCheckSettings(options.root)) {
        if (options.reference != kNeutralFolder &&
            model_.Cultures().count(options.reference) == 0) {
            throw std::invalid_argument("the reference '" + options.reference +
                                        "' is neither \"neutral\" nor a culture of the tree");
        }
        if (!options.baseline.empty()) {
            baseline_ = Baseline::Read(options.baseline, {options.root, options.alternative});
        }
    }

    CheckResult Run() {
        findings_.AddAll(model_.Inventory().findings);
        for (const auto& [name, culture] : model_.Cultures()) {
            rules_.emplace(name, RuleFor(model_.Provider(), culture));
        }
        MapReaders();
        LoadFiles();
        CheckFiles();
        CheckRuleFiles();
        CheckTranslations();

        CheckResult result;
        result.findings = ApplySettings(findings_.Sorted(), settings_);
        if (baseline_) {
            result.baselined = baseline_->Filter(result.findings);
        }
        for (const auto& entry : model_.Cultures()) {
            result.cultures.push_back(entry.first);
        }
        result.textFiles = scopeOf_.size();
        result.ruleFiles = ruleFiles_.size();
        for (const Finding& finding : result.findings) {
            ++(finding.GetSeverity() == Severity::kError ? result.errors : result.warnings);
        }
        result.reference = options_.reference;
        result.completion = std::move(completion_);
        return result;
    }

  private:
    void Progress(const std::string& phase, std::size_t done, std::size_t total) {
        if (options_.progress) {
            options_.progress(phase, done, total);
        }
    }

    // Which culture reads which file, as scope file and as common texts, and with which
    // common texts each file is compiled.
    void MapReaders() {
        for (const LocFileEntry& entry : model_.Inventory().locFiles) {
            scopeOf_[entry.path] = entry.scope;
        }
        for (const auto& [name, culture] : model_.Cultures()) {
            const std::u16string common = model_.ServingFile("common", culture);
            if (common.empty()) {
                Finding finding;
                finding.kind = FindingKind::kMissingCommon;
                finding.file = ulo::WideToNarrowMessage(model_.FolderOf(name));
                finding.scope = "common";
                finding.message = "no common.lt in any folder that culture " + name +
                                  " searches: none of its texts can be shown (cannot find "
                                  "localization file 'common.lt')";
                finding.cultures = {name};
                findings_.Add(finding);
            } else {
                commonReaders_[common].insert(name);
                scopeOf_[common] = "common";
            }
            for (const std::string& scope : model_.Inventory().scopes) {
                const std::u16string file = model_.ServingFile(scope, culture);
                if (file.empty()) {
                    if (scope != "common") {
                        Finding finding;
                        finding.kind = FindingKind::kMissingScope;
                        finding.file = ulo::WideToNarrowMessage(model_.FolderOf(name));
                        finding.scope = scope;
                        finding.message = "no folder that culture " + name + " searches has " +
                                          scope + ".lt: requests for the scope fail";
                        finding.cultures = {name};
                        findings_.Add(finding);
                    }
                    continue;
                }
                scopeReaders_[file].insert(name);
                ruleUsers_[file].insert(name);
                pairs_[{file, common}].insert(name);
            }
            if (!common.empty()) {
                ruleUsers_[common].insert(name);
            }
        }
        // Files no culture reads are checked with their own folder's common texts.
        for (const LocFileEntry& entry : model_.Inventory().locFiles) {
            if (scopeReaders_.count(entry.path) != 0 || commonReaders_.count(entry.path) != 0) {
                continue;
            }
            const CultureFolder& folder = model_.Inventory().folders[entry.folder];
            std::u16string common;
            if (folder.culture) {
                common = model_.ServingFile("common", *folder.culture);
                homeCulture_[entry.path] = folder.name;
            } else {
                common = model_.NeutralFile("common");
            }
            pairs_[{entry.path, entry.scope == "common" ? entry.path : common}];
        }
    }

    void LoadFiles() {
        std::vector<std::u16string> paths;
        for (const auto& entry : scopeOf_) {
            paths.push_back(entry.first);
        }
        files_.Load(paths, std::max(1u, std::min(kMaxThreads, std::thread::hardware_concurrency())),
                    [&](std::size_t done) { Progress("reading", done, paths.size()); });
    }

    FileUse UseOf(const std::u16string& path, const Cultures& cultures) {
        return FileUse{&files_.Get(path), scopeOf_[path], List(cultures)};
    }

    Cultures ReadersOf(const std::u16string& path) const {
        Cultures readers;
        for (const auto* map : {&scopeReaders_, &commonReaders_}) {
            const auto found = map->find(path);
            if (found != map->end()) {
                readers.insert(found->second.begin(), found->second.end());
            }
        }
        return readers;
    }

    void CheckFiles() {
        std::size_t done = 0;
        for (const auto& entry : scopeOf_) {
            Progress("checking", done++, scopeOf_.size() + pairs_.size());
            const FileUse use = UseOf(entry.first, ReadersOf(entry.first));
            findings_.AddAll(CheckLoading(use));
            findings_.AddAll(CheckReferencesInPlurals(use));
            CheckPlurals(use);
        }
        for (const auto& [pair, cultures] : pairs_) {
            Progress("checking", done++, scopeOf_.size() + pairs_.size());
            const auto& [path, commonPath] = pair;
            const FileUse use = UseOf(path, cultures);
            const CommonCompilation& common = CompilationOf(commonPath);
            if (path != commonPath) {
                findings_.AddAll(CheckCompilation(use, common));
            }
            if (!commonPath.empty()) {
                findings_.AddAll(CheckMissingReferences(use, files_.Get(commonPath)));
            }
            findings_.AddAll(CheckParameterCase(
                use, path == commonPath ? ParameterSpellings{} : SpellingsOfCommon(commonPath)));
        }
    }

    // Each file under the rule of every culture that reads it, cultures with the same rule
    // together; a file no culture reads under the rule of its own folder's culture.
    void CheckPlurals(const FileUse& use) {
        std::map<std::string, Cultures> byRule;
        const auto users = ruleUsers_.find(use.file->Path());
        if (users != ruleUsers_.end()) {
            for (const std::string& culture : users->second) {
                byRule[culture].insert(culture);
            }
        } else if (const auto home = homeCulture_.find(use.file->Path());
                   home != homeCulture_.end()) {
            byRule[home->second];
        }
        // By form count: an invocation is wrong for all rules of one count alike.
        std::map<std::size_t, Cultures> grouped;
        std::map<std::size_t, std::vector<const RuleInForce*>> rulesOf;
        std::set<std::pair<std::size_t, std::string>> seenRules;
        for (const auto& [culture, cultures] : byRule) {
            const RuleInForce& rule = rules_.at(culture);
            if (!rule.Usable()) {
                continue;  // its file's error is reported; every scope of the culture fails
            }
            grouped[rule.FormCount()].insert(cultures.begin(), cultures.end());
            if (seenRules.emplace(rule.FormCount(), rule.idText + rule.Source()).second) {
                rulesOf[rule.FormCount()].push_back(&rule);
            }
        }
        for (const auto& [count, cultures] : grouped) {
            FileUse ruled = use;
            ruled.cultures = List(cultures);
            findings_.AddAll(CheckPluralFormCounts(ruled, rulesOf.at(count)));
        }
    }

    const CommonCompilation& CompilationOf(const std::u16string& path) {
        auto found = compilations_.find(path);
        if (found == compilations_.end()) {
            FileUse use;
            if (!path.empty()) {
                use = UseOf(path, ReadersOf(path));
            }
            found = compilations_.emplace(path, std::make_unique<CommonCompilation>(use)).first;
            findings_.AddAll(found->second->Findings());
        }
        return *found->second;
    }

    const ParameterSpellings& SpellingsOfCommon(const std::u16string& path) {
        auto found = spellings_.find(path);
        if (found == spellings_.end()) {
            found = spellings_
                        .emplace(path, path.empty() ? ParameterSpellings{}
                                                    : SpellingsOf(files_.Get(path)))
                        .first;
        }
        return found->second;
    }

    void CheckTranslations() {
        TranslationCheckInputs inputs;
        inputs.model = &model_;
        inputs.reference = options_.reference;
        inputs.settings = &settings_;
        inputs.file = [this](const std::u16string& path) -> const LocFile& {
            return files_.Get(path);
        };
        inputs.parameters = [this](const std::u16string& path,
                                   const std::u16string& commonPath) -> const KeyParameters& {
            auto found = parameters_.find({path, commonPath});
            if (found == parameters_.end()) {
                found =
                    parameters_
                        .emplace(std::make_pair(path, commonPath),
                                 ExpandedParameters(files_.Get(path), CompilationOf(commonPath)))
                        .first;
            }
            return found->second;
        };
        TranslationCheckResult result = analysis::CheckTranslations(inputs);
        findings_.AddAll(result.findings);
        completion_ = std::move(result.completion);
    }

    void CheckRuleFiles() {
        std::map<std::u16string, Cultures> users;
        for (const RuleFileEntry& entry : model_.Inventory().ruleFiles) {
            users[entry.path];
        }
        for (const auto& [culture, rule] : rules_) {
            if (!rule.file.empty()) {
                users[rule.file].insert(culture);
            }
        }
        for (const auto& [path, cultures] : users) {
            ruleFiles_.insert(path);
            findings_.AddAll(CheckRuleFile(path, List(cultures)));
        }
    }

    const CheckOptions& options_;
    TreeModel model_;
    FindingSet findings_;
    LocFileCache files_;
    std::map<std::string, RuleInForce> rules_;
    std::map<std::u16string, std::string> scopeOf_;  // every text file to check
    std::map<std::u16string, Cultures> scopeReaders_;
    std::map<std::u16string, Cultures> commonReaders_;
    std::map<std::u16string, Cultures> ruleUsers_;
    std::map<std::u16string, std::string> homeCulture_;
    std::map<std::pair<std::u16string, std::u16string>, Cultures> pairs_;
    std::map<std::u16string, std::unique_ptr<CommonCompilation>> compilations_;
    std::map<std::u16string, ParameterSpellings> spellings_;
    std::set<std::u16string> ruleFiles_;
    CheckSettings settings_;
    std::optional<Baseline> baseline_;
    std::map<std::pair<std::u16string, std::u16string>, KeyParameters> parameters_;
    std::vector<CultureCompletion> completion_;
};

}  // namespace

CheckResult CheckTree(const CheckOptions& options) {
    return Checker(options).Run();
}

}  // namespace locmgr::analysis
