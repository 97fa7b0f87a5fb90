#pragma once

#include <cstddef>

namespace LocalizationManager::Memory {

// Asks that the whole 2 MiB pages inside [start, start + bytes) be backed by huge pages where
// the system offers them on request: filling a large block that was reserved but not yet
// written then costs a page fault per 2 MiB instead of one per 4 KiB, and releasing it as few
// unmappings. Only advice: where it is refused, or no whole huge page fits, nothing changes.
void AdviseHugePages(void* start, std::size_t bytes) noexcept;

}  // namespace LocalizationManager::Memory
