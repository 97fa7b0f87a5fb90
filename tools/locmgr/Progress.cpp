#include "Progress.h"

#include <cstdio>
#include <unistd.h>

namespace locmgr {

namespace {

constexpr auto kInterval = std::chrono::milliseconds(100);

}  // namespace

Progress::Progress() : enabled_(::isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
    Clear();
}

void Progress::Update(const std::string& phase, std::size_t done, std::size_t total) {
    const auto now = std::chrono::steady_clock::now();
    if (!enabled_ || (shown_ && now - last_ < kInterval)) {
        return;
    }
    last_ = now;
    shown_ = true;
    std::fprintf(stderr, "\r\033[K%s %zu/%zu", phase.c_str(), done, total);
    std::fflush(stderr);
}

std::function<void(const std::string&, std::size_t, std::size_t)> Progress::Callback() {
    if (!enabled_) {
        return {};
    }
    return [this](const std::string& phase, std::size_t done, std::size_t total) {
        Update(phase, done, total);
    };
}

void Progress::Clear() {
    if (shown_) {
        std::fprintf(stderr, "\r\033[K");
        std::fflush(stderr);
        shown_ = false;
    }
}

}  // namespace locmgr
