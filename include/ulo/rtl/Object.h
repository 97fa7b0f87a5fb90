#pragma once

// The counted heap form of a component, its creation through the host's allocator, and the
// static class factories.

#include "ulo/Exception.h"
#include "ulo/IObjectFactory.h"
#include "ulo/IServiceLocator.h"
#include "ulo/ResultCode.h"
#include "ulo/rtl/ModuleLock.h"
#include "ulo/rtl/ObjectPtr.h"
#include "ulo/rtl/ObjectRoot.h"

#include <atomic>
#include <cstdint>
#include <exception>
#include <new>

namespace ulo {

// Creates counted objects in memory from the allocator service of the given locator.
struct LocatorObjectFactory {
    // Creates an ObjectT constructed with `serviceLocator` into `*out` with one reference.
    // Returns 0; the locator's code when it has no allocator; the code of a ResultCodeException
    // thrown while creating; 0x8000004B ("Unspecified error") for any other exception (memory
    // exhausted, a service missing for the object's root). Nothing is left behind on failure.
    template <class ObjectT>
    static std::int32_t Create(IServiceLocator* serviceLocator, ObjectT** out) noexcept {
        if (out == nullptr) {
            return kResultInvalidArgument;
        }
        *out = nullptr;
        ObjectPtr<IAllocator> allocator;
        if (const std::int32_t code = QueryService(serviceLocator, allocator); Failed(code)) {
            return code;
        }
        void* memory = nullptr;
        try {
            memory = allocator->Allocate(sizeof(ObjectT));
            if (memory == nullptr) {
                throw std::bad_alloc();
            }
            ObjectModuleAutoLock moduleLock;
            ObjectT* object = new (memory) ObjectT(serviceLocator);
            moduleLock.Keep();
            object->refCount_.store(1, std::memory_order_relaxed);
            *out = object;
            return kResultOk;
        } catch (const ResultCodeException& exception) {
            allocator->Free(memory);
            return exception.Code();
        } catch (...) {
            allocator->Free(memory);
            return kResultUnspecifiedError;
        }
    }
};

// Component T in its counted form: T's constructor takes the service locator, and T's root
// (ObjectRootEx<StoreServiceStrategy>) supplies the allocator that the object's memory comes
// from and goes back to.
template <class T, class Factory = LocatorObjectFactory>
class Object final : public T {
  public:
    static std::int32_t CreateInstance(IServiceLocator* serviceLocator, Object** out) noexcept {
        return Factory::Create(serviceLocator, out);
    }

    std::uint32_t AddRef() override {
        return refCount_.fetch_add(1, std::memory_order_relaxed) + 1;
    }

    std::uint32_t Release() override {
        const std::uint32_t count = refCount_.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (count == 0) {
            // The allocator must outlive the object it frees; the object's root holds it only
            // until it is destroyed.
            ObjectPtr<IAllocator> allocator(this->GetAllocatorService());
            this->~Object();
            ModuleLockCount().fetch_sub(1, std::memory_order_acq_rel);
            allocator->Free(this);
        }
        return count;
    }

  private:
    friend Factory;

    explicit Object(IServiceLocator* serviceLocator) : T(serviceLocator) {}
    ~Object() = default;

    std::atomic<std::uint32_t> refCount_{0};
};

// The static, uncounted form of T: lives until the module is unloaded, whatever the references.
template <class T>
class AutoObject final : public T {
  public:
    std::uint32_t AddRef() override { return 0; }
    std::uint32_t Release() override { return 0; }
};

// The class factory of component T.
template <class T>
class GenericObjectFactory : public ObjectRootEx<NoServiceStrategy>, public IObjectFactory {
  public:
    std::int32_t QueryInterface(InterfaceId interfaceId, void** out) override {
        return QueryInterfaceOf<IObjectFactory>(this, interfaceId, out);
    }

    // Creates a T, asks it for `interfaceId` into `*out`, and drops its own reference: an
    // unknown interface id leaves nothing alive.
    std::int32_t CreateInstance(IServiceLocator* serviceLocator, InterfaceId interfaceId,
                                void** out) override {
        if (out == nullptr) {
            return kResultInvalidArgument;
        }
        *out = nullptr;
        ObjectPtr<Object<T>> object;
        if (const std::int32_t code = Object<T>::CreateInstance(serviceLocator, object.Ref());
            Failed(code)) {
            return code;
        }
        return object->QueryInterface(interfaceId, out);
    }
};

}  // namespace ulo
