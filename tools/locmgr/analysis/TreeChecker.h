#pragma once

// "locmgr check": every problem of a localization tree that the runtime would meet, for every
// culture the tree is meant for, in one run. The checks are the runtime's own parts (parser,
// compiler, plural rules, file search) applied to every file and every culture at once.
//
// Which cultures are checked: every culture that has a culture folder in the root or the
// alternative directory, and the extra cultures asked for. A file is checked under every such
// culture that reads it (as the scope's file or as the common texts), so the texts of
// "neutral" are checked against the plural rule of each culture that falls back to them. A
// file that no such culture reads (hidden by a more specific or an alternative file) is still
// checked on its own, with the common texts and the plural rule of its own folder's culture.
//
// Every culture is also compared with a reference (see TranslationCheck.h), and the tree's
// settings (CheckSettings.h) and a baseline (Baseline.h) decide what is reported and how.

#include "Finding.h"
#include "TranslationCheck.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct CheckOptions {
    std::string root;
    std::string alternative;
    std::vector<std::string> extraCultures;
    std::string reference = "neutral";  // or a culture of the tree
    std::string baseline;               // a baseline file to apply, or empty
    // Called now and then while a long walk is under way.
    std::function<void(const std::string& phase, std::size_t done, std::size_t total)> progress;
};

struct CheckResult {
    std::vector<Finding> findings;      // sorted
    std::vector<std::string> cultures;  // checked, sorted
    std::size_t textFiles = 0;
    std::size_t ruleFiles = 0;
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::string reference;
    std::vector<CultureCompletion> completion;
    std::size_t baselined = 0;  // findings the baseline accepted, left out of `findings`
};

// Throws TreeError for an unreadable root, std::invalid_argument for an unknown culture or
// reference, SettingsError for a bad settings file and BaselineError for a bad baseline.
CheckResult CheckTree(const CheckOptions& options);

}  // namespace locmgr::analysis
