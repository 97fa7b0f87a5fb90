#include "StringLocalizing/Resolving/PluralResolver.h"

#include "ulo/rtl/CodeContracts.h"
#include "ulo/rtl/TextConversion.h"

#include <boost/format.hpp>
#include <boost/lexical_cast.hpp>

#include <stdexcept>

namespace LocalizationManager::StringLocalizing::Resolving {

PluralResolver::PluralResolver(const boost::shared_ptr<IParamResolver>& paramResolver,
                               const Model::PluralFormRuleId& pluralFormRuleId,
                               const boost::shared_ptr<Model::IPluralFormRules>& pluralFormRules)
    : paramResolver_(ULO_REQUIRE_NOT_NULL(paramResolver)),
      pluralFormRuleId_(pluralFormRuleId),
      pluralFormRules_(ULO_REQUIRE_NOT_NULL(pluralFormRules)) {}

std::uint16_t PluralResolver::GetPluralFormIndex(const Model::PluralForm& invocation) const {
    const std::u16string text = paramResolver_->ResolveParam(invocation.param);
    // Digits and signs are ASCII, so the message form of the text reads as the text itself,
    // and any other character still makes the cast fail.
    const auto number = boost::lexical_cast<std::int64_t>(ulo::WideToNarrowMessage(text));

    const Model::PluralRuleEntries entries = pluralFormRules_->GetRuleEntries(pluralFormRuleId_);
    for (std::size_t index = 0; index < entries.size(); ++index) {
        if (entries[index](number)) {
            return static_cast<std::uint16_t>(index);
        }
    }
    throw std::logic_error(
        (boost::format("Cannot find rule entry with id '%1%' and discriminator value %2%") %
         Model::ToString(pluralFormRuleId_) % number)
            .str());
}

std::uint16_t PluralResolver::GetPluralFormCount() const {
    return pluralFormRules_->GetRuleEntryCount(pluralFormRuleId_);
}

}  // namespace LocalizationManager::StringLocalizing::Resolving
