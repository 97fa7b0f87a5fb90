#pragma once

#include "StringLocalizing/Pipeline/CommonTexts.h"
#include "StringLocalizing/Pipeline/IResourceProvider.h"
#include "StringLocalizing/Pipeline/ResourceProcessingPipeline.h"
#include "StringLocalizing/Resolving/IParamResolver.h"
#include "localization_manager/Culture.h"
#include "localization_manager/ILocalizer.h"
#include "localization_manager/IParamResolver.h"
#include "ulo/rtl/CriticalSection.h"
#include "ulo/rtl/objbase.h"

#include <boost/shared_ptr.hpp>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

namespace localization_manager {

// The texts and binary resources of one scope in one culture. The text engine of the scope is
// built on the first string request, under the lock of the common dictionary that all
// localizers of the culture share; until that succeeds every request tries again. Once built,
// requests take no lock. Every failure is written to the tracer and returned as a result code.
class Localizer : public ulo::ObjectRootEx<ulo::StoreServiceStrategy>, public ILocalizer {
  public:
    using IResourceProvider = LocalizationManager::StringLocalizing::Pipeline::IResourceProvider;
    using CommonTexts = LocalizationManager::StringLocalizing::Pipeline::CommonTexts;

    explicit Localizer(ulo::IServiceLocator* serviceLocator);

    // Called once by the manager right after creation. Throws the invariant null-pointer
    // contract exception for a null shared pointer. `paramResolver` may be null; otherwise the
    // localizer holds one reference on it for its own life.
    void Init(const boost::shared_ptr<IResourceProvider>& resourceProvider,
              const boost::shared_ptr<CommonTexts>& commonResourceDictionary,
              const boost::shared_ptr<ulo::CriticalSection>& commonResourceDictionarySyncObject,
              const ulo::string16_t& scope, const Culture& culture, IParamResolver* paramResolver);

    std::int32_t QueryInterface(ulo::InterfaceId interfaceId, void** out) override;
    std::int32_t GetString(const ulo::string16_t& key, ulo::string16_t& result) override;
    std::int32_t GetStream(const ulo::string16_t& key, ulo::IIO** stream) override;

  protected:
    ~Localizer();

  private:
    using Pipeline = LocalizationManager::StringLocalizing::Pipeline::ResourceProcessingPipeline;

    // Lets the engine ask the caller's resolver for external parameters.
    class ParamResolverWrapper
        : public LocalizationManager::StringLocalizing::Resolving::IParamResolver {
      public:
        // Takes one reference on `paramResolver` (may be null) until destroyed.
        explicit ParamResolverWrapper(localization_manager::IParamResolver* paramResolver);
        ~ParamResolverWrapper() override;

        ParamResolverWrapper(const ParamResolverWrapper&) = delete;
        ParamResolverWrapper& operator=(const ParamResolverWrapper&) = delete;

        // The caller's value of parameter `in`. Throws UloCallFailedException ("external
        // resolver cannot resolve key, error: " and the code's text) when the resolver fails,
        // and std::runtime_error when there is no resolver.
        std::u16string ResolveParam(const std::u16string& in) override;

      private:
        std::u16string Resolve(const std::u16string& in, ulo::string16_t& name,
                               ulo::string16_t& result);

        localization_manager::IParamResolver* paramResolver_;
        // The strings handed to the caller's resolver, kept from call to call so that their
        // buffers are reused instead of allocated for every parameter. One call at a time
        // takes them, without waiting: a call that finds them taken uses strings of its own.
        ulo::string16_t scratchName_;
        ulo::string16_t scratchResult_;
        std::atomic<bool> scratchTaken_{false};
    };

    // The pipeline, built now if no other request has built it; throws what building throws.
    Pipeline& GetPipeline();

    boost::shared_ptr<IResourceProvider> resourceProvider_;
    boost::shared_ptr<CommonTexts> commonResourceDictionary_;
    // Kept for the localizer's whole life: a request racing with the one that builds the
    // pipeline may still be about to take it.
    boost::shared_ptr<ulo::CriticalSection> commonResourceDictionarySyncObject_;
    std::u16string scope_;
    std::unique_ptr<Culture> culture_;
    // Handed to the pipeline when it is built, then dropped (the pipeline keeps its own).
    boost::shared_ptr<ParamResolverWrapper> paramResolver_;
    // Owned. Read without a lock by every request, written once under the common lock.
    std::atomic<Pipeline*> pipeline_{nullptr};
};

}  // namespace localization_manager
