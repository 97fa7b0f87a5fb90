#pragma once

// "locmgr merge" and "locmgr init": a culture's own files brought up to date with the
// reference's, scope by scope. A scope the culture has no file of its own for gets one, a copy
// of the file it reads today (the reference's, or a parent culture's), so that nothing it
// serves changes. A key the reference has and the culture would not find is added with the
// reference's text (served at once, and reported by "locmgr check" as untranslated) after the
// key the reference puts before it; a key of the culture the reference no longer has is
// reported, or removed when pruning. Everything else in the file stays as it was, byte for
// byte. The merge record (MergeRecord) tells which texts the reference changed since the last
// merge: a text the culture had taken over unchanged gets the new one, a translation waits for
// review.

#include "MergeRecord.h"
#include "TreeModel.h"

#include <string>
#include <utility>
#include <vector>

namespace locmgr::analysis {

struct MergeOptions {
    std::string culture;                // as an application names it
    std::string reference = "neutral";  // "neutral" or a culture's folder name
    std::vector<std::string> scopes;    // empty: every scope of the reference
    bool prune = false;                 // remove obsolete keys
    // Translations a translator has looked at and keeps for the reference's new text:
    // (scope, key) pairs whose pending review ends.
    std::vector<std::pair<std::string, std::string>> reviewed;
};

struct ChangedReference {
    std::string key;  // as the reference writes it
    std::string was;  // the reference's text the translation was made for
    std::string now;  // the reference's text today
};

struct MergedScope {
    std::string scope;
    std::string file;                   // the culture's own file
    std::string copiedFrom;             // the file a new one was copied from, or empty
    std::vector<std::string> added;     // keys, as the reference writes them
    std::vector<std::string> obsolete;  // keys, as the culture writes them
    // Keys whose text was the reference's and now is its new text, as the reference writes them.
    std::vector<std::string> updated;
    std::vector<ChangedReference> reviews;  // translations waiting for review
    std::string problem;                    // why the scope was left as it was, or empty
};

struct MergeResult {
    std::vector<MergedScope> scopes;
    // --reviewed pairs that name no pending review.
    std::vector<std::string> problems;
};

// Updates `record` for the scopes merged. Throws std::invalid_argument for an unknown
// culture or reference, a culture that is the reference, or a scope the reference lacks.
MergeResult MergeCulture(const TreeModel& model, const MergeOptions& options, MergeRecord& record);

}  // namespace locmgr::analysis
