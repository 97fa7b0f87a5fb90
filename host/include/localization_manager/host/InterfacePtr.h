#pragma once

// Ownership of one reference to a framework interface. Objects that cross the module boundary
// are destroyed by their last Release, so a host that forgets one Release leaks the object and
// keeps the module from unloading; this pointer makes the Release part of leaving scope.
//
// Threads: like std::shared_ptr, one InterfacePtr object is not to be changed from two threads
// at once, while pointers of their own to the same object may be used on any thread (the
// objects count their references atomically).

#include "ulo/ResultCode.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace localization_manager::host {

template <class T>
class InterfacePtr {
  public:
    InterfacePtr() noexcept = default;
    InterfacePtr(std::nullptr_t) noexcept {}

    // Takes over a reference the caller already owns, as out-parameters hand them out.
    static InterfacePtr Adopt(T* pointer) noexcept {
        InterfacePtr result;
        result.pointer_ = pointer;
        return result;
    }

    // Takes a reference of its own; the caller keeps the one it has.
    static InterfacePtr Share(T* pointer) noexcept {
        if (pointer != nullptr) {
            pointer->AddRef();
        }
        return Adopt(pointer);
    }

    InterfacePtr(const InterfacePtr& other) noexcept : InterfacePtr(Share(other.pointer_)) {}
    InterfacePtr(InterfacePtr&& other) noexcept : pointer_(other.Detach()) {}

    // From a pointer to a derived interface or class.
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    InterfacePtr(const InterfacePtr<U>& other) noexcept : InterfacePtr(Share(other.Get())) {}
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    InterfacePtr(InterfacePtr<U>&& other) noexcept : pointer_(other.Detach()) {}

    InterfacePtr& operator=(InterfacePtr other) noexcept {
        swap(other);
        return *this;
    }

    ~InterfacePtr() { Reset(); }

    void Reset() noexcept {
        if (T* old = std::exchange(pointer_, nullptr)) {
            old->Release();
        }
    }

    // Gives up the reference without releasing it.
    [[nodiscard]] T* Detach() noexcept { return std::exchange(pointer_, nullptr); }

    T* Get() const noexcept { return pointer_; }
    T* operator->() const noexcept { return pointer_; }
    T& operator*() const noexcept { return *pointer_; }
    explicit operator bool() const noexcept { return pointer_ != nullptr; }

    void swap(InterfacePtr& other) noexcept { std::swap(pointer_, other.pointer_); }

    // For an out-parameter `T**`: drops the current reference and receives the new one.
    T** Put() noexcept {
        Reset();
        return &pointer_;
    }

    class VoidOut;

    // For an out-parameter `void**` (QueryInterface, CreateInstance, GetService): drops the
    // current reference; the new one is stored when the full expression ends. Going through a
    // real void* keeps the conversion a proper static_cast instead of reinterpreting T**.
    VoidOut PutVoid() noexcept {
        Reset();
        return VoidOut(*this);
    }

    // Asks the object for interface U (by U::kInterfaceId) and stores it in `out`. Returns the
    // object's answer; 0x8000006A ("Invalid state") when this pointer is null.
    template <class U>
    std::int32_t QueryInterface(InterfacePtr<U>& out) const {
        out.Reset();
        if (pointer_ == nullptr) {
            return ulo::kResultInvalidState;
        }
        return pointer_->QueryInterface(U::kInterfaceId, out.PutVoid());
    }

  private:
    T* pointer_ = nullptr;
};

template <class T>
class InterfacePtr<T>::VoidOut {
  public:
    explicit VoidOut(InterfacePtr& owner) noexcept : owner_(owner) {}
    VoidOut(const VoidOut&) = delete;
    VoidOut& operator=(const VoidOut&) = delete;
    ~VoidOut() { owner_.pointer_ = static_cast<T*>(raw_); }

    operator void**() noexcept { return &raw_; }

  private:
    InterfacePtr& owner_;
    void* raw_ = nullptr;
};

}  // namespace localization_manager::host
