// Localizers through the module: texts of the example tree, each way a text request fails and
// the line it traces, and binary resources with the read-only stream they come in.

#include "File/TempTree.h"
#include "ModuleHost.h"
#include "TestSupport/ExampleTexts.h"
#include "TestSupport/Fixtures.h"
#include "ulo/IIO.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace localization_manager::e2e {
namespace {

using LocalizationManager::Testing::TempTree;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

using LocalizerTest = ModuleHostTest;

const std::string kExamples = LM_EXAMPLES_DIR "/localization";
const std::string kExamplesAlternative = LM_EXAMPLES_DIR "/localization-alt";

// Everything from the stream's position to its end.
std::string ReadRest(ulo::IIO& stream) {
    std::string bytes;
    char buffer[7];  // Small, so that reads end mid-file.
    std::uint32_t read = 0;
    while (stream.Read(buffer, sizeof buffer, &read) == ulo::kResultOk && read != 0) {
        bytes.append(buffer, read);
    }
    return bytes;
}

TEST_F(LocalizerTest, TextsOfTheExampleTree) {
    InterfacePtr<ILocalizationManager> manager =
        Manager(host::Utf8ToUtf16(kExamples), host::Utf8ToUtf16(kExamplesAlternative));
    ASSERT_TRUE(manager);
    const auto params =
        ParamResolver::Create({{"count", LocalizationManager::Testing::kExampleCount},
                               {"folders", LocalizationManager::Testing::kExampleFolders}});
    for (const auto& example : LocalizationManager::Testing::kExampleTexts) {
        InterfacePtr<ILocalizer> localizer =
            Localizer(*manager, example.scope, MakeCulture(example.languageId, example.firstSubtag),
                      params.Get());
        ASSERT_TRUE(localizer);
        EXPECT_EQ(Ok(example.text), GetText(*localizer, example.key))
            << example.cultureName << " " << example.scope << "/" << example.key;
    }
    EXPECT_TRUE(TakeLines().empty());
}

TEST_F(LocalizerTest, MissingScopeFileNamesTheCulture) {
    TempTree tree;
    tree.File("root/neutral/Locs/common.lt", "ok = 'OK'");
    InterfacePtr<ILocalizationManager> manager = Manager(tree.Path("root"));
    ASSERT_TRUE(manager);
    const struct {
        Culture culture;
        const char* text;
    } cultures[] = {
        {MakeCulture(kRussian), "ru-"},
        {MakeCulture(kEnglish, "US"), "en-US"},
        {MakeCulture(kSerbianLatin, "RS", "x"), "sr-Latn-RS-x"},
    };
    for (const auto& culture : cultures) {
        InterfacePtr<ILocalizer> localizer = Localizer(*manager, "absent", culture.culture);
        ASSERT_TRUE(localizer);
        EXPECT_EQ(ulo::kResultUnspecifiedError, GetText(*localizer, "ok").code);
        EXPECT_EQ(std::string("cannot create string localizer for scope absent culture ") +
                      culture.text + ", error: cannot find localization file 'absent.lt'",
                  TakeErrorLine());
    }
}

TEST_F(LocalizerTest, TriesAgainAfterTheCommonFileFailedToParse) {
    TempTree tree;
    tree.File("root/neutral/Locs/common.lt", "ok = ").File("root/neutral/Locs/page.lt", "a = ok");
    InterfacePtr<ILocalizationManager> manager = Manager(tree.Path("root"));
    ASSERT_TRUE(manager);
    InterfacePtr<ILocalizer> localizer = Localizer(*manager, "page", MakeCulture(kEnglish, "US"));
    ASSERT_TRUE(localizer);
    EXPECT_EQ(ulo::kResultUnspecifiedError, GetText(*localizer, "a").code);
    // The whole parse report, over several lines, in one record.
    EXPECT_EQ(
        "cannot create string localizer for scope page culture en-US, error: parse error "
        "at file " +
            host::Utf16ToUtf8(tree.Path("root/neutral/Locs/common.lt")) +
            " line 1 column 5\n\"ok = \"\n     ^- expecting <value> here",
        TakeErrorLine());

    tree.File("root/neutral/Locs/common.lt", "ok = 'OK'");
    EXPECT_EQ(Ok("OK"), GetText(*localizer, "a"));
    EXPECT_TRUE(TakeLines().empty());
}

TEST_F(LocalizerTest, FailedTextRequestsTraceTheirReason) {
    InterfacePtr<ILocalizationManager> manager = Manager(host::Utf8ToUtf16(kExamples));
    ASSERT_TRUE(manager);
    const auto counting = ParamResolver::Create({{"count", "3"}});
    const auto failing = ParamResolver::Create({}, ulo::kResultNotFound);
    const struct {
        const char* what;
        IParamResolver* resolver;
        std::string_view key;
        ::testing::Matcher<const std::string&> line;
    } cases[] = {
        // The engine names the key as it looked it up: in lower case.
        {"missing key", counting.Get(), "NoSuchKey",
         "cannot get string for key NoSuchKey error: Key 'nosuchkey' not found"},
        // A NUL character ends neither the key nor the line.
        {"key with a NUL", counting.Get(), std::string_view("No\0Key", 6),
         std::string("cannot get string for key No\0Key error: Key 'no\0key' not found", 62)},
        {"failing resolver", failing.Get(), "status",
         AllOf(StartsWith("cannot get string for key status error: "),
               HasSubstr("external resolver cannot resolve key, error: Not found"))},
        {"no resolver", nullptr, "status",
         AllOf(StartsWith("cannot get string for key status error: "), HasSubstr("'count'"))},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.what);
        InterfacePtr<ILocalizer> localizer =
            Localizer(*manager, "download", MakeCulture(kEnglish), testCase.resolver);
        ASSERT_TRUE(localizer);
        EXPECT_EQ(ulo::kResultUnspecifiedError, GetText(*localizer, testCase.key).code);
        EXPECT_THAT(TakeErrorLine(), testCase.line);
        // The localizer is still usable for texts that need nothing more.
        EXPECT_EQ(Ok("Download"), GetText(*localizer, "title"));
    }
    EXPECT_TRUE(TakeLines().empty());
}

