#pragma once

#include <atomic>
#include <cstdint>

namespace localization_manager::host {

// The counter behind AddRef and Release of a heap object the host hands to components. It
// starts at one: the reference of whoever created the object. The module may release its
// references on any thread, so the count is atomic, and the last Drop is ordered after every
// use made through the other references.
class ReferenceCount {
  public:
    ReferenceCount() noexcept = default;
    ReferenceCount(const ReferenceCount&) = delete;
    ReferenceCount& operator=(const ReferenceCount&) = delete;

    // Returns the new count.
    std::uint32_t Add() noexcept { return count_.fetch_add(1, std::memory_order_relaxed) + 1; }

    // Returns the new count; the caller destroys the object when it is 0.
    std::uint32_t Drop() noexcept { return count_.fetch_sub(1, std::memory_order_acq_rel) - 1; }

  private:
    std::atomic<std::uint32_t> count_{1};
};

}  // namespace localization_manager::host
