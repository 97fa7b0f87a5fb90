#pragma once

// Pausing the calling thread. Part of the platform layer.

#include <chrono>
#include <cstdint>
#include <thread>

namespace ulo {

// Suspends the calling thread for at least `milliseconds` (the system may wake it later). 0 only
// offers the rest of the time slice to other threads, as spin loops expect.
inline void SleepMilliseconds(std::uint32_t milliseconds) {
    if (milliseconds == 0) {
        std::this_thread::yield();
        return;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace ulo
