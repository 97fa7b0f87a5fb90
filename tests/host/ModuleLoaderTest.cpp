#include "localization_manager/host/ModuleLoader.h"
#include "localization_manager/host/ServiceLocator.h"
#include "localization_manager/host/Tracer.h"
#include "ulo/ResultCode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace localization_manager::host {
namespace {

using ::testing::HasSubstr;

constexpr ulo::ClassId kCountedClassId = 1;

TEST(ModuleLoaderTest, FilesThatAreNoModuleGiveTheReason) {
    const std::string notElf = ::testing::TempDir() + "lm-host-not-a-module.so";
    if (FILE* file = std::fopen(notElf.c_str(), "w")) {
        std::fputs("plain text\n", file);
        std::fclose(file);
    }
    const struct {
        std::string path;
        std::vector<std::string> reasons;
    } cases[] = {
        {"/nonexistent/localization_manager.so",
         {"'/nonexistent/localization_manager.so'", "No such file or directory"}},
        {notElf, {notElf}},
        {LM_EMPTY_MODULE, {"does not export uloGetObjectFactory", LM_EMPTY_MODULE}},
        {"", {"no path given"}},
    };
    for (const auto& testCase : cases) {
        ModuleLoader loader;
        EXPECT_FALSE(loader.Load(testCase.path));
        EXPECT_FALSE(loader.IsLoaded());
        for (const std::string& reason : testCase.reasons) {
            EXPECT_THAT(loader.Error(), HasSubstr(reason));
        }
        InterfacePtr<ulo::IObjectFactory> factory;
        EXPECT_EQ(ulo::kResultNotInitialized, loader.GetObjectFactory(kCountedClassId, factory));
        EXPECT_TRUE(loader.Unload());
    }
    std::remove(notElf.c_str());
}

TEST(ModuleLoaderTest, CreatesObjectsWithTheHostsServices) {
    std::vector<std::string> lines;
    auto services = ServiceLocator::Create(Tracer::Create(
        [&lines](std::int32_t, std::string_view line) { lines.emplace_back(line); }));
    ModuleLoader loader;
    ASSERT_TRUE(loader.Load(LM_FAKE_MODULE)) << loader.Error();
    EXPECT_EQ(LM_FAKE_MODULE, loader.Path());

    InterfacePtr<ulo::IObject> object;
    ASSERT_EQ(ulo::kResultOk, loader.CreateInstance(kCountedClassId, services.Get(), object));
    EXPECT_TRUE(object);
    EXPECT_THAT(lines, ::testing::ElementsAre("fake module: object created"));

    InterfacePtr<ulo::IObjectFactory> factory;
    EXPECT_EQ(ulo::kResultNotImplemented, loader.GetObjectFactory(kCountedClassId + 1, factory));
    EXPECT_FALSE(factory);

    ModuleLoader second;
    EXPECT_TRUE(second.Load(LM_FAKE_MODULE));
    EXPECT_FALSE(second.Load(LM_FAKE_MODULE));
    EXPECT_THAT(second.Error(), HasSubstr("already loaded"));
}

TEST(ModuleLoaderTest, StaysLoadedWhileItsObjectsLive) {
    auto services = ServiceLocator::Create(nullptr);
    ModuleLoader loader;
    ASSERT_TRUE(loader.Load(LM_FAKE_MODULE)) << loader.Error();
    InterfacePtr<ulo::IObject> object;
    ASSERT_EQ(ulo::kResultOk, loader.CreateInstance(kCountedClassId, services.Get(), object));

    EXPECT_FALSE(loader.CanUnload());
    EXPECT_FALSE(loader.Unload());
    EXPECT_TRUE(loader.IsLoaded());
    EXPECT_THAT(loader.Error(), HasSubstr("still has live objects"));
    // The object's code is still mapped: using it must work.
    EXPECT_EQ(2u, object->AddRef());
    object->Release();

    // A moved loader carries the module along.
    ModuleLoader moved = std::move(loader);
    EXPECT_FALSE(loader.IsLoaded());
    object.Reset();
    EXPECT_TRUE(moved.Unload()) << moved.Error();
    EXPECT_FALSE(moved.IsLoaded());
}

}  // namespace
}  // namespace localization_manager::host
