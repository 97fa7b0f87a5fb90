#pragma once

// Every culture compared with a reference ("neutral", or a culture of the tree), scope by
// scope, along the runtime's own search order: the file a culture reads for a scope (from the
// alternative directory or the root, its most specific folder first), then its common.lt.
// Because a culture never reads past the first file it finds, a key that file lacks is a
// request that fails, not a fallback to the reference.

#include "CheckSettings.h"
#include "CompileCheck.h"
#include "Finding.h"
#include "LocFile.h"
#include "TreeModel.h"

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct ScopeCompletion {
    std::string scope;
    std::size_t translated = 0;  // keys of the reference with a text of the culture's own
    std::size_t total = 0;       // keys of the reference
};

struct CultureCompletion {
    std::string culture;
    std::size_t translated = 0;
    std::size_t total = 0;
    std::vector<ScopeCompletion> scopes;  // by scope name
};

struct TranslationCheckResult {
    // missing-key, obsolete-key, untranslated and parameter-mismatch findings.
    std::vector<Finding> findings;
    std::vector<CultureCompletion> completion;  // by culture name, the reference left out
};

struct TranslationCheckInputs {
    const TreeModel* model = nullptr;
    // "neutral" or a culture of the model.
    std::string reference;
    // The language of the "neutral" texts and the keys that may keep the reference's text:
    // cultures of the reference's language and such keys are not checked for untranslated
    // texts.
    const CheckSettings* settings = nullptr;
    // The files, read once for the whole check.
    std::function<const LocFile&(const std::u16string& path)> file;
    // The expanded parameters of a file's keys over a common file (empty path: none).
    std::function<const KeyParameters&(const std::u16string& path,
                                       const std::u16string& commonPath)>
        parameters;
};

// Every key of every file the reference reads, for telling obsolete keys of a culture's
// common texts: those may answer a key of any scope, so only a key the reference has nowhere
// is obsolete there. `loadable` gives a file the runtime can load, or null.
std::set<std::u16string> EveryReferenceKey(
    const TreeModel& model, const std::string& reference,
    const std::function<const LocFile*(const std::u16string& path)>& loadable);

// Throws std::invalid_argument for a reference that is neither "neutral" nor a culture of
// the model. Files that cannot be loaded are left out: their own findings say why.
TranslationCheckResult CheckTranslations(const TranslationCheckInputs& inputs);

}  // namespace locmgr::analysis
