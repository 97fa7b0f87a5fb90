#include "ParamResolver.h"

#include "localization_manager/host/StringConversion.h"
#include "ulo/ResultCode.h"

#include <new>

namespace locmgr {

namespace host = localization_manager::host;

host::InterfacePtr<ParamResolver> ParamResolver::Create() {
    return host::InterfacePtr<ParamResolver>::Adopt(new ParamResolver());
}

void ParamResolver::Set(std::string_view name, std::string_view value) {
    values_[host::Utf8ToUtf16(name)] = host::Utf8ToUtf16(value);
}

std::int32_t ParamResolver::Resolve(const ulo::string16_t& in, ulo::string16_t& result) {
    // No exception may leave through the interface.
    try {
        const auto found = values_.find(std::u16string(in.c_str(), in.size()));
        if (found == values_.end()) {
            return ulo::kResultNotFound;
        }
        result = ulo::string16_t(found->second);
        return ulo::kResultOk;
    } catch (const std::bad_alloc&) {
        return ulo::kResultOutOfMemory;
    }
}

}  // namespace locmgr
