#pragma once

#include "StringLocalizing/Resolving/StringProviderBase.h"

namespace LocalizationManager::StringLocalizing::Resolving {

// The last provider of a chain, over the common texts: a key they lack is missing.
class RootStringProvider : public StringProviderBase {
  public:
    RootStringProvider(
        const boost::shared_ptr<IKeyResolver>& keyResolver,
        const boost::shared_ptr<const Model::CompactTexts>& commonResourceDictionary);

  protected:
    // Throws Model::KeyNotFoundException ("Key '<lower-cased key>' not found").
    std::u16string OnKeyNotFound(const std::u16string& key) const override;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
