#pragma once

#include "localization_manager/host/HostObject.h"
#include "ulo/IServiceLocator.h"

#include <cstddef>
#include <cstdint>

namespace localization_manager::host {

// The allocator service over the C heap. It holds no state, so one instance serves the whole
// process and is never destroyed: a component may keep its reference for as long as it likes,
// even past the end of main. Like every static framework object it does not count references
// (AddRef and Release return 0). Any thread may use it, as it may use malloc.
class MallocAllocator final : public StaticObject<ulo::IAllocator> {
  public:
    // The process-wide instance.
    static MallocAllocator& Instance() noexcept;

    // A request for 0 bytes still yields a unique block, so that null always means "out of
    // memory".
    void* Allocate(std::size_t bytes) override;
    // Reallocating to 0 bytes keeps a small block instead of freeing it, for the same reason.
    void* Reallocate(void* block, std::size_t bytes) override;
    void Free(void* block) override;

  private:
    MallocAllocator() = default;
};

}  // namespace localization_manager::host
