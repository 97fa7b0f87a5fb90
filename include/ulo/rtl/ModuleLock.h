#pragma once

// The module lock count: how many component objects of this module are alive. A host may
// unload the module only while it is zero.

#include <atomic>
#include <cstdint>

namespace ulo {

// One counter per module: the module's symbols are local to it, so each loaded module has its
// own copy of this function's static.
inline std::atomic<std::int32_t>& ModuleLockCount() noexcept {
    static std::atomic<std::int32_t> count{0};
    return count;
}

// Holds one count of the module lock from construction until destruction or Keep().
class ObjectModuleAutoLock {
  public:
    ObjectModuleAutoLock() noexcept { ModuleLockCount().fetch_add(1, std::memory_order_relaxed); }

    ~ObjectModuleAutoLock() {
        if (held_) {
            ModuleLockCount().fetch_sub(1, std::memory_order_acq_rel);
        }
    }

    ObjectModuleAutoLock(const ObjectModuleAutoLock&) = delete;
    ObjectModuleAutoLock& operator=(const ObjectModuleAutoLock&) = delete;

    // Leaves the count with the object that was created under this guard; the object's last
    // release gives it back.
    void Keep() noexcept { held_ = false; }

  private:
    bool held_ = true;
};

}  // namespace ulo
