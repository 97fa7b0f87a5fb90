#pragma once

#include "StringLocalizing/Model/ResourceDictionary.h"
#include "StringLocalizing/Resolving/IKeyResolver.h"
#include "StringLocalizing/Resolving/IStringProvider.h"

#include <boost/shared_ptr.hpp>

namespace LocalizationManager::StringLocalizing::Resolving {

// Looks a key up, lower-cased, in one compiled dictionary and resolves its value; what
// happens to a key the dictionary lacks is the subclass's choice. Immutable; shares its
// resolver and dictionary.
class StringProviderBase : public IStringProvider {
  public:
    std::u16string GetString(const std::u16string& key) const override;

  protected:
    // Throws the null-pointer contract exception for a null argument, keyResolver first.
    StringProviderBase(const boost::shared_ptr<IKeyResolver>& keyResolver,
                       const boost::shared_ptr<Model::ResourceDictionary>& resourceDictionary);

    // The text for a key that the dictionary lacks, or an exception. `key` is lower-cased.
    virtual std::u16string OnKeyNotFound(const std::u16string& key) const = 0;

  private:
    const boost::shared_ptr<IKeyResolver> keyResolver_;
    const boost::shared_ptr<Model::ResourceDictionary> resourceDictionary_;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
