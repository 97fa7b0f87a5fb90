#pragma once

#include "localization_manager/host/HostObject.h"
#include "localization_manager/host/InterfacePtr.h"
#include "ulo/IServiceLocator.h"

#include <cstdint>

namespace localization_manager::host {

// The service locator a host passes to CreateInstance. It answers the allocator and the tracer
// service, each with a reference of its own, and refuses every other service with 0x8000004C
// ("Not found"). Components keep what they get for their whole life, so the services must be
// objects that live until their last reference goes. It never changes after Create: any
// thread may use it, several at once.
class ServiceLocator final : public CountedObject<ulo::IServiceLocator> {
  public:
    // `tracer` may be null: the tracer service is then refused with "Not found", and the
    // localization manager's components, which keep the tracer for their error lines, refuse
    // to be created. A null `allocator` means the process-wide MallocAllocator.
    static InterfacePtr<ServiceLocator> Create(InterfacePtr<ulo::ITracer> tracer,
                                               InterfacePtr<ulo::IAllocator> allocator = nullptr);

    // 0x80000046 ("Invalid argument") for a null `out`.
    std::int32_t GetService(ulo::ServiceId serviceId, std::uint32_t reserved, void** out) override;

  private:
    ServiceLocator(InterfacePtr<ulo::ITracer> tracer, InterfacePtr<ulo::IAllocator> allocator);
    ~ServiceLocator() override;

    const InterfacePtr<ulo::ITracer> tracer_;
    const InterfacePtr<ulo::IAllocator> allocator_;
};

}  // namespace localization_manager::host
