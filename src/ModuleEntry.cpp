// The module's two exported functions: the class factories by class id, and whether the
// module may be unloaded.

#include "ulo/ModuleEntry.h"

#include "CultureConverterImpl.h"
#include "LocalizationManager.h"
#include "localization_manager/ClassIds.h"
#include "ulo/ResultCode.h"
#include "ulo/rtl/Sleep.h"
#include "ulo/rtl/objbase.h"

#include <atomic>
#include <cstdint>
#include <new>

#define ULO_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

// After this many failed attempts a waiter sleeps between attempts instead of spinning: the
// holder only constructs a small static object, but it may have been preempted.
constexpr int kSpinAttempts = 4000;

// Which static factories have been constructed: one bit per class.
std::atomic<std::uint32_t> constructedFactories{0};

// One static factory of class T, constructed on first request under its own lock word.
template <class T, std::uint32_t kConstructedBit>
class StaticFactory {
  public:
    using Factory = ulo::AutoObject<ulo::GenericObjectFactory<T>>;

    static ulo::IObjectFactory* Get() {
        Acquire();
        if ((constructedFactories.load(std::memory_order_acquire) & kConstructedBit) == 0) {
            new (&storage_) Factory();
            constructedFactories.fetch_or(kConstructedBit, std::memory_order_acq_rel);
        }
        ulo::IObjectFactory* factory = std::launder(reinterpret_cast<Factory*>(&storage_));
        factory->AddRef();
        lockWord_.exchange(0, std::memory_order_release);
        return factory;
    }

    // Called once, when the module is unloaded.
    static void DestroyIfConstructed() {
        if ((constructedFactories.load(std::memory_order_acquire) & kConstructedBit) != 0) {
            std::launder(reinterpret_cast<Factory*>(&storage_))->~Factory();
        }
    }

  private:
    static void Acquire() {
        int attempts = 0;
        while (lockWord_.exchange(1, std::memory_order_acquire) != 0) {
            if (++attempts >= kSpinAttempts) {
                ulo::SleepMilliseconds(1);
            }
        }
    }

    static inline std::atomic<std::int32_t> lockWord_{0};
    alignas(Factory) static inline unsigned char storage_[sizeof(Factory)];
};

using ManagerFactory = StaticFactory<localization_manager::LocalizationManager, 1u << 0>;
using CultureConverterFactory = StaticFactory<localization_manager::CultureConverterImpl, 1u << 1>;

// Destroys the factories constructed so far when the module is unloaded. A static object's
// destructor is tied to the module that defines it; a handler given to atexit may be tied to
// the whole process instead (sanitizer runtimes replace atexit), and would then run after the
// module's code is gone.
struct FactoryCleanup {
    FactoryCleanup() = default;
    FactoryCleanup(const FactoryCleanup&) = delete;
    FactoryCleanup& operator=(const FactoryCleanup&) = delete;
    ~FactoryCleanup() {
        ManagerFactory::DestroyIfConstructed();
        CultureConverterFactory::DestroyIfConstructed();
    }
} factoryCleanup;

}  // namespace

ULO_EXPORT std::int32_t uloGetObjectFactory(ulo::IObject* /*host*/, ulo::ClassId classId,
                                            ulo::IObjectFactory** factory) {
    if (factory == nullptr) {
        return ulo::kResultInvalidArgument;
    }
    switch (classId) {
        case localization_manager::kLocalizationManagerClassId:
            *factory = ManagerFactory::Get();
            return ulo::kResultOk;
        case localization_manager::kCultureConverterClassId:
            *factory = CultureConverterFactory::Get();
            return ulo::kResultOk;
        default:
            *factory = nullptr;
            return ulo::kResultNotImplemented;
    }
}

ULO_EXPORT std::int32_t uloCanUnloadModule() {
    return ulo::ModuleLockCount().load(std::memory_order_acquire) == 0 ? ulo::kResultOk
                                                                       : ulo::kResultFalse;
}
