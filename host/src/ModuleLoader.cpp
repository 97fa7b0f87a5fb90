#include "localization_manager/host/ModuleLoader.h"

#include <cstddef>
#include <dlfcn.h>
#include <utility>

namespace localization_manager::host {

namespace {

// dlerror() is null when the failure left no message (a symbol whose value is null).
std::string LinkerError() {
    const char* message = ::dlerror();
    return message != nullptr ? message : "no message from the dynamic linker";
}

// dlsym answers void*; POSIX guarantees that it converts to a function pointer.
template <class Function>
Function FunctionFrom(void* symbol) {
    return reinterpret_cast<Function>(symbol);
}

}  // namespace

ModuleLoader::~ModuleLoader() {
    Unload();
}

ModuleLoader::ModuleLoader(ModuleLoader&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)),
      getObjectFactory_(std::exchange(other.getObjectFactory_, nullptr)),
      canUnloadModule_(std::exchange(other.canUnloadModule_, nullptr)),
      path_(std::move(other.path_)),
      error_(std::move(other.error_)) {}

ModuleLoader& ModuleLoader::operator=(ModuleLoader&& other) noexcept {
    if (this != &other) {
        Unload();
        handle_ = std::exchange(other.handle_, nullptr);
        getObjectFactory_ = std::exchange(other.getObjectFactory_, nullptr);
        canUnloadModule_ = std::exchange(other.canUnloadModule_, nullptr);
        path_ = std::move(other.path_);
        error_ = std::move(other.error_);
    }
    return *this;
}

bool ModuleLoader::Load(const std::string& path) {
    if (handle_ != nullptr) {
        error_ = "cannot load module '" + path + "': module '" + path_ + "' is already loaded";
        return false;
    }
    if (path.empty()) {
        error_ = "cannot load module: no path given";
        return false;
    }
    ::dlerror();
    void* handle = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        error_ = "cannot load module '" + path + "': " + LinkerError();
        return false;
    }
    const char* const names[] = {ulo::kGetObjectFactorySymbol, ulo::kCanUnloadModuleSymbol};
    void* symbols[2] = {};
    for (std::size_t index = 0; index < 2; ++index) {
        ::dlerror();
        symbols[index] = ::dlsym(handle, names[index]);
        if (symbols[index] == nullptr) {
            error_ = "module '" + path + "' does not export " + names[index] + ": " + LinkerError();
            ::dlclose(handle);
            return false;
        }
    }
    handle_ = handle;
    getObjectFactory_ = FunctionFrom<ulo::GetObjectFactoryFunction>(symbols[0]);
    canUnloadModule_ = FunctionFrom<ulo::CanUnloadModuleFunction>(symbols[1]);
    path_ = path;
    error_.clear();
    return true;
}

std::int32_t ModuleLoader::GetObjectFactory(ulo::ClassId classId,
                                            InterfacePtr<ulo::IObjectFactory>& factory) const {
    factory.Reset();
    if (handle_ == nullptr) {
        return ulo::kResultNotInitialized;
    }
    const std::int32_t code = getObjectFactory_(nullptr, classId, factory.Put());
    // A success without a factory would only move the crash to the caller.
    if (ulo::Succeeded(code) && !factory) {
        return ulo::kResultUnexpected;
    }
    return code;
}

bool ModuleLoader::CanUnload() const {
    return handle_ == nullptr || canUnloadModule_() == 0;
}

bool ModuleLoader::Unload() {
    if (handle_ == nullptr) {
        return true;
    }
    if (!CanUnload()) {
        error_ = "module '" + path_ + "' still has live objects; it stays loaded";
        return false;
    }
    ::dlerror();
    if (::dlclose(handle_) != 0) {
        error_ = "cannot unload module '" + path_ + "': " + LinkerError();
        // The handle is no longer usable either way.
        Reset();
        return false;
    }
    Reset();
    error_.clear();
    return true;
}

void ModuleLoader::Reset() noexcept {
    handle_ = nullptr;
    getObjectFactory_ = nullptr;
    canUnloadModule_ = nullptr;
}

}  // namespace localization_manager::host
