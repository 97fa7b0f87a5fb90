#include "StringLocalizing/Resolving/StringProvider.h"

#include "ulo/rtl/CodeContracts.h"

namespace LocalizationManager::StringLocalizing::Resolving {

StringProvider::StringProvider(
    const boost::shared_ptr<IKeyResolver>& keyResolver,
    const boost::shared_ptr<const Model::CompactTexts>& resourceDictionary,
    const boost::shared_ptr<IStringProvider>& parentStringProvider)
    : StringProviderBase(keyResolver, resourceDictionary),
      parentStringProvider_(ULO_REQUIRE_NOT_NULL(parentStringProvider)) {}

std::u16string StringProvider::OnKeyNotFound(const std::u16string& key) const {
    return parentStringProvider_->GetString(key);
}

std::u16string_view StringProvider::OnKeyNotFoundView(std::u16string_view key,
                                                      TextBuffer& buffer) const {
    return parentStringProvider_->GetStringView(key, buffer);
}

}  // namespace LocalizationManager::StringLocalizing::Resolving
