#pragma once

// What "locmgr merge" remembers between runs, in a file at the tree's root: for each culture,
// scope and key, the reference's text at the culture's last merge, so that the next merge sees
// which texts of the reference changed since. A key whose reference text changed while the
// culture had a translation of its own waits for review: the record keeps the reference's text
// the translation was made for and the translation as it stood, until the translation changes
// or is marked reviewed. Texts are kept as a localization file writes them ("'Files: ' +
// $count"), keys in lower case, as the runtime matches them.

#include <map>
#include <optional>
#include <stdexcept>
#include <string>

namespace locmgr::analysis {

class MergeRecordError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct PendingReview {
    std::string was;          // the reference's text the translation was made for
    std::string translation;  // the culture's text when the reference changed
};

struct KeyRecord {
    std::string reference;  // the reference's text at the last merge
    std::optional<PendingReview> review;
};

using ScopeRecord = std::map<std::string, KeyRecord>;  // by key

struct CultureRecord {
    std::string reference;  // what the culture was merged against: "neutral" or a culture
    std::map<std::string, ScopeRecord> scopes;
};

struct MergeRecord {
    static constexpr char kFileName[] = "locmgr.merge.json";

    // The record at `path`; an empty one when there is no such file. Throws MergeRecordError
    // for a file that cannot be read or is not a record.
    static MergeRecord Read(const std::string& path);
    // Throws MergeRecordError when the file cannot be written.
    void Write(const std::string& path) const;

    std::map<std::string, CultureRecord> cultures;  // by culture name
};

}  // namespace locmgr::analysis
