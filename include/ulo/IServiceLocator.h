#pragma once

// The host's service locator and the two services a component keeps for its whole life:
// the allocator its memory comes from and the tracer that receives its error lines. The host
// implements all three; the module only calls them.

#include "ulo/IObject.h"

#include <cstddef>
#include <cstdint>

namespace ulo {

class IServiceLocator : public IObject {
  public:
    // Slot 3: stores service `serviceId` in `*out` with one reference and returns 0, or stores
    // null and returns a failure code. `*out` is a pointer of the service's own interface type
    // (IAllocator* for IAllocator::kServiceId, ITracer* for ITracer::kServiceId). `reserved`
    // is 0.
    virtual std::int32_t GetService(ServiceId serviceId, std::uint32_t reserved, void** out) = 0;

  protected:
    ~IServiceLocator() = default;
};

// Memory for component objects. Blocks are aligned for any fundamental type.
class IAllocator : public IObject {
  public:
    static constexpr ServiceId kServiceId = 0x9CCA5603u;

    // Slot 3: a block of `bytes` bytes, or null when memory is exhausted.
    virtual void* Allocate(std::size_t bytes) = 0;
    // Slot 4: resizes a block as realloc does; null when memory is exhausted (the block stays).
    virtual void* Reallocate(void* block, std::size_t bytes) = 0;
    // Slot 5: frees a block from Allocate or Reallocate; null is ignored.
    virtual void Free(void* block) = 0;

  protected:
    ~IAllocator() = default;
};

// One line of text being written to the tracer; obtained from ITracer::BeginRecord and valid
// until it is handed back to CommitRecord or DiscardRecord. The record grows as text is
// appended: a line is never truncated, whatever the size it was requested with.
class ITraceRecord {
  public:
    // Slot 0: appends `length` bytes of narrow text; returns 0, or 0x80000041 ("Out of
    // memory") and keeps the text appended so far.
    virtual std::int32_t Append(const char* text, std::size_t length) = 0;

  protected:
    ~ITraceRecord() = default;
};

// Error and diagnostic lines. Error lines use level 300.
class ITracer : public IObject {
  public:
    static constexpr ServiceId kServiceId = 0x6EF3329Bu;
    static constexpr std::int32_t kErrorLevel = 300;

    // Slot 3: a new, empty record for `level` with room for `sizeHint` bytes, in `*record`;
    // returns 0, or 1 ("False") with a null record when the tracer does not record `level`,
    // or a failure code with a null record.
    virtual std::int32_t BeginRecord(std::int32_t level, std::uint32_t sizeHint,
                                     ITraceRecord** record) = 0;
    // Slot 4: writes the record as one line and frees it.
    virtual std::int32_t CommitRecord(ITraceRecord* record) = 0;
    // Slot 5: frees the record without writing it.
    virtual void DiscardRecord(ITraceRecord* record) = 0;

  protected:
    ~ITracer() = default;
};

}  // namespace ulo
