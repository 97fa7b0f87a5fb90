#include "CultureConverterImpl.h"

#include "StringLocalizing/Model/CultureNames.h"
#include "ulo/ResultCode.h"

namespace localization_manager {

CultureConverterImpl::CultureConverterImpl(ulo::IServiceLocator* serviceLocator)
    : ObjectRootEx(serviceLocator) {}

std::int32_t CultureConverterImpl::QueryInterface(ulo::InterfaceId interfaceId, void** out) {
    return ulo::QueryInterfaceOf<ICultureConverter>(this, interfaceId, out);
}

std::int32_t CultureConverterImpl::ConvertCultureName(const ulo::string8_t& name,
                                                      Culture* culture) {
    if (culture == nullptr) {
        return ulo::kResultInvalidArgument;
    }
    try {
        return LocalizationManager::StringLocalizing::Model::ConvertCultureName(name.ToStdString(),
                                                                                *culture);
    } catch (...) {
        // Only memory can run out here; no exception leaves a component.
        return ulo::kResultOutOfMemory;
    }
}

}  // namespace localization_manager
