#pragma once

#include "StringLocalizing/Model/PluralFormRuleId.h"
#include "localization_manager/Culture.h"

#include <string>

namespace LocalizationManager::StringLocalizing::Pipeline {

// The decoded text of one file and the path it was read from (used in parse error reports).
struct ResourceFileText {
    std::u16string text;
    std::u16string path;
};

// Where the texts, plural rule files and binary resources of a localization tree come from.
// Implementations are immutable and safe for concurrent callers; failures are exceptions.
class IResourceProvider {
  public:
    // The text of the localization file of `scope` for `culture`. Throws std::runtime_error
    // ("cannot find localization file '<scope>.lt'") when no culture folder holds one.
    virtual ResourceFileText GetLocalizationText(const std::u16string& scope,
                                                 const localization_manager::Culture& culture) = 0;

    // Whether a plural rule file exists for `ruleId`; never throws for a missing file.
    virtual bool HasPluralFormRules(const Model::PluralFormRuleId& ruleId) = 0;

    // The text of the plural rule file of `ruleId`; throws std::runtime_error when it is
    // missing.
    virtual ResourceFileText GetPluralFormRulesText(const Model::PluralFormRuleId& ruleId) = 0;

    // The path of binary resource `key` of `scope` for `culture` (not opened); throws
    // std::runtime_error when no culture folder holds it.
    virtual std::u16string GetBinaryResourcePath(const std::u16string& scope,
                                                 const localization_manager::Culture& culture,
                                                 const std::u16string& key) = 0;

    virtual ~IResourceProvider() = default;
};

}  // namespace LocalizationManager::StringLocalizing::Pipeline
