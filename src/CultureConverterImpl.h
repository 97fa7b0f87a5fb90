#pragma once

#include "localization_manager/ICultureConverter.h"
#include "ulo/rtl/objbase.h"

#include <cstdint>

namespace localization_manager {

// The culture converter component: culture names as hosts write them into Culture records.
class CultureConverterImpl : public ulo::ObjectRootEx<ulo::StoreServiceStrategy>,
                             public ICultureConverter {
  public:
    explicit CultureConverterImpl(ulo::IServiceLocator* serviceLocator);

    std::int32_t QueryInterface(ulo::InterfaceId interfaceId, void** out) override;
    std::int32_t ConvertCultureName(const ulo::string8_t& name, Culture* culture) override;

  protected:
    ~CultureConverterImpl() = default;
};

}  // namespace localization_manager
