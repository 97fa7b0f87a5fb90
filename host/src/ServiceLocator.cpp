#include "localization_manager/host/ServiceLocator.h"

#include "localization_manager/host/MallocAllocator.h"
#include "ulo/ResultCode.h"

#include <utility>

namespace localization_manager::host {

namespace {

template <class Service>
std::int32_t HandOut(Service* service, void** out) {
    if (service == nullptr) {
        *out = nullptr;
        return ulo::kResultNotFound;
    }
    service->AddRef();
    *out = service;
    return ulo::kResultOk;
}

}  // namespace

InterfacePtr<ServiceLocator> ServiceLocator::Create(InterfacePtr<ulo::ITracer> tracer,
                                                    InterfacePtr<ulo::IAllocator> allocator) {
    if (!allocator) {
        allocator = InterfacePtr<ulo::IAllocator>::Share(&MallocAllocator::Instance());
    }
    return InterfacePtr<ServiceLocator>::Adopt(
        new ServiceLocator(std::move(tracer), std::move(allocator)));
}

ServiceLocator::ServiceLocator(InterfacePtr<ulo::ITracer> tracer,
                               InterfacePtr<ulo::IAllocator> allocator)
    : tracer_(std::move(tracer)), allocator_(std::move(allocator)) {}

ServiceLocator::~ServiceLocator() = default;

std::int32_t ServiceLocator::GetService(ulo::ServiceId serviceId, std::uint32_t /*reserved*/,
                                        void** out) {
    if (out == nullptr) {
        return ulo::kResultInvalidArgument;
    }
    switch (serviceId) {
        case ulo::IAllocator::kServiceId:
            return HandOut(allocator_.Get(), out);
        case ulo::ITracer::kServiceId:
            return HandOut(tracer_.Get(), out);
        default:
            *out = nullptr;
            return ulo::kResultNotFound;
    }
}

}  // namespace localization_manager::host
