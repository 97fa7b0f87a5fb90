#include "localization_manager/host/MallocAllocator.h"
#include "localization_manager/host/ServiceLocator.h"
#include "localization_manager/host/Tracer.h"
#include "ulo/ResultCode.h"

#include <gtest/gtest.h>

#include <cstring>

namespace localization_manager::host {
namespace {

constexpr ulo::ServiceId kUnknownService = 0x12345678u;

TEST(ServiceLocatorTest, HandsOutItsServicesWithAReferenceEach) {
    auto tracer = Tracer::Create([](std::int32_t, std::string_view) {});
    auto services = ServiceLocator::Create(tracer);

    void* out = nullptr;
    ASSERT_EQ(ulo::kResultOk, services->GetService(ulo::ITracer::kServiceId, 0, &out));
    EXPECT_EQ(static_cast<ulo::ITracer*>(tracer.Get()), static_cast<ulo::ITracer*>(out));
    // Ours, the locator's and the one just handed out.
    EXPECT_EQ(4u, tracer->AddRef());
    tracer->Release();
    static_cast<ulo::ITracer*>(out)->Release();

    ASSERT_EQ(ulo::kResultOk, services->GetService(ulo::IAllocator::kServiceId, 0, &out));
    EXPECT_EQ(static_cast<ulo::IAllocator*>(&MallocAllocator::Instance()),
              static_cast<ulo::IAllocator*>(out));
}

TEST(ServiceLocatorTest, RefusesWhatItDoesNotHave) {
    auto withoutTracer = ServiceLocator::Create(nullptr);
    auto services = ServiceLocator::Create(Tracer::Create());
    const struct {
        ServiceLocator* locator;
        ulo::ServiceId serviceId;
    } cases[] = {
        {services.Get(), kUnknownService},
        {services.Get(), ulo::IObject::kInterfaceId},
        {withoutTracer.Get(), ulo::ITracer::kServiceId},
    };
    for (const auto& testCase : cases) {
        void* out = &out;
        EXPECT_EQ(ulo::kResultNotFound, testCase.locator->GetService(testCase.serviceId, 0, &out))
            << std::hex << testCase.serviceId;
        EXPECT_EQ(nullptr, out);
    }
    EXPECT_EQ(ulo::kResultInvalidArgument,
              services->GetService(ulo::ITracer::kServiceId, 0, nullptr));
}

TEST(MallocAllocatorTest, NullMeansOnlyOutOfMemory) {
    ulo::IAllocator& allocator = MallocAllocator::Instance();
    void* empty = allocator.Allocate(0);
    EXPECT_NE(nullptr, empty);
    allocator.Free(empty);

    auto* block = static_cast<char*>(allocator.Allocate(4));
    ASSERT_NE(nullptr, block);
    std::memcpy(block, "abc", 4);
    block = static_cast<char*>(allocator.Reallocate(block, 1 << 20));
    ASSERT_NE(nullptr, block);
    EXPECT_STREQ("abc", block);
    block = static_cast<char*>(allocator.Reallocate(block, 0));
    EXPECT_NE(nullptr, block);
    allocator.Free(block);
    allocator.Free(nullptr);
}

}  // namespace
}  // namespace localization_manager::host
