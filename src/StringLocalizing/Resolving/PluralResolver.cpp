#include "StringLocalizing/Resolving/PluralResolver.h"

#include "ulo/rtl/CodeContracts.h"
#include "ulo/rtl/TextConversion.h"

#include <boost/format.hpp>
#include <boost/lexical_cast.hpp>

#include <stdexcept>

namespace LocalizationManager::StringLocalizing::Resolving {

namespace {

std::int64_t ReadByLexicalCast(const std::u16string& text) {
    // Digits and signs are ASCII, so the message form of the text reads as the text itself,
    // and any other character still makes the cast fail.
    return boost::lexical_cast<std::int64_t>(ulo::WideToNarrowMessage(text));
}

// The discriminator as Boost.LexicalCast reads it into a signed 64-bit number. An optional
// sign and up to 18 decimal digits cannot overflow and read the same under any locale, so
// they are read here without the cast's conversions; everything else goes to the cast itself,
// which reads it or throws its own bad_lexical_cast.
std::int64_t ReadDiscriminator(const std::u16string& text) {
    constexpr std::size_t kSafeDigits = 18;
    const bool sign = !text.empty() && (text.front() == u'-' || text.front() == u'+');
    const std::size_t digits = text.size() - (sign ? 1 : 0);
    if (digits == 0 || digits > kSafeDigits) {
        return ReadByLexicalCast(text);
    }
    std::int64_t magnitude = 0;
    for (std::size_t index = sign ? 1 : 0; index < text.size(); ++index) {
        if (text[index] < u'0' || text[index] > u'9') {
            return ReadByLexicalCast(text);
        }
        magnitude = magnitude * 10 + (text[index] - u'0');
    }
    return sign && text.front() == u'-' ? -magnitude : magnitude;
}

}  // namespace

PluralResolver::PluralResolver(const boost::shared_ptr<IParamResolver>& paramResolver,
                               const Model::PluralFormRuleId& pluralFormRuleId,
                               const boost::shared_ptr<Model::IPluralFormRules>& pluralFormRules)
    : paramResolver_(ULO_REQUIRE_NOT_NULL(paramResolver)),
      pluralFormRuleId_(pluralFormRuleId),
      pluralFormRules_(ULO_REQUIRE_NOT_NULL(pluralFormRules)),
      ruleEntries_(pluralFormRules_->FindRuleEntries(pluralFormRuleId_)) {}

std::uint16_t PluralResolver::GetPluralFormIndex(const Model::PluralForm& invocation) const {
    const std::int64_t number = ReadDiscriminator(paramResolver_->ResolveParam(invocation.param));

    Model::PluralRuleEntries copied;
    if (ruleEntries_ == nullptr) {
        copied = pluralFormRules_->GetRuleEntries(pluralFormRuleId_);
    }
    const Model::PluralRuleEntries& entries = ruleEntries_ != nullptr ? *ruleEntries_ : copied;
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
    if (ruleEntries_ != nullptr) {
        return static_cast<std::uint16_t>(ruleEntries_->size());
    }
    return pluralFormRules_->GetRuleEntryCount(pluralFormRuleId_);
}

}  // namespace LocalizationManager::StringLocalizing::Resolving
