#pragma once

#include "ulo/IObject.h"
#include "ulo/IServiceLocator.h"

#include <cstdint>

namespace ulo {

// Creates the objects of one class.
class IObjectFactory : public IObject {
  public:
    static constexpr InterfaceId kInterfaceId = 0x80077A33u;

    // Slot 3: creates an object whose services come from `serviceLocator` and stores its
    // interface `interfaceId` in `*out` with one reference. Returns 0, or a failure code with
    // `*out` null.
    virtual std::int32_t CreateInstance(IServiceLocator* serviceLocator, InterfaceId interfaceId,
                                        void** out) = 0;

  protected:
    ~IObjectFactory() = default;
};

}  // namespace ulo
