#include "StringLocalizing/Resolving/StringProviderBase.h"

#include "StringLocalizing/Model/KeyCase.h"
#include "ulo/rtl/CodeContracts.h"

namespace LocalizationManager::StringLocalizing::Resolving {

StringProviderBase::StringProviderBase(
    const boost::shared_ptr<IKeyResolver>& keyResolver,
    const boost::shared_ptr<Model::ResourceDictionary>& resourceDictionary)
    : keyResolver_(keyResolver), resourceDictionary_(resourceDictionary) {
    ULO_REQUIRE_NOT_NULL(keyResolver);
    ULO_REQUIRE_NOT_NULL(resourceDictionary);
}

std::u16string StringProviderBase::GetString(const std::u16string& key) const {
    const std::u16string lowered = Model::LowerCaseKey(key);
    const auto position = resourceDictionary_->find(lowered);
    if (position == resourceDictionary_->end()) {
        return OnKeyNotFound(lowered);
    }
    // A key that exists but fails to resolve is not looked up further down the chain.
    return keyResolver_->Resolve(position->second);
}

}  // namespace LocalizationManager::StringLocalizing::Resolving
