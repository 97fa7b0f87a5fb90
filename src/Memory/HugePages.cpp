#include "Memory/HugePages.h"

#include <cstdint>
#include <sys/mman.h>

namespace LocalizationManager::Memory {

void AdviseHugePages(void* start, std::size_t bytes) noexcept {
#ifdef MADV_HUGEPAGE
    constexpr std::uintptr_t kHugePage = std::uintptr_t{2} << 20;
    const auto first = reinterpret_cast<std::uintptr_t>(start);
    const std::uintptr_t begin = (first + kHugePage - 1) & ~(kHugePage - 1);
    const std::uintptr_t end = (first + bytes) & ~(kHugePage - 1);
    if (end > begin) {
        ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
    }
#else
    (void)start;
    (void)bytes;
#endif
}

}  // namespace LocalizationManager::Memory
