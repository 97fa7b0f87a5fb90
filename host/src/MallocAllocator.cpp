#include "localization_manager/host/MallocAllocator.h"

#include "ulo/ResultCode.h"

#include <cstdlib>

namespace localization_manager::host {

MallocAllocator& MallocAllocator::Instance() noexcept {
    // Trivially destructible: no exit-time destructor that a late Free could race with.
    static MallocAllocator instance;
    return instance;
}

std::int32_t MallocAllocator::QueryInterface(ulo::InterfaceId interfaceId, void** out) {
    if (out == nullptr) {
        return ulo::kResultInvalidArgument;
    }
    if (interfaceId == ulo::IObject::kInterfaceId) {
        *out = static_cast<ulo::IObject*>(this);
        return ulo::kResultOk;
    }
    *out = nullptr;
    return ulo::kResultInterfaceNotSupported;
}

void* MallocAllocator::Allocate(std::size_t bytes) {
    return std::malloc(bytes != 0 ? bytes : 1);
}

void* MallocAllocator::Reallocate(void* block, std::size_t bytes) {
    return std::realloc(block, bytes != 0 ? bytes : 1);
}

void MallocAllocator::Free(void* block) {
    std::free(block);
}

}  // namespace localization_manager::host