// Appends its answer to the string it is given, so that it shows whether that string was
// empty; answers "outer" by asking its localizer for another text. Outlives its localizers.
class AppendingResolver final : public IParamResolver {
  public:
    std::uint32_t AddRef() override { return 1; }
    std::uint32_t Release() override { return 1; }
    std::int32_t QueryInterface(ulo::InterfaceId, void** out) override {
        *out = nullptr;
        return ulo::kResultInterfaceNotSupported;
    }
    std::int32_t Resolve(const ulo::string16_t& in, ulo::string16_t& result) override {
        std::u16string text = result.ToStdString();
        if (in == ulo::string16_t(u"outer")) {
            ulo::string16_t inner;
            const std::int32_t code = localizer->GetString(ulo::string16_t(u"inner"), inner);
            if (ulo::Failed(code)) {
                return code;
            }
            text += inner.ToStdString();
        } else {
            text += u"<" + in.ToStdString() + u">";
        }
        result.assign(text.data(), text.size());
        return ulo::kResultOk;
    }

    ILocalizer* localizer = nullptr;
};

TEST_F(LocalizerTest, ResolverGetsAnEmptyStringEveryTimeAndMayAskItsLocalizerAgain) {
    TempTree tree;
    tree.File("root/neutral/Locs/common.lt", "")
        .File("root/neutral/Locs/page.lt",
              "a = $x + $y\nnested = '[' + $outer + ']'\ninner = 'in' + $x");
    InterfacePtr<ILocalizationManager> manager = Manager(tree.Path("root"));
    ASSERT_TRUE(manager);
    AppendingResolver resolver;
    InterfacePtr<ILocalizer> localizer =
        Localizer(*manager, "page", MakeCulture(kEnglish), &resolver);
    ASSERT_TRUE(localizer);
    resolver.localizer = localizer.Get();
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(Ok("<x><y>"), GetText(*localizer, "a"));
        EXPECT_EQ(Ok("[in<x>]"), GetText(*localizer, "nested"));
    }
    EXPECT_TRUE(TakeLines().empty());
}

