#pragma once

// A tree's own settings for "locmgr check", read from "locmgr.json" in its root directory
// (the runtime never reads files there, so the file cannot be mistaken for texts):
//
//   {
//     "neutralLanguage": "en",
//     "severity": { "untranslated": "off", "obsolete-key": "error" },
//     "sameAsReference": [ "appName" ],
//     "cultures": { "de": { "severity": { "untranslated": "error" },
//                           "sameAsReference": [ "ok" ] } }
//   }
//
// Severities are "error", "warning" or "off", per kind id; a culture's own setting wins over
// the tree's. "sameAsReference" lists keys (in any case) whose text may equal the
// reference's, such as names and units: they are never untranslated. Every member is
// optional.

#include "Finding.h"

#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace locmgr::analysis {

constexpr char kSettingsFileName[] = "locmgr.json";

// A settings file that cannot be read or does not follow the form above.
class SettingsError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

enum class Level { kError, kWarning, kOff };

struct SeveritySettings {
    std::map<std::string, Level> severity;     // by kind id
    std::set<std::u16string> sameAsReference;  // lower-cased as the runtime compares keys
};

struct CheckSettings {
    // The language of the "neutral" texts, as the language table names it ("en", "sr-Latn").
    std::string neutralLanguage;
    SeveritySettings tree;
    std::map<std::string, SeveritySettings> cultures;  // by culture folder name

    // Whether the text of `lowerKey` may equal the reference's in `culture`.
    bool MayEqualReference(const std::string& culture, const std::u16string& lowerKey) const;
};

// The settings of the tree at `root`; none when it has no settings file. Throws SettingsError.
CheckSettings ReadCheckSettings(const std::string& root);

// `findings` with the settings applied: each finding keeps the cultures for which its kind is
// not "off" and takes the most severe level among them (a finding about no culture takes the
// tree's level). A finding left with no culture is dropped.
std::vector<Finding> ApplySettings(std::vector<Finding> findings, const CheckSettings& settings);

}  // namespace locmgr::analysis
