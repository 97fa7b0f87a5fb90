#pragma once

#include "StringLocalizing/Model/CompactTexts.h"
#include "StringLocalizing/Model/KeyCase.h"
#include "StringLocalizing/Resolving/IKeyResolver.h"
#include "StringLocalizing/Resolving/IStringProvider.h"

#include <boost/shared_ptr.hpp>

namespace LocalizationManager::StringLocalizing::Resolving {

// Looks a key up, lower-cased, in one compiled store of texts and resolves its value; what
// happens to a key the store lacks is the subclass's choice. Immutable; shares its resolver
// and store, which must be compiled by construction and never change afterwards.
class StringProviderBase : public IStringProvider {
  public:
    std::u16string GetString(const std::u16string& key) const override;
    std::u16string_view GetStringView(std::u16string_view key, TextBuffer& buffer) const override;

  protected:
    // Throws the null-pointer contract exception for a null argument, keyResolver first.
    StringProviderBase(const boost::shared_ptr<IKeyResolver>& keyResolver,
                       const boost::shared_ptr<const Model::CompactTexts>& resourceDictionary);

    // The text for a key that the store lacks, or an exception. `key` is lower-cased.
    virtual std::u16string OnKeyNotFound(const std::u16string& key) const = 0;

    // OnKeyNotFound for GetStringView, which every request goes through. By default
    // OnKeyNotFound's text is kept in `buffer`.
    virtual std::u16string_view OnKeyNotFoundView(std::u16string_view key,
                                                  TextBuffer& buffer) const;

  private:
    const boost::shared_ptr<IKeyResolver> keyResolver_;
    const boost::shared_ptr<const Model::CompactTexts> resourceDictionary_;
    const Model::KeyCaseFolder keyCaseFolder_;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
