#pragma once

// The plural rule in force for a culture, found and built exactly as the runtime's pipeline
// does: the rule id is the language and the first subtag; a rule file found for that id
// replaces the built-in rule of the id, otherwise the built-in table answers (falling back to
// the language's rule without subtag).

#include "File/FileResourceProvider.h"
#include "StringLocalizing/Model/IPluralFormRules.h"
#include "StringLocalizing/Model/PluralFormRuleId.h"
#include "localization_manager/Culture.h"

#include <cstddef>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct RuleInForce {
    LocalizationManager::StringLocalizing::Model::PluralFormRuleId id;
    std::string idText;                      // "ru", "pt-br"
    std::vector<std::u16string> candidates;  // rule files probed, in order
    std::u16string file;                     // the file read, empty for the built-in rule
    std::u16string fileText;
    // Why the rule cannot be built (the file's read or parse error): every scope of the
    // culture then fails, and plural invocations cannot be checked against it.
    std::string failure;
    LocalizationManager::StringLocalizing::Model::PluralRuleEntries entries;
    // The condition of each entry in rule file syntax, as the rule keeps them.
    std::vector<std::string> conditions;

    bool Usable() const { return failure.empty(); }
    std::size_t FormCount() const { return entries.size(); }
    // "built-in" or the file's path.
    std::string Source() const;
};

// Never throws for a bad rule file; std::range_error for a language outside the table.
RuleInForce RuleFor(LocalizationManager::File::FileResourceProvider& provider,
                    const localization_manager::Culture& culture);

// The rule id a culture's requests use.
LocalizationManager::StringLocalizing::Model::PluralFormRuleId RuleIdOf(
    const localization_manager::Culture& culture);

}  // namespace locmgr::analysis
