#include "Finding.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace locmgr::analysis {

const std::vector<KindInfo>& FindingKinds() {
    static const std::vector<KindInfo> kinds{
        {FindingKind::kParseError, "parse-error", Severity::kError,
         "localization file breaks the syntax",
         "The runtime refuses the whole file: no text of its scope (or, for common.lt, of any "
         "scope of the culture) can be shown. The report is the one the runtime writes."},
        {FindingKind::kDuplicateKey, "duplicate-key", Severity::kError, "key defined twice",
         "Keys are case-insensitive. The runtime refuses the whole file at the second "
         "definition."},
        {FindingKind::kUnreadableFile, "unreadable-file", Severity::kError, "file cannot be read",
         "The runtime finds the path but cannot read it (a folder in its place, no "
         "permission, a byte-order mark alone)."},
        {FindingKind::kMissingReference, "missing-reference", Severity::kError,
         "reference to a key that does not exist",
         "A reference is looked up in the same file, then in the culture's common.lt. A key "
         "found in neither makes the whole scope unusable."},
        {FindingKind::kCyclicReference, "cyclic-reference", Severity::kError,
         "references lead back to themselves",
         "A chain of references that returns to a key makes the whole scope unusable (for "
         "common.lt: every scope of the culture)."},
        {FindingKind::kExpansionLimit, "expansion-limit", Severity::kError,
         "references expand beyond the runtime's limits",
         "References are expanded by copying; a file whose references copy more than "
         "33,554,432 units (a character counts 1, each copied piece 32 more) is refused with "
         "its whole scope."},
        {FindingKind::kReferenceInPlural, "reference-in-plural", Severity::kError,
         "key reference inside a plural invocation",
         "References inside the braces of a plural invocation are never expanded: the text "
         "fails whenever that form is chosen. Put the reference outside the braces."},
        {FindingKind::kPluralFormCount, "plural-form-count", Severity::kError,
         "plural invocation with the wrong number of forms",
         "An invocation must list exactly as many forms as the plural rule in force for the "
         "culture has; otherwise the text fails for every number."},
        {FindingKind::kRuleParseError, "rule-parse-error", Severity::kError,
         "plural rule file breaks the syntax",
         "The runtime refuses the rule, and with it every scope of the cultures that use it."},
        {FindingKind::kRuleGap, "rule-gap", Severity::kError,
         "plural rule selects no form for some numbers",
         "A rule file is taken as written: a number that no condition accepts has no form, and "
         "every text with a plural invocation fails for it. End the file with a condition that "
         "always holds, such as \"n >= 0 || n < 1;\"."},
        {FindingKind::kMissingCommon, "missing-common", Severity::kError,
         "no common.lt for a culture",
         "Every scope first loads the culture's common.lt; without one reachable from the "
         "culture's folders, no text of the culture can be shown."},
        {FindingKind::kMissingScope, "missing-scope", Severity::kWarning,
         "scope without a file for a culture",
         "Another culture has this scope, but no folder that this culture searches holds it: "
         "a request for it fails."},
        {FindingKind::kParameterCase, "parameter-case", Severity::kWarning,
         "parameter written in two spellings",
         "Parameter names are case-sensitive: the application is asked for each spelling "
         "separately, and usually answers only one of them."},
        {FindingKind::kUnknownFolder, "unknown-folder", Severity::kWarning,
         "folder that no culture reads",
         "Culture folders are named \"neutral\" or after a language of the table, with the "
         "subtags joined by \"-\" (\"de\", \"en-US\", \"sr-Latn\"), case-sensitively."},
        {FindingKind::kIgnoredFile, "ignored-file", Severity::kWarning,
         "file the runtime never reads",
         "Plural rule files are read from the root directory only, as LANGUAGE/Plural.rule or "
         "LANGUAGE/SUBTAG/Plural.rule; texts only as CULTURE/Locs/SCOPE.lt."},
        {FindingKind::kMissingAlternative, "missing-alternative", Severity::kWarning,
         "alternative directory does not exist",
         "The runtime accepts a missing alternative directory and reads nothing from it."},
        {FindingKind::kMissingKey, "missing-key", Severity::kError,
         "key of the reference that a culture does not find",
         "A scope's texts come from the first file found, and a key that file lacks is looked "
         "up in the culture's common.lt only, never in the reference's file: the request "
         "fails with \"Key '...' not found\". Add the key to the culture's file."},
        {FindingKind::kObsoleteKey, "obsolete-key", Severity::kWarning,
         "key that the reference does not have",
         "No request of the application asks for it, or the reference lacks a text it needs. "
         "Remove it, or add it to the reference."},
        {FindingKind::kUntranslated, "untranslated", Severity::kWarning,
         "text identical to the reference's",
         "Probably left untranslated. Not reported for cultures of the reference's own "
         "language, nor for texts without a letter."},
        {FindingKind::kParameterMismatch, "parameter-mismatch", Severity::kWarning,
         "parameters differ from the reference's",
         "A parameter the reference uses and the translation drops loses data (warning); a "
         "parameter the reference does not use is one the application does not know (error)."},
    };
    return kinds;
}

const KindInfo& InfoOf(FindingKind kind) {
    const std::vector<KindInfo>& kinds = FindingKinds();
    const auto index = static_cast<std::size_t>(kind);
    if (index >= kinds.size() || kinds[index].kind != kind) {
        throw std::logic_error("finding kind catalogue out of order");
    }
    return kinds[index];
}

const char* SeverityName(Severity severity) {
    return severity == Severity::kError ? "error" : "warning";
}

void FindingSet::Add(Finding finding) {
    Identity identity{
        finding.file,    finding.line,  finding.column, static_cast<int>(finding.kind),
        finding.message, finding.scope, finding.key,    finding.report};
    auto [position, inserted] = findings_.try_emplace(std::move(identity), finding);
    std::vector<std::string>& cultures = position->second.cultures;
    if (!inserted) {
        cultures.insert(cultures.end(), finding.cultures.begin(), finding.cultures.end());
    }
    std::sort(cultures.begin(), cultures.end());
    cultures.erase(std::unique(cultures.begin(), cultures.end()), cultures.end());
}

void FindingSet::AddAll(const std::vector<Finding>& findings) {
    for (const Finding& finding : findings) {
        Add(finding);
    }
}

std::vector<Finding> FindingSet::Sorted() const {
    std::vector<Finding> sorted;
    sorted.reserve(findings_.size());
    for (const auto& entry : findings_) {
        sorted.push_back(entry.second);
    }
    return sorted;
}

std::size_t FindingSet::Count(Severity severity) const {
    return static_cast<std::size_t>(std::count_if(
        findings_.begin(), findings_.end(),
        [severity](const auto& entry) { return entry.second.GetSeverity() == severity; }));
}

}  // namespace locmgr::analysis
