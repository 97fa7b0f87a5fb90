#pragma once

// An owning pointer to a framework object: releases its one reference when it lets go.

#include "ulo/IObject.h"
#include "ulo/ResultCode.h"

#include <cstdint>
#include <utility>

namespace ulo {

template <class T>
class ObjectPtr {
  public:
    ObjectPtr() noexcept = default;

    // Takes a new reference on `object` (may be null).
    explicit ObjectPtr(T* object) noexcept : object_(object) {
        if (object_ != nullptr) {
            object_->AddRef();
        }
    }

    ObjectPtr(const ObjectPtr& other) noexcept : ObjectPtr(other.object_) {}
    ObjectPtr(ObjectPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}

    ObjectPtr& operator=(ObjectPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    ~ObjectPtr() { Reset(); }

    // Adopts a reference the caller already holds.
    static ObjectPtr Attach(T* object) noexcept {
        ObjectPtr pointer;
        pointer.object_ = object;
        return pointer;
    }

    // Hands the reference over to the caller.
    T* Detach() noexcept { return std::exchange(object_, nullptr); }

    void Reset() noexcept {
        if (T* object = std::exchange(object_, nullptr)) {
            object->Release();
        }
    }

    // The address to store a new reference in, for out-parameters; releases the one held.
    T** Ref() noexcept {
        Reset();
        return &object_;
    }

    T* Get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

  private:
    T* object_ = nullptr;
};

// Asks `object` for interface I (by I::kInterfaceId) into `out`.
template <class I>
std::int32_t QueryInterfaceTo(IObject* object, ObjectPtr<I>& out) {
    if (object == nullptr) {
        out.Reset();
        return kResultInvalidArgument;
    }
    return object->QueryInterface(I::kInterfaceId, reinterpret_cast<void**>(out.Ref()));
}

}  // namespace ulo
