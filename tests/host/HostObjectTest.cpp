#include "localization_manager/host/HostObject.h"
#include "localization_manager/host/InterfacePtr.h"
#include "ulo/IObject.h"
#include "ulo/ResultCode.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <thread>
#include <vector>

namespace localization_manager::host {
namespace {

constexpr ulo::InterfaceId kUnknownInterface = 0x12345678u;

class Counted final : public CountedObject<ulo::IObject> {
  public:
    static InterfacePtr<Counted> Create(bool& destroyed) {
        return InterfacePtr<Counted>::Adopt(new Counted(destroyed));
    }

  private:
    explicit Counted(bool& destroyed) : destroyed_(destroyed) {}
    ~Counted() override { destroyed_ = true; }

    bool& destroyed_;
};

class Static final : public StaticObject<ulo::IObject> {};

TEST(CountedObjectTest, TheLastReleaseDestroysTheObject) {
    bool destroyed = false;
    auto owner = Counted::Create(destroyed);
    Counted* object = owner.Get();
    EXPECT_EQ(2u, object->AddRef());
    EXPECT_EQ(1u, object->Release());
    owner.Reset();
    EXPECT_TRUE(destroyed);
}

TEST(CountedObjectTest, CountsReferencesTakenOnManyThreads) {
    bool destroyed = false;
    auto owner = Counted::Create(destroyed);
    constexpr int kThreads = 4;
    constexpr int kReferencesPerThread = 50000;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([object = owner.Get()] {
            for (int index = 0; index < kReferencesPerThread; ++index) {
                object->AddRef();
                object->Release();
                object->AddRef();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    // Every thread's references and the owner's, less the one this Release drops.
    EXPECT_EQ(static_cast<std::uint32_t>(kThreads * kReferencesPerThread), owner->Release());
    for (int index = 1; index < kThreads * kReferencesPerThread; ++index) {
        owner->Release();
    }
    EXPECT_FALSE(destroyed);
    owner.Reset();
    EXPECT_TRUE(destroyed);
}

TEST(StaticObjectTest, DoesNotCount) {
    Static object;
    EXPECT_EQ(0u, object.AddRef());
    EXPECT_EQ(0u, object.Release());
}

// Counted and static objects answer QueryInterface alike: IObject, nothing else.
TEST(HostObjectTest, AnswersIObjectOnly) {
    bool destroyed = false;
    auto counted = Counted::Create(destroyed);
    Static uncounted;
    ulo::IObject* const objects[] = {counted.Get(), &uncounted};
    for (ulo::IObject* object : objects) {
        void* out = nullptr;
        ASSERT_EQ(ulo::kResultOk, object->QueryInterface(ulo::IObject::kInterfaceId, &out));
        EXPECT_EQ(object, out);
        out = &out;
        EXPECT_EQ(ulo::kResultInterfaceNotSupported,
                  object->QueryInterface(kUnknownInterface, &out));
        EXPECT_EQ(nullptr, out);
        EXPECT_EQ(ulo::kResultInvalidArgument,
                  object->QueryInterface(ulo::IObject::kInterfaceId, nullptr));
    }
    // The answer carries a reference of its own.
    EXPECT_EQ(1u, counted->Release());
}

}  // namespace
}  // namespace localization_manager::host
