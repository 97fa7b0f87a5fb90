#pragma once

// Mutual exclusion for the components' shared state (the manager's culture cache, a common
// dictionary under construction). Part of the platform layer.

#include <mutex>

namespace ulo {

// A lock that the thread holding it may take again: every Enter (and every successful TryEnter)
// needs its own Leave, by the same thread. Neither copyable nor movable: others refer to it
// while it lives. Also meets the standard Lockable requirements (lock, unlock, try_lock), so
// std::lock_guard and std::unique_lock work with it.
class CriticalSection {
  public:
    CriticalSection() = default;
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;

    // Waits until the lock is free or already held by this thread. Throws std::system_error
    // only when the system cannot lock at all.
    void Enter() { mutex_.lock(); }

    // Takes the lock when that needs no wait; returns whether it did.
    bool TryEnter() noexcept { return mutex_.try_lock(); }

    // Releases one Enter of this thread.
    void Leave() noexcept { mutex_.unlock(); }

    void lock() { Enter(); }
    bool try_lock() noexcept { return TryEnter(); }
    void unlock() noexcept { Leave(); }

  private:
    std::recursive_mutex mutex_;
};

// Holds a CriticalSection for its own lifetime: enters it on construction, leaves it on
// destruction. The section must outlive the lock.
class CriticalSectionLock {
  public:
    explicit CriticalSectionLock(CriticalSection& section) : section_(section) { section_.Enter(); }
    ~CriticalSectionLock() { section_.Leave(); }

    CriticalSectionLock(const CriticalSectionLock&) = delete;
    CriticalSectionLock& operator=(const CriticalSectionLock&) = delete;

  private:
    CriticalSection& section_;
};

}  // namespace ulo
