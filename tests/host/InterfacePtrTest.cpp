#include "localization_manager/host/InterfacePtr.h"
#include "ulo/IObject.h"
#include "ulo/ResultCode.h"

#include <gtest/gtest.h>

#include <utility>

namespace localization_manager::host {
namespace {

// Counts references without ever deleting itself, so a test can read the count at the end.
class Counted final : public ulo::IObject {
  public:
    static constexpr ulo::InterfaceId kInterfaceId = 0x42u;

    std::uint32_t AddRef() override { return ++references; }
    std::uint32_t Release() override { return --references; }
    std::int32_t QueryInterface(ulo::InterfaceId interfaceId, void** out) override {
        if (interfaceId != kInterfaceId && interfaceId != ulo::IObject::kInterfaceId) {
            *out = nullptr;
            return ulo::kResultInterfaceNotSupported;
        }
        AddRef();
        *out = this;
        return ulo::kResultOk;
    }

    std::uint32_t references = 1;
};

TEST(InterfacePtrTest, HoldsExactlyTheReferencesItOwns) {
    Counted object;
    {
        auto owner = InterfacePtr<Counted>::Adopt(&object);
        EXPECT_EQ(1u, object.references);
        InterfacePtr<Counted> copy = owner;
        EXPECT_EQ(2u, object.references);
        InterfacePtr<Counted> moved = std::move(copy);
        EXPECT_EQ(2u, object.references);
        EXPECT_FALSE(copy);
        InterfacePtr<ulo::IObject> base = moved;
        EXPECT_EQ(3u, object.references);
        moved = nullptr;
        EXPECT_EQ(2u, object.references);
        base = base;
        EXPECT_EQ(2u, object.references);
        auto shared = InterfacePtr<Counted>::Share(&object);
        EXPECT_EQ(3u, object.references);
    }
    EXPECT_EQ(0u, object.references);
}

TEST(InterfacePtrTest, OutParametersReleaseTheOldReferenceAndKeepTheNew) {
    Counted first;
    Counted second;
    auto pointer = InterfacePtr<Counted>::Adopt(&first);

    // As a factory or QueryInterface fills a void** out-parameter.
    ASSERT_EQ(ulo::kResultOk, second.QueryInterface(Counted::kInterfaceId, pointer.PutVoid()));
    EXPECT_EQ(0u, first.references);
    EXPECT_EQ(&second, pointer.Get());
    EXPECT_EQ(2u, second.references);

    *pointer.Put() = &first;
    first.references = 1;
    EXPECT_EQ(1u, second.references);

    InterfacePtr<Counted> queried;
    EXPECT_EQ(ulo::kResultOk, pointer.QueryInterface(queried));
    EXPECT_EQ(&first, queried.Get());
    EXPECT_EQ(2u, first.references);

    InterfacePtr<Counted> empty;
    EXPECT_EQ(ulo::kResultInvalidState, empty.QueryInterface(queried));
    EXPECT_FALSE(queried);
    EXPECT_EQ(1u, first.references);

    Counted* detached = pointer.Detach();
    EXPECT_EQ(1u, first.references);
    detached->Release();
}

}  // namespace
}  // namespace localization_manager::host
