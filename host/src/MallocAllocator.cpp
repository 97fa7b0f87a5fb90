#include "localization_manager/host/MallocAllocator.h"

#include <cstdlib>

namespace localization_manager::host {

MallocAllocator& MallocAllocator::Instance() noexcept {
    // Trivially destructible: no exit-time destructor that a late Free could race with.
    static MallocAllocator instance;
    return instance;
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
