#pragma once

#include "ulo/IObject.h"

#include <cstdint>

namespace ulo {

// A byte stream with a movable position. The streams this module hands out are read-only:
// their write, resize and flush slots return 0x80000042 ("Not supported"). A stream has one
// position: use it from one thread at a time, or give each thread its own stream.
class IIO : public IObject {
  public:
    static constexpr InterfaceId kInterfaceId = 0x0000000Au;

    enum SeekOrigin : std::uint32_t { kFromBeginning = 0, kFromCurrent = 1, kFromEnd = 2 };

    // Slot 3: reads up to `count` bytes; `*bytesRead` is 0 at the end of the stream.
    virtual std::int32_t Read(void* buffer, std::uint32_t count, std::uint32_t* bytesRead) = 0;
    // Slot 4.
    virtual std::int32_t Write(const void* buffer, std::uint32_t count,
                               std::uint32_t* bytesWritten) = 0;
    // Slot 5: moves the position by `offset` from `origin` (any other origin counts from the
    // beginning); stores the new position in `*newPosition` unless it is null.
    virtual std::int32_t Seek(std::uint32_t origin, std::int64_t offset,
                              std::uint64_t* newPosition) = 0;
    // Slot 6.
    virtual std::int32_t GetPosition(std::uint64_t* position) = 0;
    // Slot 7.
    virtual std::int32_t GetSize(std::uint64_t* size) = 0;
    // Slot 8.
    virtual std::int32_t SetSize(std::uint64_t size) = 0;
    // Slot 9.
    virtual std::int32_t Flush() = 0;

  protected:
    ~IIO() = default;
};

}  // namespace ulo
