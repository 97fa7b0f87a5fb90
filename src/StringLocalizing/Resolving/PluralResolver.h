#pragma once

#include "StringLocalizing/Model/IPluralFormRules.h"
#include "StringLocalizing/Model/PluralFormRuleId.h"
#include "StringLocalizing/Resolving/IParamResolver.h"
#include "StringLocalizing/Resolving/IPluralResolver.h"

#include <boost/shared_ptr.hpp>

namespace LocalizationManager::StringLocalizing::Resolving {

// Chooses plural forms under one rule id (the localizer's culture): reads the discriminator
// parameter as a signed 64-bit number and returns the index of the first rule entry that
// holds for it. Immutable; concurrent calls are as safe as the parameter resolver.
class PluralResolver : public IPluralResolver {
  public:
    // Throws the null-pointer contract exception for a null paramResolver or pluralFormRules
    // (in that order).
    PluralResolver(const boost::shared_ptr<IParamResolver>& paramResolver,
                   const Model::PluralFormRuleId& pluralFormRuleId,
                   const boost::shared_ptr<Model::IPluralFormRules>& pluralFormRules);

    // Throws boost::bad_lexical_cast for a discriminator that is not a decimal integer (no
    // blanks around it), boost::bad_function_call for an empty rule entry, std::out_of_range
    // for an unknown rule id and std::logic_error ("Cannot find rule entry with id '<id>' and
    // discriminator value <n>") when no entry holds.
    std::uint16_t GetPluralFormIndex(const Model::PluralForm& invocation) const override;

    // The entry count of the rule; fails like GetPluralFormIndex for an unknown rule id.
    std::uint16_t GetPluralFormCount() const override;

  private:
    // Declared in this order so that they are released in the reverse one.
    const boost::shared_ptr<IParamResolver> paramResolver_;
    const Model::PluralFormRuleId pluralFormRuleId_;
    const boost::shared_ptr<Model::IPluralFormRules> pluralFormRules_;
    // The rule's entries as the rules object keeps them, found once, so that a request copies
    // no list; null when the rules object shares none (then every call asks it for a copy).
    const Model::PluralRuleEntries* const ruleEntries_;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
