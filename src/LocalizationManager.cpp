#include "LocalizationManager.h"

#include "ErrorTrace.h"
#include "File/FileResourceProvider.h"
#include "ulo/ResultCode.h"
#include "ulo/rtl/CodeContracts.h"
#include "ulo/rtl/TextConversion.h"

#include <boost/make_shared.hpp>

namespace localization_manager {

namespace {

constexpr const char kSourceFile[] = "LocalizationManager";
constexpr std::int32_t kCreateLocalizerCheckLine = 243;

}  // namespace

LocalizationManager::LocalizationManager(ulo::IServiceLocator* serviceLocator)
    : ObjectRootEx(serviceLocator) {}

std::int32_t LocalizationManager::QueryInterface(ulo::InterfaceId interfaceId, void** out) {
    return ulo::QueryInterfaceOf<ILocalizationManager, IConstruct>(this, interfaceId, out);
}

std::int32_t LocalizationManager::Construct(const ConstructParams* params) {
    if (params == nullptr) {
        return ulo::kResultInvalidArgument;
    }
    return Construct(params->root, params->alternative);
}

std::int32_t LocalizationManager::Construct(const ulo::string16_t& root,
                                            const ulo::string16_t& alternative) {
    if (root.empty()) {
        return ulo::kResultInvalidState;
    }
    try {
        boost::shared_ptr<IResourceProvider> resourceProvider =
            boost::make_shared<::LocalizationManager::File::FileResourceProvider>(
                root.ToStdString(), alternative.ToStdString());
        ulo::CriticalSectionLock lock(lock_);
        resourceProvider_.swap(resourceProvider);
        return ulo::kResultOk;
    } catch (...) {
        TraceError(GetTracerService(), [&] {
            return "cannot create file resource provider for root='" +
                   ulo::WideToNarrowMessage(root.ToStdString()) + "' alternative='" +
                   ulo::WideToNarrowMessage(alternative.ToStdString()) +
                   "', error: " + CurrentExceptionMessage();
        });
        return ulo::kResultUnspecifiedError;
    }
}

std::int32_t LocalizationManager::GetLocalizer(const ulo::string16_t& scope, const Culture& culture,
                                               IParamResolver* paramResolver,
                                               ILocalizer** localizer) {
    if (localizer == nullptr) {
        return ulo::kResultInvalidArgument;
    }
    *localizer = nullptr;
    boost::shared_ptr<IResourceProvider> resourceProvider;
    {
        ulo::CriticalSectionLock lock(lock_);
        resourceProvider = resourceProvider_;
    }
    if (!resourceProvider) {
        return ulo::kResultInvalidState;
    }
    try {
        ulo::ObjectPtr<ulo::Object<Localizer>> created;
        ::LocalizationManager::CheckCall(
            ulo::Object<Localizer>::CreateInstance(GetServiceLocator(), created.Ref()),
            ULO_CODE_CONTRACTS_LOCATION_AT(
                "ulo::Object<Localizer>::CreateInstance(GetServiceLocator(), localizer.Ref())",
                kSourceFile, kCreateLocalizerCheckLine),
            "Cannot create Localizer");
        // The localizer is initialised after the lock is left, with the dictionary and lock of
        // its own culture as they were taken under it: another request may switch the cache
        // to another culture meanwhile.
        boost::shared_ptr<CommonTexts> commonResourceDictionary;
        boost::shared_ptr<ulo::CriticalSection> commonResourceDictionarySyncObject;
        {
            ulo::CriticalSectionLock lock(lock_);
            if (!culture_ || *culture_ != culture) {
                auto cachedCulture = std::make_unique<Culture>(culture);
                auto dictionary = boost::make_shared<CommonTexts>();
                auto syncObject = boost::make_shared<ulo::CriticalSection>();
                culture_ = std::move(cachedCulture);
                commonResourceDictionary_ = std::move(dictionary);
                commonResourceDictionarySyncObject_ = std::move(syncObject);
            }
            commonResourceDictionary = commonResourceDictionary_;
            commonResourceDictionarySyncObject = commonResourceDictionarySyncObject_;
        }
        created->Init(resourceProvider, commonResourceDictionary,
                      commonResourceDictionarySyncObject, scope, culture, paramResolver);
        *localizer = created.Detach();
        return ulo::kResultOk;
    } catch (...) {
        TraceError(GetTracerService(), [&] {
            return "cannot create Localizer for scope " +
                   ulo::WideToNarrowMessage(scope.ToStdString()) + " culture " +
                   CultureTraceText(culture) + ", error: " + CurrentExceptionMessage();
        });
        return ulo::kResultUnspecifiedError;
    }
}

}  // namespace localization_manager
