#pragma once

#include "StringLocalizing/Resolving/StringProviderBase.h"

namespace LocalizationManager::StringLocalizing::Resolving {

// A provider over a scope's texts: a key they lack is asked of its parent (the provider over
// the common texts), so the scope's texts come first.
class StringProvider : public StringProviderBase {
  public:
    // Throws the null-pointer contract exception for a null argument: keyResolver, then
    // resourceDictionary, then parentStringProvider.
    StringProvider(const boost::shared_ptr<IKeyResolver>& keyResolver,
                   const boost::shared_ptr<const Model::CompactTexts>& resourceDictionary,
                   const boost::shared_ptr<IStringProvider>& parentStringProvider);

  protected:
    std::u16string OnKeyNotFound(const std::u16string& key) const override;
    std::u16string_view OnKeyNotFoundView(std::u16string_view key,
                                          TextBuffer& buffer) const override;

  private:
    const boost::shared_ptr<IStringProvider> parentStringProvider_;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
