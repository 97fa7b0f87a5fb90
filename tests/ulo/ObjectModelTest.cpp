#include "TestSupport/FakeServices.h"
#include "ulo/rtl/objbase.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using LocalizationManager::Testing::FakeServiceLocator;

class ITestInterface : public ulo::IObject {
  public:
    static constexpr ulo::InterfaceId kInterfaceId = 0x1234u;
};

class ISecondInterface : public ulo::IObject {
  public:
    static constexpr ulo::InterfaceId kInterfaceId = 0x5678u;
};

// What the next TestComponent constructor does.
enum class ConstructorOutcome { Succeed, ThrowResultCode, ThrowOther };
ConstructorOutcome nextOutcome = ConstructorOutcome::Succeed;

class TestComponent : public ulo::ObjectRootEx<ulo::StoreServiceStrategy>,
                      public ITestInterface,
                      public ISecondInterface {
  public:
    explicit TestComponent(ulo::IServiceLocator* serviceLocator) : ObjectRootEx(serviceLocator) {
        if (nextOutcome == ConstructorOutcome::ThrowResultCode) {
            throw ulo::ResultCodeException(__FILE__, __LINE__, ulo::kResultNotReady);
        }
        if (nextOutcome == ConstructorOutcome::ThrowOther) {
            throw std::runtime_error("constructor failed");
        }
    }

    std::int32_t QueryInterface(ulo::InterfaceId interfaceId, void** out) override {
        return ulo::QueryInterfaceOf<ITestInterface, ISecondInterface>(this, interfaceId, out);
    }
};

using Factory = ulo::AutoObject<ulo::GenericObjectFactory<TestComponent>>;

class ObjectModelTest : public ::testing::Test {
  protected:
    void SetUp() override { nextOutcome = ConstructorOutcome::Succeed; }

    // Whatever happened, every service reference and block went back.
    void ExpectNothingHeld() {
        EXPECT_EQ(0u, locator.references);
        EXPECT_EQ(0u, locator.allocator.references);
        EXPECT_EQ(0u, locator.tracer.references);
        EXPECT_EQ(0, locator.allocator.liveBlocks);
        EXPECT_EQ(0, ulo::ModuleLockCount().load());
    }

    FakeServiceLocator locator;
    Factory factory;
};

TEST_F(ObjectModelTest, ObjectLivesOnHostMemoryAndHoldsTheModuleUntilItsLastRelease) {
    ITestInterface* object = nullptr;
    ASSERT_EQ(ulo::kResultOk, factory.CreateInstance(&locator, ITestInterface::kInterfaceId,
                                                     reinterpret_cast<void**>(&object)));
    EXPECT_EQ(1, locator.allocator.liveBlocks);
    EXPECT_EQ(1, ulo::ModuleLockCount().load());
    EXPECT_EQ(1u, locator.references);
    EXPECT_EQ(1u, locator.allocator.references);
    EXPECT_EQ(1u, locator.tracer.references);

    ISecondInterface* second = nullptr;
    ASSERT_EQ(ulo::kResultOk, object->QueryInterface(ISecondInterface::kInterfaceId,
                                                     reinterpret_cast<void**>(&second)));
    ulo::IObject* base = nullptr;
    ASSERT_EQ(ulo::kResultOk, second->QueryInterface(0, reinterpret_cast<void**>(&base)));
    EXPECT_EQ(static_cast<ulo::IObject*>(object), base) << "id 0 gives the primary interface";
    EXPECT_EQ(2u, base->Release());
    EXPECT_EQ(1u, second->Release());
    EXPECT_EQ(0u, object->Release());
    ExpectNothingHeld();
}

TEST_F(ObjectModelTest, UnknownInterfaceLeavesNothingAlive) {
    void* out = &locator;
    EXPECT_EQ(ulo::kResultInterfaceNotSupported, factory.CreateInstance(&locator, 0x9999u, &out));
    EXPECT_EQ(nullptr, out);
    ExpectNothingHeld();
}

TEST_F(ObjectModelTest, CreationFailuresReturnTheirCodeAndLeaveNothingBehind) {
    struct Case {
        const char* name;
        void (*prepare)(FakeServiceLocator&);
        ConstructorOutcome outcome;
        std::int32_t expected;
    };
    const Case cases[] = {
        {"no allocator service", [](FakeServiceLocator& l) { l.offersAllocator = false; },
         ConstructorOutcome::Succeed, ulo::kResultNotFound},
        {"memory exhausted", [](FakeServiceLocator& l) { l.allocator.exhausted = true; },
         ConstructorOutcome::Succeed, ulo::kResultUnspecifiedError},
        {"no tracer service", [](FakeServiceLocator& l) { l.offersTracer = false; },
         ConstructorOutcome::Succeed, ulo::kResultUnspecifiedError},
        {"constructor throws a result code", [](FakeServiceLocator&) {},
         ConstructorOutcome::ThrowResultCode, ulo::kResultNotReady},
        {"constructor throws another exception", [](FakeServiceLocator&) {},
         ConstructorOutcome::ThrowOther, ulo::kResultUnspecifiedError},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        FakeServiceLocator failing;
        c.prepare(failing);
        nextOutcome = c.outcome;
        void* out = &failing;
        EXPECT_EQ(c.expected, factory.CreateInstance(&failing, ITestInterface::kInterfaceId, &out));
        EXPECT_EQ(nullptr, out);
        EXPECT_EQ(0u, failing.references);
        EXPECT_EQ(0u, failing.allocator.references);
        EXPECT_EQ(0, failing.allocator.liveBlocks);
        EXPECT_EQ(0, ulo::ModuleLockCount().load());
    }
    void* out = &locator;
    EXPECT_EQ(ulo::kResultInvalidArgument, factory.CreateInstance(nullptr, 0, &out));
    EXPECT_EQ(nullptr, out);
}

TEST_F(ObjectModelTest, MissingServicesAreReportedFromTheFrameworkHeader) {
    locator.offersAllocator = false;
    locator.offersTracer = false;
    try {
        ulo::GetAllocator(&locator);
        ADD_FAILURE() << "GetAllocator succeeded";
    } catch (const ulo::RuntimeError& error) {
        EXPECT_EQ(u"GetAllocator error: can't get interface", error.GetDescription().ToStdString());
        EXPECT_STREQ("include/ulo/rtl/objbase", error.SourceFile());
        EXPECT_EQ(126, error.Line());
        EXPECT_STREQ("RuntimeError", error.what());
    }
    try {
        ulo::GetTracer(&locator);
        ADD_FAILURE() << "GetTracer succeeded";
    } catch (const ulo::RuntimeError& error) {
        EXPECT_EQ(u"GetTracer error: can't get interface", error.GetDescription().ToStdString());
        EXPECT_EQ(134, error.Line());
    }
}

TEST_F(ObjectModelTest, StaticFactoryIsNotCounted) {
    EXPECT_EQ(0u, factory.AddRef());
    EXPECT_EQ(0u, factory.Release());
    ulo::IObjectFactory* asFactory = nullptr;
    EXPECT_EQ(ulo::kResultOk, factory.QueryInterface(ulo::IObjectFactory::kInterfaceId,
                                                     reinterpret_cast<void**>(&asFactory)));
    EXPECT_EQ(static_cast<ulo::IObjectFactory*>(&factory), asFactory);
    void* out = &factory;
    EXPECT_EQ(ulo::kResultInterfaceNotSupported, factory.QueryInterface(0x42u, &out));
    EXPECT_EQ(nullptr, out);
}

}  // namespace
