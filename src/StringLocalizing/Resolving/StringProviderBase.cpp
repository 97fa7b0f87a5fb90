#include "StringLocalizing/Resolving/StringProviderBase.h"

#include "ulo/rtl/CodeContracts.h"

namespace LocalizationManager::StringLocalizing::Resolving {

StringProviderBase::StringProviderBase(
    const boost::shared_ptr<IKeyResolver>& keyResolver,
    const boost::shared_ptr<Model::ResourceDictionary>& resourceDictionary)
    : keyResolver_(keyResolver), resourceDictionary_(resourceDictionary) {
    ULO_REQUIRE_NOT_NULL(keyResolver);
    ULO_REQUIRE_NOT_NULL(resourceDictionary);
    if (!resourceDictionary_->empty()) {
        index_.emplace(*resourceDictionary_);
    }
}

std::u16string StringProviderBase::GetString(const std::u16string& key) const {
    TextBuffer buffer;
    return std::u16string(GetStringView(key, buffer));
}

std::u16string_view StringProviderBase::GetStringView(std::u16string_view key,
                                                      TextBuffer& buffer) const {
    std::u16string foldBuffer;
    const std::u16string_view lowered = keyCaseFolder_.Fold(key, foldBuffer);
    const Model::Value* value = nullptr;
    if (index_) {
        const KeyIndex::Entry* entry = index_->Find(lowered);
        // One literal text is its own resolved text under every key resolver.
        if (entry != nullptr && entry->IsPlainText()) {
            return entry->PlainText();
        }
        value = entry != nullptr ? &entry->Value() : nullptr;
    } else {
        const auto position = resourceDictionary_->find(std::u16string(lowered));
        value = position != resourceDictionary_->end() ? &position->second : nullptr;
    }
    if (value == nullptr) {
        return OnKeyNotFoundView(lowered, buffer);
    }
    // A key that exists but fails to resolve is not looked up further down the chain.
    return keyResolver_->ResolveInto(*value, buffer);
}

std::u16string_view StringProviderBase::OnKeyNotFoundView(std::u16string_view key,
                                                          TextBuffer& buffer) const {
    return buffer.Assign(OnKeyNotFound(std::u16string(key)));
}

}  // namespace LocalizationManager::StringLocalizing::Resolving
