#pragma once

#include "StringLocalizing/Resolving/IKeyResolver.h"
#include "StringLocalizing/Resolving/IParamResolver.h"
#include "StringLocalizing/Resolving/IPluralResolver.h"

#include <boost/shared_ptr.hpp>

namespace LocalizationManager::StringLocalizing::Resolving {

// Resolves compiled values: text is copied, parameters are asked of the parameter resolver,
// plural form invocations are settled by the plural resolver and their chosen form resolved
// by the same rules. Immutable and stateless between calls; concurrent calls are as safe as
// the two resolvers it holds (shared ownership).
class KeyResolver : public IKeyResolver {
  public:
    // Throws the null-pointer contract exception for a null resolver, checking paramResolver
    // first.
    KeyResolver(const boost::shared_ptr<IParamResolver>& paramResolver,
                const boost::shared_ptr<IPluralResolver>& pluralResolver);

    // Throws UnexpandedReferenceException for a value that still holds a key reference and
    // PluralFormCountException for a plural form invocation whose number of forms is not the
    // rule's (both std::logic_error); the discriminator is read before the counts are
    // compared, so its errors come first. Errors of the resolvers propagate unchanged.
    std::u16string Resolve(const Model::Value& value) const override;

    // A value of one literal text gives a view of that text; any other is resolved into
    // `buffer`. Fails as Resolve does.
    std::u16string_view ResolveInto(const Model::Value& value, TextBuffer& buffer) const override;

  private:
    void AppendResolved(const Model::Value& value, TextBuffer& text) const;
    void AppendPluralForm(const Model::PluralForm& invocation, TextBuffer& text) const;

    const boost::shared_ptr<IParamResolver> paramResolver_;
    const boost::shared_ptr<IPluralResolver> pluralResolver_;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
