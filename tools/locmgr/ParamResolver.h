#pragma once

#include "localization_manager/IParamResolver.h"
#include "localization_manager/host/HostObject.h"
#include "localization_manager/host/InterfacePtr.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace locmgr {

// Parameter values given on the command line or in a batch request. A localizer keeps its
// resolver for its whole life, so batch shares one resolver between all its localizers and
// replaces the values before each request.
class ParamResolver final
    : public localization_manager::host::CountedObject<localization_manager::IParamResolver> {
  public:
    static localization_manager::host::InterfacePtr<ParamResolver> Create();

    // A later value for the same name replaces the earlier one.
    void Set(std::string_view name, std::string_view value);
    void Clear() { values_.clear(); }

    // 0x8000004C ("Not found") for a name without a value.
    std::int32_t Resolve(const ulo::string16_t& in, ulo::string16_t& result) override;

  private:
    ParamResolver() = default;
    ~ParamResolver() override = default;

    std::map<std::u16string, std::u16string> values_;
};

}  // namespace locmgr
