#pragma once

// One problem found in a localization tree, and the catalogue of the kinds of problem. The
// kind ids and the fields are part of the JSON and SARIF output, which scripts rely on: add
// kinds, never rename or remove one.

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace locmgr::analysis {

// An error is a text, scope or culture that the runtime fails to serve; a warning is a tree
// that serves but probably not as its authors meant.
enum class Severity { kError, kWarning };

enum class FindingKind {
    kParseError,
    kDuplicateKey,
    kUnreadableFile,
    kMissingReference,
    kCyclicReference,
    kExpansionLimit,
    kReferenceInPlural,
    kPluralFormCount,
    kRuleParseError,
    kRuleGap,
    kMissingCommon,
    kMissingScope,
    kParameterCase,
    kUnknownFolder,
    kIgnoredFile,
    kMissingAlternative,
    kMissingKey,
    kObsoleteKey,
    kUntranslated,
    kParameterMismatch,
};

struct KindInfo {
    FindingKind kind;
    const char* id;           // "plural-form-count"
    Severity severity;        // unless the finding or the tree's settings say otherwise
    const char* title;        // one line
    const char* description;  // what happens at run time and what to do
};

// Every kind, in the order of the enumeration.
const std::vector<KindInfo>& FindingKinds();
const KindInfo& InfoOf(FindingKind kind);
const char* SeverityName(Severity severity);  // "error", "warning"

struct Finding {
    FindingKind kind = FindingKind::kParseError;
    // The file (or folder) as the runtime names it: the directory given, joined with "/".
    std::string file;
    // 0 when the finding is about the file or folder as a whole.
    int line = 0;
    int column = 0;      // as the runtime's reports count (tabs to the next of 1, 5, 9, ...)
    int unitColumn = 0;  // in UTF-16 units, for editors and viewers
    std::string scope;   // empty when it does not apply
    std::string key;     // empty when it does not apply
    std::string message;
    // The runtime's own multi-line report (parse errors), or empty.
    std::string report;
    // The cultures whose requests the problem affects, sorted.
    std::vector<std::string> cultures;
    // Set where one kind has findings of two severities, and by the tree's settings.
    std::optional<Severity> severity;

    Severity GetSeverity() const { return severity ? *severity : InfoOf(kind).severity; }
};

// Collects findings without repeating one: a finding that equals one already held in all but
// its cultures adds its cultures to that one. The same file serves many cultures, and each
// culture would otherwise report its problems again.
class FindingSet {
  public:
    void Add(Finding finding);
    void AddAll(const std::vector<Finding>& findings);

    // By file, line, column, kind and message.
    std::vector<Finding> Sorted() const;
    std::size_t Count(Severity severity) const;
    bool Empty() const { return findings_.empty(); }

  private:
    using Identity =
        std::tuple<std::string, int, int, int, std::string, std::string, std::string, std::string>;
    std::map<Identity, Finding> findings_;
};

}  // namespace locmgr::analysis