TEST_F(LocalizerTest, StreamsOverBinaryResourceFiles) {
    InterfacePtr<ILocalizationManager> manager =
        Manager(host::Utf8ToUtf16(kExamples), host::Utf8ToUtf16(kExamplesAlternative));
    ASSERT_TRUE(manager);
    InterfacePtr<ILocalizer> localizer = Localizer(*manager, "download", MakeCulture(kRussian));
    ASSERT_TRUE(localizer);
    const struct {
        const char* key;
        std::string file;
    } resources[] = {
        {"icon.svg", kExamples + "/neutral/download/icon.svg"},
        {"logo.txt", kExamplesAlternative + "/neutral/Common/logo.txt"},
    };
    for (const auto& resource : resources) {
        InterfacePtr<ulo::IIO> stream;
        ASSERT_EQ(ulo::kResultOk, localizer->GetStream(U16(resource.key), stream.Put()));
        EXPECT_EQ(LocalizationManager::Testing::ReadBytes(resource.file), ReadRest(*stream))
            << resource.key;
    }

    EXPECT_EQ(ulo::kResultInvalidArgument, localizer->GetStream(U16("icon.svg"), nullptr));
    EXPECT_TRUE(TakeLines().empty());
    ulo::IIO* missing = reinterpret_cast<ulo::IIO*>(static_cast<std::uintptr_t>(0x1));
    EXPECT_EQ(ulo::kResultUnspecifiedError, localizer->GetStream(U16("absent.png"), &missing));
    EXPECT_EQ(nullptr, missing);
    EXPECT_EQ(
        "cannot open binary resource file stream for key absent.png error: cannot find binary "
        "resource file for key 'absent.png'",
        TakeErrorLine());
}

TEST_F(LocalizerTest, StreamsAreReadOnlyAndSeekable) {
    const std::string bytes(
        "\x00\x01\x02\xFF\xFE"
        "abcdefghij",
        15);
    TempTree tree;
    tree.File("root/neutral/Locs/common.lt").File("root/neutral/Common/data.bin", bytes);
    InterfacePtr<ILocalizationManager> manager = Manager(tree.Path("root"));
    ASSERT_TRUE(manager);
    InterfacePtr<ILocalizer> localizer = Localizer(*manager, "page", MakeCulture(kEnglish));
    ASSERT_TRUE(localizer);
    InterfacePtr<ulo::IIO> stream;
    ASSERT_EQ(ulo::kResultOk, localizer->GetStream(U16("data.bin"), stream.Put()));

    std::uint64_t size = 0;
    EXPECT_EQ(ulo::kResultOk, stream->GetSize(&size));
    EXPECT_EQ(bytes.size(), size);
    std::uint64_t position = 99;
    // An origin the stream does not know counts from the beginning.
    EXPECT_EQ(ulo::kResultOk, stream->Seek(7, 3, &position));
    EXPECT_EQ(3u, position);
    EXPECT_EQ(ulo::kResultOk, stream->Seek(ulo::IIO::kFromCurrent, 2, nullptr));
    EXPECT_EQ(bytes.substr(5), ReadRest(*stream));
    EXPECT_EQ(ulo::kResultOk, stream->Seek(ulo::IIO::kFromEnd, -4, &position));
    EXPECT_EQ(bytes.size() - 4, position);
    EXPECT_EQ(bytes.substr(bytes.size() - 4), ReadRest(*stream));

    char buffer[4] = {};
    std::uint32_t read = 99;
    EXPECT_EQ(ulo::kResultOk, stream->Seek(ulo::IIO::kFromBeginning, 100, nullptr));
    EXPECT_EQ(ulo::kResultOk, stream->Read(buffer, sizeof buffer, &read));
    EXPECT_EQ(0u, read);

    ASSERT_EQ(ulo::kResultOk, stream->Seek(ulo::IIO::kFromBeginning, 2, nullptr));
    std::uint32_t written = 0;
    EXPECT_EQ(ulo::kResultNotSupported, stream->Write("xyz", 3, &written));
    EXPECT_EQ(ulo::kResultNotSupported, stream->SetSize(1));
    EXPECT_EQ(ulo::kResultNotSupported, stream->Flush());
    EXPECT_EQ(ulo::kResultOk, stream->GetPosition(&position));
    EXPECT_EQ(2u, position);
    EXPECT_EQ(ulo::kResultOk, stream->GetSize(&size));
    EXPECT_EQ(bytes.size(), size);
    stream.Reset();
    EXPECT_EQ(bytes, LocalizationManager::Testing::ReadBytes(
                         host::Utf16ToUtf8(tree.Path("root/neutral/Common/data.bin"))));
    EXPECT_TRUE(TakeLines().empty());
}

}  // namespace
}  // namespace localization_manager::e2e
