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
#include <cstdlib>
#include <new>

#define ULO_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

// After this many failed attempts a waiter sleeps between attempts instead of spinning: the
// holder only constructs a small static object, but it may have been preempted.
constexpr int kSpinAttempts = 4000;

// Which static factories have been constructed: one bit per class.
std::atomic<std::uint32_t> constructedFactories{0};

// One static factory of class T, constructed on first request under its own lock word and
// destroyed when the module is unloaded.
template <class T, std::uint32_t kConstructedBit>
class StaticFactory {
  public:
    using Factory = ulo::AutoObject<ulo::GenericObjectFactory<T>>;

    static ulo::IObjectFactory* Get() {
        Acquire();
        if ((constructedFactories.load(std::memory_order_acquire) & kConstructedBit) == 0) {
            constructedFactories.fetch_or(kConstructedBit, std::memory_order_acq_rel);
            new (&storage_) Factory();
            std::atexit(&Destroy);
        }
        ulo::IObjectFactory* factory = std::launder(reinterpret_cast<Factory*>(&storage_));
        factory->AddRef();
        lockWord_.exchange(0, std::memory_order_release);
        return factory;
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

    static void Destroy() { std::launder(reinterpret_cast<Factory*>(&storage_))->~Factory(); }

    static inline std::atomic<std::int32_t> lockWord_{0};
    alignas(Factory) static inline unsigned char storage_[sizeof(Factory)];
};

}  // namespace

ULO_EXPORT std::int32_t uloGetObjectFactory(ulo::IObject* /*host*/, ulo::ClassId classId,
                                            ulo::IObjectFactory** factory) {
    if (factory == nullptr) {
        return ulo::kResultInvalidArgument;
    }
    switch (classId) {
        case localization_manager::kLocalizationManagerClassId:
            *factory = StaticFactory<localization_manager::LocalizationManager, 1u << 0>::Get();
            return ulo::kResultOk;
        case localization_manager::kCultureConverterClassId:
            *factory = StaticFactory<localization_manager::CultureConverterImpl, 1u << 1>::Get();
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
