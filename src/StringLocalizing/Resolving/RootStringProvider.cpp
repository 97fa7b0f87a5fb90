#include "StringLocalizing/Resolving/RootStringProvider.h"

#include "StringLocalizing/Model/KeyNotFoundException.h"

namespace LocalizationManager::StringLocalizing::Resolving {

RootStringProvider::RootStringProvider(
    const boost::shared_ptr<IKeyResolver>& keyResolver,
    const boost::shared_ptr<const Model::CompactTexts>& commonResourceDictionary)
    : StringProviderBase(keyResolver, commonResourceDictionary) {}

std::u16string RootStringProvider::OnKeyNotFound(const std::u16string& key) const {
    throw Model::KeyNotFoundException(key);
}

}  // namespace LocalizationManager::StringLocalizing::Resolving
