#include "StringLocalizing/Resolving/KeyResolver.h"

#include "StringLocalizing/Resolving/PluralFormCountException.h"
#include "StringLocalizing/Resolving/UnexpandedReferenceException.h"
#include "ulo/rtl/CodeContracts.h"

namespace LocalizationManager::StringLocalizing::Resolving {

KeyResolver::KeyResolver(const boost::shared_ptr<IParamResolver>& paramResolver,
                         const boost::shared_ptr<IPluralResolver>& pluralResolver)
    : paramResolver_(ULO_REQUIRE_NOT_NULL(paramResolver)),
      pluralResolver_(ULO_REQUIRE_NOT_NULL(pluralResolver)) {}

std::u16string KeyResolver::Resolve(const Model::Value& value) const {
    TextBuffer buffer;
    return std::u16string(ResolveInto(value, buffer));
}

std::u16string_view KeyResolver::ResolveInto(const Model::Value& value, TextBuffer& buffer) const {
    if (const std::u16string* text = Model::PlainText(value)) {
        return *text;
    }
    buffer.Clear();
    AppendResolved(value, buffer);
    return buffer.View();
}

void KeyResolver::AppendResolved(const Model::Value& value, TextBuffer& text) const {
    for (const Model::Operand& operand : value.operands) {
        switch (operand.which()) {
            case 0:
                text.Append(boost::get<std::u16string>(operand));
                break;
            case 1:
                throw UnexpandedReferenceException(boost::get<Model::KeyRef>(operand).key);
            case 2:
                text.Append(paramResolver_->ResolveParam(boost::get<Model::Param>(operand).name));
                break;
            default:
                AppendPluralForm(boost::get<Model::PluralForm>(operand), text);
                break;
        }
    }
}

void KeyResolver::AppendPluralForm(const Model::PluralForm& invocation, TextBuffer& text) const {
    // The index first: an invalid discriminator is reported before a form-count mismatch.
    const std::uint16_t index = pluralResolver_->GetPluralFormIndex(invocation);
    const std::uint16_t expected = pluralResolver_->GetPluralFormCount();
    const auto got = static_cast<std::uint16_t>(invocation.forms.size());
    if (expected != got) {
        throw PluralFormCountException(expected, got, invocation.param);
    }
    // The plural resolver's index lies below its own form count, which equals the number of
    // forms here; at() still refuses a resolver that breaks that promise.
    AppendResolved(invocation.forms.at(index), text);
}

}  // namespace LocalizationManager::StringLocalizing::Resolving
