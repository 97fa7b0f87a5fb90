// The manager through the module: construction from either interface and what its failures
// leave behind, and the common texts that the localizers of one culture share.

#include "File/TempTree.h"
#include "ModuleHost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace localization_manager::e2e {
namespace {

using LocalizationManager::Testing::TempTree;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

using ManagerTest = ModuleHostTest;

const std::u16string kExamples = host::Utf8ToUtf16(LM_EXAMPLES_DIR "/localization");
const std::u16string kExamplesAlternative = host::Utf8ToUtf16(LM_EXAMPLES_DIR "/localization-alt");

TEST_F(ManagerTest, HandsOutNoLocalizerUntilConstructed) {
    InterfacePtr<ILocalizationManager> manager;
    ASSERT_EQ(ulo::kResultOk,
              module_.CreateInstance(kLocalizationManagerClassId, services_.Get(), manager));
    InterfacePtr<IConstruct> construct;
    ASSERT_EQ(ulo::kResultOk, manager.QueryInterface(construct));
    const auto getLocalizer = [&] {
        InterfacePtr<ILocalizer> localizer;
        const std::int32_t code =
            manager->GetLocalizer(U16("download"), MakeCulture(kEnglish), nullptr, localizer.Put());
        EXPECT_FALSE(localizer);
        return code;
    };

    EXPECT_EQ(ulo::kResultInvalidState, getLocalizer());
    EXPECT_EQ(ulo::kResultInvalidState,
              manager->Construct(U16(""), ulo::string16_t(kExamplesAlternative)));
    EXPECT_EQ(ulo::kResultInvalidState, getLocalizer());
    EXPECT_EQ(ulo::kResultInvalidArgument, construct->Construct(nullptr));
    EXPECT_TRUE(TakeLines().empty());

    TempTree tree;
    const std::u16string missingRoot = tree.Path("missing");
    const std::u16string alternative = tree.Path("alt");
    EXPECT_EQ(ulo::kResultUnspecifiedError,
              manager->Construct(ulo::string16_t(missingRoot), ulo::string16_t(alternative)));
    EXPECT_THAT(TakeErrorLine(),
                AllOf(StartsWith("cannot create file resource provider for root='" +
                                 host::Utf16ToUtf8(missingRoot) + "' alternative='" +
                                 host::Utf16ToUtf8(alternative) +
                                 "', error: Contract Violation! Violated argument '"),
                      HasSubstr("root localization URI has to be directory, error: File not "
                                "found")));
    EXPECT_EQ(ulo::kResultInvalidState, getLocalizer());
    EXPECT_TRUE(TakeLines().empty());
}

TEST_F(ManagerTest, ConstructsThroughEitherInterface) {
    for (const bool fromRecord : {false, true}) {
        SCOPED_TRACE(fromRecord ? "IConstruct" : "ILocalizationManager");
        InterfacePtr<ILocalizationManager> manager;
        ASSERT_EQ(ulo::kResultOk,
                  module_.CreateInstance(kLocalizationManagerClassId, services_.Get(), manager));
        if (fromRecord) {
            InterfacePtr<IConstruct> construct;
            ASSERT_EQ(ulo::kResultOk, manager.QueryInterface(construct));
            // Id 0 gives the primary interface, whichever interface is asked.
            InterfacePtr<ulo::IObject> primary;
            EXPECT_EQ(ulo::kResultOk,
                      construct->QueryInterface(ulo::IObject::kInterfaceId, primary.PutVoid()));
            EXPECT_EQ(static_cast<void*>(manager.Get()), static_cast<void*>(primary.Get()));
            const ConstructParams params{ulo::string16_t(kExamples),
                                         ulo::string16_t(kExamplesAlternative)};
            ASSERT_EQ(ulo::kResultOk, construct->Construct(&params));
        } else {
            ASSERT_EQ(ulo::kResultOk, manager->Construct(ulo::string16_t(kExamples),
                                                         ulo::string16_t(kExamplesAlternative)));
        }
        EXPECT_EQ(ulo::kResultInvalidArgument,
                  manager->GetLocalizer(U16("download"), MakeCulture(kGerman), nullptr, nullptr));
        // The alternative directory's text wins over the root's.
        InterfacePtr<ILocalizer> localizer = Localizer(*manager, "download", MakeCulture(kGerman));
        ASSERT_TRUE(localizer);
        EXPECT_EQ(Ok("Herunterladen – File Courier Enterprise"),
                  GetText(*localizer, "windowTitle"));
    }
    EXPECT_TRUE(TakeLines().empty());
}

TEST_F(ManagerTest, LocalizersOfOneCultureShareTheCommonTexts) {
    TempTree tree;
    tree.File("root/en/Locs/common.lt", "word = 'read first'")
        .File("root/en/Locs/page.lt", "text = word");
    InterfacePtr<ILocalizationManager> manager = Manager(tree.Path("root"));
    ASSERT_TRUE(manager);
    InterfacePtr<ILocalizer> first = Localizer(*manager, "page", MakeCulture(kEnglish, "US"));
    ASSERT_TRUE(first);
    ASSERT_EQ(Ok("read first"), GetText(*first, "text"));

    tree.File("root/en/Locs/common.lt", "word = 'changed on disk'");
    // Same culture: the common texts are not read again.
    InterfacePtr<ILocalizer> same = Localizer(*manager, "page", MakeCulture(kEnglish, "US"));
    ASSERT_TRUE(same);
    EXPECT_EQ(Ok("read first"), GetText(*same, "text"));
    // Another second subtag is another culture, although it finds the same file.
    InterfacePtr<ILocalizer> other = Localizer(*manager, "page", MakeCulture(kEnglish, "US", "x"));
    ASSERT_TRUE(other);
    EXPECT_EQ(Ok("changed on disk"), GetText(*other, "text"));
    // Localizers made before keep what they read.
    EXPECT_EQ(Ok("read first"), GetText(*first, "text"));
    EXPECT_EQ(Ok("read first"), GetText(*same, "text"));
    EXPECT_TRUE(TakeLines().empty());
}

}  // namespace
}  // namespace localization_manager::e2e
