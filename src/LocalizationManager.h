#pragma once

#include "Localizer.h"
#include "StringLocalizing/Pipeline/CommonTexts.h"
#include "StringLocalizing/Pipeline/IResourceProvider.h"
#include "localization_manager/Culture.h"
#include "localization_manager/ILocalizationManager.h"
#include "ulo/rtl/CriticalSection.h"
#include "ulo/rtl/objbase.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <memory>

namespace localization_manager {

// The component a host creates first: holds the localization tree (one file resource provider
// shared by all its localizers) and hands out localizers. It keeps the common dictionary of
// the culture of its latest request, so that consecutive localizers of one culture read the
// "common" texts once; a request for another culture starts a new one.
class LocalizationManager : public ulo::ObjectRootEx<ulo::StoreServiceStrategy>,
                            public ILocalizationManager,
                            public IConstruct {
  public:
    explicit LocalizationManager(ulo::IServiceLocator* serviceLocator);

    std::int32_t QueryInterface(ulo::InterfaceId interfaceId, void** out) override;

    std::int32_t Construct(const ConstructParams* params) override;
    std::int32_t Construct(const ulo::string16_t& root,
                           const ulo::string16_t& alternative) override;
    std::int32_t GetLocalizer(const ulo::string16_t& scope, const Culture& culture,
                              IParamResolver* paramResolver, ILocalizer** localizer) override;

  protected:
    ~LocalizationManager() = default;

  private:
    using IResourceProvider = Localizer::IResourceProvider;
    using CommonTexts = Localizer::CommonTexts;

    // Guarded by lock_, like the three culture cache members below; a new tree given to
    // Construct serves the localizers made afterwards.
    boost::shared_ptr<IResourceProvider> resourceProvider_;
    std::unique_ptr<Culture> culture_;
    boost::shared_ptr<CommonTexts> commonResourceDictionary_;
    boost::shared_ptr<ulo::CriticalSection> commonResourceDictionarySyncObject_;
    ulo::CriticalSection lock_;
};

}  // namespace localization_manager
