// The module as a host meets it before any text: its entry points and class factories, the
// interface queries of its objects, when it may be unloaded, unloading and loading it again,
// what the shared object exports, and the culture converter it serves.

#include "ModuleHost.h"
#include "localization_manager/ICultureConverter.h"
#include "ulo/IIO.h"
#include "ulo/ModuleEntry.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <dlfcn.h>
#include <set>
#include <sstream>
#include <string>

namespace localization_manager::e2e {
namespace {

using ModuleTest = ModuleHostTest;

const std::u16string kExamples = host::Utf8ToUtf16(LM_EXAMPLES_DIR "/localization");

// Out-parameters start as this, so that a call that forgets to write one is seen.
template <class T>
T* Untouched() {
    return reinterpret_cast<T*>(static_cast<std::uintptr_t>(0x1));
}

// One of the module's own entry points rather than the loader's wrappers, which clear
// out-parameters first and turn the unload answer into a bool. The fixture keeps the module
// loaded, so the extra reference taken here can go at once.
template <class Function>
Function EntryPoint(const char* name) {
    void* handle = ::dlopen(LM_MODULE_PATH, RTLD_NOW | RTLD_NOLOAD);
    if (handle == nullptr) {
        return nullptr;
    }
    void* symbol = ::dlsym(handle, name);
    ::dlclose(handle);
    return reinterpret_cast<Function>(symbol);
}

TEST_F(ModuleTest, UnknownClassHasNoFactory) {
    const auto getObjectFactory =
        EntryPoint<ulo::GetObjectFactoryFunction>(ulo::kGetObjectFactorySymbol);
    ASSERT_NE(nullptr, getObjectFactory);
    ulo::IObjectFactory* factory = Untouched<ulo::IObjectFactory>();
    EXPECT_EQ(ulo::kResultNotImplemented, getObjectFactory(nullptr, 0x12345678u, &factory));
    EXPECT_EQ(nullptr, factory);
}

TEST_F(ModuleTest, FactoriesAndObjectsAnswerInterfaceQueries) {
    const struct {
        ulo::ClassId classId;
        ulo::InterfaceId primary;
    } classes[] = {
        {kLocalizationManagerClassId, ILocalizationManager::kInterfaceId},
        {kCultureConverterClassId, ICultureConverter::kInterfaceId},
    };
    constexpr ulo::InterfaceId kUnknownInterface = 0x0BADF00Du;
    for (const auto& tested : classes) {
        SCOPED_TRACE(tested.classId);
        InterfacePtr<ulo::IObjectFactory> factory;
        ASSERT_EQ(ulo::kResultOk, module_.GetObjectFactory(tested.classId, factory));
        // Static: references are not counted.
        EXPECT_EQ(0u, factory->AddRef());
        EXPECT_EQ(0u, factory->Release());

        void* object = Untouched<void>();
        EXPECT_EQ(ulo::kResultInterfaceNotSupported,
                  factory->CreateInstance(services_.Get(), kUnknownInterface, &object));
        EXPECT_EQ(nullptr, object);
        // The object made for the refused interface is gone again.
        EXPECT_TRUE(module_.CanUnload());
        object = Untouched<void>();
        EXPECT_TRUE(ulo::Failed(factory->CreateInstance(nullptr, tested.primary, &object)));
        EXPECT_EQ(nullptr, object);

        ASSERT_EQ(ulo::kResultOk,
                  factory->CreateInstance(services_.Get(), tested.primary, &object));
        auto primary = InterfacePtr<ulo::IObject>::Adopt(static_cast<ulo::IObject*>(object));
        InterfacePtr<ulo::IObject> viaBase;
        EXPECT_EQ(ulo::kResultOk,
                  primary->QueryInterface(ulo::IObject::kInterfaceId, viaBase.PutVoid()));
        EXPECT_EQ(primary.Get(), viaBase.Get());
        void* unknown = Untouched<void>();
        EXPECT_EQ(ulo::kResultInterfaceNotSupported,
                  primary->QueryInterface(kUnknownInterface, &unknown));
        EXPECT_EQ(nullptr, unknown);
    }
}

TEST_F(ModuleTest, StaysLoadedWhileAnyOfItsObjectsLives) {
    const auto canUnloadModule =
        EntryPoint<ulo::CanUnloadModuleFunction>(ulo::kCanUnloadModuleSymbol);
    ASSERT_NE(nullptr, canUnloadModule);
    EXPECT_EQ(0, canUnloadModule());
    InterfacePtr<ILocalizationManager> manager = Manager(kExamples);
    ASSERT_TRUE(manager);
    EXPECT_EQ(1, canUnloadModule());
    InterfacePtr<ILocalizer> localizer = Localizer(*manager, "download", MakeCulture(kEnglish));
    ASSERT_TRUE(localizer);
    InterfacePtr<ulo::IIO> stream;
    ASSERT_EQ(ulo::kResultOk, localizer->GetStream(U16("icon.svg"), stream.Put()));

    // Each object keeps the module by itself, whatever made it.
    manager.Reset();
    EXPECT_EQ(1, canUnloadModule());
    localizer.Reset();
    EXPECT_EQ(1, canUnloadModule());
    EXPECT_FALSE(module_.Unload());
    EXPECT_TRUE(module_.IsLoaded());
    stream.Reset();
    EXPECT_EQ(0, canUnloadModule());
}

TEST_F(ModuleTest, UnloadsAndWorksAgainAfterLoadingAgain) {
    for (int load = 0; load < 2; ++load) {
        SCOPED_TRACE(load);
        {
            InterfacePtr<ILocalizationManager> manager = Manager(kExamples);
            ASSERT_TRUE(manager);
            InterfacePtr<ILocalizer> localizer =
                Localizer(*manager, "download", MakeCulture(kEnglish));
            ASSERT_TRUE(localizer);
            EXPECT_EQ(Ok("Download – File Courier"), GetText(*localizer, "windowTitle"));
        }
        ASSERT_TRUE(module_.Unload()) << module_.Error();
        // Nothing else holds it, so it is really gone, and its statics with it.
        void* stillLoaded = ::dlopen(LM_MODULE_PATH, RTLD_NOW | RTLD_NOLOAD);
        EXPECT_EQ(nullptr, stillLoaded);
        if (stillLoaded != nullptr) {
            ::dlclose(stillLoaded);
        }
        ASSERT_TRUE(module_.Load(LM_MODULE_PATH)) << module_.Error();
    }
}

TEST_F(ModuleTest, ExportsOnlyItsTwoEntryPoints) {
    std::FILE* pipe = ::popen("nm -D --defined-only '" LM_MODULE_PATH "'", "r");
    ASSERT_NE(nullptr, pipe);
    std::set<std::string> names;
    char line[1024];
    while (std::fgets(line, sizeof line, pipe) != nullptr) {
        std::istringstream fields(line);
        std::string address, type, name;
        if (fields >> address >> type >> name) {
            names.insert(name);
        }
    }
    ASSERT_EQ(0, ::pclose(pipe));
    EXPECT_EQ((std::set<std::string>{ulo::kCanUnloadModuleSymbol, ulo::kGetObjectFactorySymbol}),
              names);
}

TEST_F(ModuleTest, CultureConverterReadsNamesAsPeopleWriteThem) {
    InterfacePtr<ICultureConverter> converter;
    ASSERT_EQ(ulo::kResultOk,
              module_.CreateInstance(kCultureConverterClassId, services_.Get(), converter));
    const struct {
        const char* name;
        std::int32_t code;
        Culture culture;
    } cases[] = {
        {"EN-US", ulo::kResultOk, MakeCulture(kEnglish, "US")},
        // A grouped name.
        {"anz", ulo::kResultOk, MakeCulture(kEnglish, "au")},
        // No entry: the record stays as it was.
        {"english", ulo::kResultUnspecifiedError, MakeCulture(99, "kept", "too")},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        Culture culture = MakeCulture(99, "kept", "too");
        EXPECT_EQ(testCase.code, converter->ConvertCultureName(testCase.name, &culture));
        EXPECT_EQ(testCase.culture.languageId, culture.languageId);
        EXPECT_EQ(testCase.culture.firstSubtag.ToStdString(), culture.firstSubtag.ToStdString());
        EXPECT_EQ(testCase.culture.secondSubtag.ToStdString(), culture.secondSubtag.ToStdString());
    }
    EXPECT_EQ(ulo::kResultInvalidArgument, converter->ConvertCultureName("en", nullptr));
    EXPECT_TRUE(TakeLines().empty());
}

}  // namespace
}  // namespace localization_manager::e2e
