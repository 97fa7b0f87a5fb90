#pragma once

#include "localization_manager/host/InterfacePtr.h"
#include "ulo/IObject.h"
#include "ulo/IObjectFactory.h"
#include "ulo/IServiceLocator.h"
#include "ulo/ModuleEntry.h"
#include "ulo/ResultCode.h"

#include <cstdint>
#include <string>

namespace localization_manager::host {

// One loaded component module: the shared object and its two entry points. Failures are
// reported through return values and Error(), never by throwing, so a host can show why a
// module is unusable (the dynamic linker's own words) and carry on without it.
//
// Not thread-safe as a whole: load and unload from one thread. Once loaded, GetObjectFactory
// and CreateInstance may be called from any thread.
class ModuleLoader {
  public:
    ModuleLoader() = default;
    // Unload(); a module that still has live objects stays loaded (see Unload).
    ~ModuleLoader();

    ModuleLoader(const ModuleLoader&) = delete;
    ModuleLoader& operator=(const ModuleLoader&) = delete;
    ModuleLoader(ModuleLoader&& other) noexcept;
    ModuleLoader& operator=(ModuleLoader&& other) noexcept;

    // Loads the shared object at `path` with every symbol bound at once (a missing dependency
    // fails here rather than at some later call) and kept local to the module. A path without
    // "/" is searched as the dynamic linker searches libraries. Returns false with Error() set
    // when the file cannot be loaded, lacks an entry point, or a module is already loaded.
    bool Load(const std::string& path);

    bool IsLoaded() const noexcept { return handle_ != nullptr; }
    // The path given to the last successful Load.
    const std::string& Path() const noexcept { return path_; }
    // What went wrong in the last failing Load or Unload.
    const std::string& Error() const noexcept { return error_; }

    // The factory of class `classId`. Returns the module's answer (0x80000043 "Not implemented"
    // for a class it does not have), 0x8000006B ("Not initialized") with nothing loaded, or
    // 0x80000040 ("Unexpected") when the module claims success without a factory.
    std::int32_t GetObjectFactory(ulo::ClassId classId,
                                  InterfacePtr<ulo::IObjectFactory>& factory) const;

    // Creates an object of class `classId` through its factory and asks it for interface T;
    // like GetObjectFactory, a success without an object is 0x80000040 ("Unexpected").
    template <class T>
    std::int32_t CreateInstance(ulo::ClassId classId, ulo::IServiceLocator* serviceLocator,
                                InterfacePtr<T>& object) const {
        object.Reset();
        InterfacePtr<ulo::IObjectFactory> factory;
        const std::int32_t code = GetObjectFactory(classId, factory);
        if (ulo::Failed(code)) {
            return code;
        }
        const std::int32_t created =
            factory->CreateInstance(serviceLocator, T::kInterfaceId, object.PutVoid());
        return ulo::Succeeded(created) && !object ? ulo::kResultUnexpected : created;
    }

    // True when the module says none of its objects is alive (or nothing is loaded).
    bool CanUnload() const;

    // Unloads the module if it allows it. Unmapping code that live objects still run would
    // crash the host later, so while the module reports live objects it stays loaded and
    // Unload returns false with Error() set; release the objects and call again. True when
    // nothing is loaded afterwards.
    bool Unload();

  private:
    void Reset() noexcept;

    void* handle_ = nullptr;
    ulo::GetObjectFactoryFunction getObjectFactory_ = nullptr;
    ulo::CanUnloadModuleFunction canUnloadModule_ = nullptr;
    std::string path_;
    std::string error_;
};

}  // namespace localization_manager::host
