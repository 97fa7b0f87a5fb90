#pragma once

// The IObject part of the objects a host hands to components (services, resolvers): reference
// counting and QueryInterface, written once. The host's interfaces have no interface id of
// their own (components get them from the service locator or as arguments), so the one id a
// host object answers is IObject's.

#include "localization_manager/host/ReferenceCount.h"
#include "ulo/IObject.h"
#include "ulo/ResultCode.h"

#include <cstdint>

namespace localization_manager::host {

// Interface with its QueryInterface: IObject gives the object with one reference added; any
// other id stores null and returns 0x80000001 ("Interface not supported"); a null `out` returns
// 0x80000046 ("Invalid argument").
template <class Interface>
class HostObject : public Interface {
  public:
    std::int32_t QueryInterface(ulo::InterfaceId interfaceId, void** out) final {
        if (out == nullptr) {
            return ulo::kResultInvalidArgument;
        }
        if (interfaceId != ulo::IObject::kInterfaceId) {
            *out = nullptr;
            return ulo::kResultInterfaceNotSupported;
        }
        this->AddRef();
        *out = static_cast<ulo::IObject*>(this);
        return ulo::kResultOk;
    }

  protected:
    HostObject() = default;
    ~HostObject() = default;
};

// A heap object destroyed by its last Release. Create it with `new` and hand the creator's
// reference to InterfacePtr::Adopt; keep the derived class's destructor private, so that
// nothing deletes it while a component still holds a reference. The count is atomic: the module
// may release its references on any thread.
template <class Interface>
class CountedObject : public HostObject<Interface> {
  public:
    CountedObject(const CountedObject&) = delete;
    CountedObject& operator=(const CountedObject&) = delete;

    std::uint32_t AddRef() final { return references_.Add(); }

    std::uint32_t Release() final {
        const std::uint32_t count = references_.Drop();
        if (count == 0) {
            delete this;
        }
        return count;
    }

  protected:
    CountedObject() = default;
    // Virtual, so that the last Release reaches the derived class's destructor. The slot comes
    // after those of Interface, which components see unchanged.
    virtual ~CountedObject() = default;

  private:
    ReferenceCount references_;
};

// An object that lives for the whole process and does not count references: AddRef and
// Release return 0, as for every static framework object.
template <class Interface>
class StaticObject : public HostObject<Interface> {
  public:
    std::uint32_t AddRef() final { return 0; }
    std::uint32_t Release() final { return 0; }

  protected:
    StaticObject() = default;
    ~StaticObject() = default;
};

}  // namespace localization_manager::host
