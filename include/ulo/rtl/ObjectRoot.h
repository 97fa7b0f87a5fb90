#pragma once

// The root of a component object: what it keeps of the host's services.

#include "ulo/Exception.h"
#include "ulo/IServiceLocator.h"
#include "ulo/ResultCode.h"
#include "ulo/rtl/ObjectPtr.h"

#include <cstdint>

namespace ulo {

// Where GetAllocator and GetTracer report their failures from: the framework's own header.
inline constexpr const char kObjectBaseSourceFile[] = "include/ulo/rtl/objbase";

// Asks `serviceLocator` for the service of type S (by S::kServiceId). Null when the locator is
// null or the service is missing; the locator's code otherwise.
template <class S>
std::int32_t QueryService(IServiceLocator* serviceLocator, ObjectPtr<S>& service) {
    service.Reset();
    if (serviceLocator == nullptr) {
        return kResultInvalidArgument;
    }
    const std::int32_t code =
        serviceLocator->GetService(S::kServiceId, 0, reinterpret_cast<void**>(service.Ref()));
    if (Succeeded(code) && !service) {
        return kResultNotFound;
    }
    return code;
}

// The allocator service of `serviceLocator`; throws RuntimeError when there is none.
inline ObjectPtr<IAllocator> GetAllocator(IServiceLocator* serviceLocator) {
    ObjectPtr<IAllocator> allocator;
    if (Failed(QueryService(serviceLocator, allocator))) {
        throw RuntimeError(kObjectBaseSourceFile, 126, 0,
                           RuntimeError::Message(u"GetAllocator error: can't get interface"));
    }
    return allocator;
}

// The tracer service of `serviceLocator`; throws RuntimeError when there is none.
inline ObjectPtr<ITracer> GetTracer(IServiceLocator* serviceLocator) {
    ObjectPtr<ITracer> tracer;
    if (Failed(QueryService(serviceLocator, tracer))) {
        throw RuntimeError(kObjectBaseSourceFile, 134, 0,
                           RuntimeError::Message(u"GetTracer error: can't get interface"));
    }
    return tracer;
}

// A component keeps the service locator, the allocator its memory came from and the tracer for
// its whole life.
struct StoreServiceStrategy {};
// A static object (a class factory) keeps no service.
struct NoServiceStrategy {};

template <class ServiceStrategy>
class ObjectRootEx;

template <>
class ObjectRootEx<StoreServiceStrategy> {
  public:
    // Takes a reference on `serviceLocator`, then gets the allocator and the tracer; throws
    // RuntimeError when either is missing (what was taken is given back).
    explicit ObjectRootEx(IServiceLocator* serviceLocator)
        : serviceLocator_(serviceLocator),
          allocator_(GetAllocator(serviceLocator)),
          tracer_(GetTracer(serviceLocator)) {}

    ObjectRootEx(const ObjectRootEx&) = delete;
    ObjectRootEx& operator=(const ObjectRootEx&) = delete;

    IServiceLocator* GetServiceLocator() const noexcept { return serviceLocator_.Get(); }
    IAllocator* GetAllocatorService() const noexcept { return allocator_.Get(); }
    ITracer* GetTracerService() const noexcept { return tracer_.Get(); }

  protected:
    ~ObjectRootEx() = default;

  private:
    ObjectPtr<IServiceLocator> serviceLocator_;
    ObjectPtr<IAllocator> allocator_;
    ObjectPtr<ITracer> tracer_;
};

template <>
class ObjectRootEx<NoServiceStrategy> {
  public:
    ObjectRootEx() noexcept = default;
    ObjectRootEx(const ObjectRootEx&) = delete;
    ObjectRootEx& operator=(const ObjectRootEx&) = delete;

  protected:
    ~ObjectRootEx() = default;
};

// QueryInterface for an object whose interfaces are Primary and Others: IObject (id 0) and
// Primary's id give Primary, each of Others' ids gives that interface; one reference is added.
template <class Primary, class... Others, class Object>
std::int32_t QueryInterfaceOf(Object* object, InterfaceId interfaceId, void** out) noexcept {
    if (out == nullptr) {
        return kResultInvalidArgument;
    }
    IObject* found = nullptr;
    if (interfaceId == IObject::kInterfaceId || interfaceId == Primary::kInterfaceId) {
        found = static_cast<Primary*>(object);
        *out = static_cast<Primary*>(object);
    } else {
        // The first of Others with a matching id, if any.
        ((found == nullptr && interfaceId == Others::kInterfaceId
              ? (found = static_cast<Others*>(object), *out = static_cast<Others*>(object), 0)
              : 0),
         ...);
    }
    if (found == nullptr) {
        *out = nullptr;
        return kResultInterfaceNotSupported;
    }
    found->AddRef();
    return kResultOk;
}

}  // namespace ulo
