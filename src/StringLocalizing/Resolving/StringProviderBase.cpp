#include "StringLocalizing/Resolving/StringProviderBase.h"

#include "ulo/rtl/CodeContracts.h"

namespace LocalizationManager::StringLocalizing::Resolving {

StringProviderBase::StringProviderBase(
    const boost::shared_ptr<IKeyResolver>& keyResolver,
    const boost::shared_ptr<const Model::CompactTexts>& resourceDictionary)
    : keyResolver_(ULO_REQUIRE_NOT_NULL(keyResolver)),
      resourceDictionary_(ULO_REQUIRE_NOT_NULL(resourceDictionary)) {}

std::u16string StringProviderBase::GetString(const std::u16string& key) const {
    TextBuffer buffer;
    return std::u16string(GetStringView(key, buffer));
}

std::u16string_view StringProviderBase::GetStringView(std::u16string_view key,
                                                      TextBuffer& buffer) const {
    Model::FoldedKeyBuffer foldBuffer;
    const std::u16string_view lowered = keyCaseFolder_.Fold(key, foldBuffer);
    Model::CompactTexts::Entry entry;
    if (!resourceDictionary_->Find(lowered, entry)) {
        return OnKeyNotFoundView(lowered, buffer);
    }
    // One literal text is its own resolved text under every key resolver.
    if (entry.IsPlainText()) {
        return entry.plainText;
    }
    // A key that exists but fails to resolve is not looked up further down the chain.
    return keyResolver_->ResolveInto(*entry.value, buffer);
}

std::u16string_view StringProviderBase::OnKeyNotFoundView(std::u16string_view key,
                                                          TextBuffer& buffer) const {
    return buffer.Assign(OnKeyNotFound(std::u16string(key)));
}

}  // namespace LocalizationManager::StringLocalizing::Resolving
