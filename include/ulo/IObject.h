#pragma once

// The base of every framework interface: reference counting and the query for another
// interface of the same object. Interfaces are abstract classes whose virtual functions stand
// in a fixed slot order, so a host and a module built apart agree on them; nothing but
// fixed-width integers, framework strings and interface pointers crosses them.

#include <cstdint>

namespace ulo {

using InterfaceId = std::uint32_t;
using ClassId = std::uint32_t;
using ServiceId = std::uint32_t;

class IObject {
  public:
    static constexpr InterfaceId kInterfaceId = 0x00000000u;

    // Slot 0: takes one reference; returns the new count (static objects return 0).
    virtual std::uint32_t AddRef() = 0;
    // Slot 1: drops one reference, destroying the object at zero; returns the new count.
    virtual std::uint32_t Release() = 0;
    // Slot 2: stores the object's interface `interfaceId` in `*out` with one reference and
    // returns 0, or stores null and returns 0x80000001 ("Interface not supported").
    virtual std::int32_t QueryInterface(InterfaceId interfaceId, void** out) = 0;

  protected:
    // Objects are destroyed by their last Release, never through an interface pointer.
    ~IObject() = default;
};

}  // namespace ulo
