#pragma once

#include "StringLocalizing/Model/CompactTexts.h"
#include "StringLocalizing/Pipeline/CommonTexts.h"
#include "StringLocalizing/Pipeline/IResourceProvider.h"
#include "StringLocalizing/Resolving/IParamResolver.h"
#include "StringLocalizing/Resolving/IPluralResolver.h"
#include "StringLocalizing/Resolving/IStringProvider.h"
#include "StringLocalizing/Resolving/TextBuffer.h"
#include "localization_manager/Culture.h"

#include <boost/shared_ptr.hpp>

#include <string>

namespace LocalizationManager::StringLocalizing::Pipeline {

// The text engine of one scope and culture. The constructor does all the work once, through
// the steps of PipelineSteps.h: it loads the plural rules (a rule file of the culture replaces
// the built-in rule), loads the common texts of the culture if none are published yet, parses
// the scope's texts, compiles the common texts and publishes them, compiles the scope's texts
// over them and chains the providers; afterwards a request is one call into that chain.
//
// Construction either succeeds or throws and leaves nothing behind: common texts are published
// only once compiled whole, so the same request on the same files fails or succeeds the same
// way every time. The caller must hold the lock of the common texts around construction.
// Immutable once built; the common texts it reads never change.
class ResourceProcessingPipeline {
  public:
    // Throws the null-pointer contract exception for a null resourceProvider, paramResolver or
    // commonResourceDictionary; the provider's, parsers' and compiler's errors pass through.
    // The resource provider is used during construction only.
    ResourceProcessingPipeline(const boost::shared_ptr<IResourceProvider>& resourceProvider,
                               const boost::shared_ptr<Resolving::IParamResolver>& paramResolver,
                               const boost::shared_ptr<CommonTexts>& commonResourceDictionary,
                               const localization_manager::Culture& culture,
                               const std::u16string& scope, const std::u16string& commonScope);

    ResourceProcessingPipeline(const ResourceProcessingPipeline&) = delete;
    ResourceProcessingPipeline& operator=(const ResourceProcessingPipeline&) = delete;

    // The text of `key` (any case): the scope's entry, else the common one. Resolution errors
    // and Model::KeyNotFoundException pass through.
    virtual std::u16string GetString(const std::u16string& key) const;

    // The text GetString gives, copied only where it must be: a view of the texts' own
    // text when the key's value is one literal text, otherwise of `buffer`, which receives the
    // resolved text. The view is valid while the pipeline and `buffer` are. Fails as GetString.
    std::u16string_view GetStringView(std::u16string_view key, Resolving::TextBuffer& buffer) const;

    virtual ~ResourceProcessingPipeline() = default;

  private:
    boost::shared_ptr<Resolving::IParamResolver> paramResolver_;
    boost::shared_ptr<Resolving::IPluralResolver> pluralResolver_;
    boost::shared_ptr<Model::CompactTexts> resourceDictionary_;
    boost::shared_ptr<const Model::CompactTexts> commonResourceDictionary_;
    boost::shared_ptr<Resolving::IStringProvider> stringProvider_;
};

}  // namespace LocalizationManager::StringLocalizing::Pipeline
