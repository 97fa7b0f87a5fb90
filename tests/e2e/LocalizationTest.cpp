// The host library's short way to texts, over the real module: parameters given per request
// (from many threads at once on one object), failures that say what failed with the module's
// own lines, binary resources, and resolvers made of a function.

#include "File/TempTree.h"
#include "localization_manager/ClassIds.h"
#include "localization_manager/ILocalizationManager.h"
#include "localization_manager/host/Host.h"
#include "ulo/ResultCode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace localization_manager::e2e {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const std::string kRoot = LM_EXAMPLES_DIR "/localization";

// "3 файла в 2 папках.": Russian chooses the forms of each number on its own.
std::string RussianSummary(int count, int folders) {
    const auto form = [](int number, const char* one, const char* few, const char* many) {
        const int last = number % 10;
        const int lastTwo = number % 100;
        if (last == 1 && lastTwo != 11) {
            return one;
        }
        return last >= 2 && last <= 4 && (lastTwo < 12 || lastTwo > 14) ? few : many;
    };
    return std::to_string(count) + " " + form(count, "файл", "файла", "файлов") + " в " +
           std::to_string(folders) + " " + form(folders, "папке.", "папках.", "папках.");
}

TEST(LocalizationTest, ParametersAreGivenWithEachRequest) {
    const host::Localization localization(LM_MODULE_PATH, kRoot);
    const host::ScopeTexts texts = localization.Texts("download", "ru");
    for (const auto& [count, folders] : {std::pair{1, 1}, {3, 2}, {5, 21}, {11, 104}, {22, 0}}) {
        EXPECT_EQ(RussianSummary(count, folders),
                  texts.Get("summary", {{"count", count}, {"folders", folders}}));
    }
    const std::vector<host::Parameter> built{{"count", 2u}, {"folders", std::string("1")}};
    EXPECT_EQ(RussianSummary(2, 1), texts.Get("SUMMARY", built));
    EXPECT_EQ(u"2 файла в 1 папке.",
              std::u16string(texts.GetUtf16("summary", {{"count", 2}, {"folders", 1}}).c_str()));
}

// A constant of "locmgr keys" lists what the key's texts ask for in any culture: a request
// that leaves one out fails here too, where this culture's text would not have needed it.
TEST(LocalizationTest, AKeyConstantWantsEveryParameterItsTextsAskFor) {
    static constexpr std::string_view kParameters[] = {"count", "folders"};
    static constexpr host::TextKey kStatus{"status", kParameters, 2};
    const host::Localization localization(LM_MODULE_PATH, kRoot);
    const host::ScopeTexts texts = localization.Texts("download", "en-US");
    EXPECT_EQ(texts.Get("status", {{"count", 3}}),
              texts.Get(kStatus, {{"count", 3}, {"folders", 1}}));
    host::Failure failure;
    EXPECT_EQ("", texts.Get(kStatus, {{"count", 3}}, failure));
    EXPECT_EQ(ulo::kResultInvalidArgument, failure.code);
    EXPECT_THAT(failure.message, HasSubstr("text 'status' of scope 'download' in 'en-US': its "
                                           "texts ask for the parameter 'folders', which the "
                                           "request does not give"));
}

// Requests from 16 threads on one object, each with its own numbers, never see another's.
TEST(LocalizationTest, ThreadsShareOneTextsObjectWithTheirOwnParameters) {
    const host::Localization localization(LM_MODULE_PATH, kRoot);
    const host::ScopeTexts texts = localization.Texts("download", "ru");
    constexpr int kThreads = 16;
    constexpr int kRequests = 300;
    std::vector<int> wrong(kThreads, 0);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&texts, &wrong, thread] {
            for (int request = 0; request < kRequests; ++request) {
                const int count = thread * kRequests + request;
                const int folders = request;
                host::Failure failure;
                const std::string text =
                    texts.Get("summary", {{"count", count}, {"folders", folders}}, failure);
                wrong[thread] += failure || text != RussianSummary(count, folders) ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(wrong, ::testing::Each(0));
}

TEST(LocalizationTest, FailuresSayWhatFailedWithTheModulesOwnLines) {
    LocalizationManager::Testing::TempTree tree;
    tree.File("neutral/Locs/common.lt", "ok = 'OK'\n")
        .File("neutral/Locs/broken.lt", "a = 'x'\nb = 'y\n")
        .File("neutral/Locs/good.lt", "a = 'x' + $n\n");
    const std::string root = std::filesystem::path(tree.Path()).string();
    const host::Localization localization(LM_MODULE_PATH, root);
    const struct {
        std::string scope;
        std::string key;
        std::vector<host::Parameter> parameters;
        std::string message;
        std::string trace;
    } cases[] = {
        {"good",
         "nope",
         {},
         "0x8000004B (Unspecified error): text 'nope' of scope 'good' in 'en'",
         "Key 'nope' not found"},
        {"good", "a", {}, "no value was given for the parameter 'n'", "cannot resolve"},
        {"broken", "a", {}, "text 'a' of scope 'broken'", "parse error at file"},
        {"absent", "a", {}, "scope 'absent'", ""},
    };
    for (const auto& testCase : cases) {
        const host::ScopeTexts texts = localization.Texts(testCase.scope, "en");
        host::Failure failure;
        EXPECT_EQ("", texts.Get(testCase.key, testCase.parameters, failure));
        ASSERT_TRUE(failure) << testCase.key;
        EXPECT_EQ(ulo::kResultUnspecifiedError, failure.code);
        EXPECT_THAT(failure.message, HasSubstr(testCase.message));
        EXPECT_THAT(failure.Describe(), HasSubstr(testCase.trace));
        try {
            texts.Get(testCase.key, testCase.parameters);
            ADD_FAILURE() << "no exception for " << testCase.key;
        } catch (const host::LocalizationError& error) {
            EXPECT_EQ(failure.message, error.failure().message);
            EXPECT_EQ(failure.Describe(), error.what());
        }
    }
    host::Failure failure;
    EXPECT_EQ("x3", localization.Texts("good", "en").Get("a", {{"n", 3}}, failure));
    EXPECT_FALSE(failure);
}

TEST(LocalizationTest, WhatCannotBeOpenedFailsEveryRequestWithItsReason) {
    const struct {
        std::string module;
        std::string root;
        std::string culture;
        std::string message;
    } cases[] = {
        {"/no/such/module.so", kRoot, "ru", "cannot load the module"},
        {LM_MODULE_PATH, "", "ru", "cannot open the localization tree ''"},
        {LM_MODULE_PATH, kRoot, "klingon", "no texts of scope 'download' in 'klingon'"},
    };
    for (const auto& testCase : cases) {
        host::Failure opened;
        const host::Localization localization(testCase.module, testCase.root, {}, opened);
        host::Failure failure;
        const host::ScopeTexts texts = localization.Texts("download", testCase.culture, failure);
        EXPECT_THAT(failure.message, HasSubstr(testCase.message));
        EXPECT_EQ(opened ? opened.message : failure.message, failure.message);
        host::Failure requested;
        EXPECT_EQ("", texts.Get("title", {}, requested));
        EXPECT_EQ(failure.message, requested.message);
        EXPECT_THROW(localization.Texts("download", testCase.culture), host::LocalizationError);
    }
    EXPECT_THROW(host::Localization("/no/such/module.so", kRoot), host::LocalizationError);
}

TEST(LocalizationTest, ResourcesAreReadWhole) {
    const host::Localization localization(LM_MODULE_PATH, kRoot);
    const host::ScopeTexts texts = localization.Texts("download", "ru");
    std::ifstream file(kRoot + "/neutral/download/icon.svg", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    ASSERT_FALSE(bytes.empty());
    EXPECT_EQ(bytes, texts.ReadResource("icon.svg"));
    host::Failure failure;
    EXPECT_EQ("", texts.ReadResource("none.svg", failure));
    EXPECT_THAT(failure.message, HasSubstr("resource 'none.svg' of scope 'download' in 'ru'"));
}

// The lines of a failed request go with its failure, not to the sink as well.
TEST(LocalizationTest, TheLinesOfAFailedRequestGoWithItsFailure) {
    std::vector<std::string> lines;
    host::Localization::Options options;
    options.sink = [&lines](std::int32_t, std::string_view line) { lines.emplace_back(line); };
    const host::Localization localization(LM_MODULE_PATH, kRoot, options);
    host::Failure failure;
    localization.Texts("download", "ru").Get("nope", {}, failure);
    EXPECT_THAT(failure.trace, ElementsAre(HasSubstr("Key 'nope' not found")));
    EXPECT_THAT(lines, IsEmpty());
}

TEST(LocalizationTest, AFunctionAnswersAsAResolver) {
    host::ModuleLoader module;
    ASSERT_TRUE(module.Load(LM_MODULE_PATH)) << module.Error();
    {
        const auto services = host::ServiceLocator::Create(host::Tracer::Create());
        host::InterfacePtr<ILocalizationManager> manager;
        ASSERT_EQ(ulo::kResultOk,
                  module.CreateInstance(kLocalizationManagerClassId, services.Get(), manager));
        ASSERT_EQ(ulo::kResultOk,
                  manager->Construct(host::ToFrameworkString(kRoot), ulo::string16_t()));
        int asked = 0;
        const auto resolver =
            host::MakeResolver([&asked](std::string_view name) -> std::optional<std::string> {
                ++asked;
                if (name == "folders") {
                    throw std::runtime_error("must not reach the module");
                }
                return name == "count" ? std::optional<std::string>("3") : std::nullopt;
            });
        Culture russian{};
        russian.languageId = 26;
        host::InterfacePtr<ILocalizer> localizer;
        ASSERT_EQ(ulo::kResultOk, manager->GetLocalizer(host::ToFrameworkString("download"),
                                                        russian, resolver.Get(), localizer.Put()));
        ulo::string16_t text;
        EXPECT_EQ(ulo::kResultOk, localizer->GetString(host::ToFrameworkString("status"), text));
        EXPECT_THAT(host::ToUtf8(text), HasSubstr("3"));
        EXPECT_NE(ulo::kResultOk, localizer->GetString(host::ToFrameworkString("summary"), text));
        EXPECT_GE(asked, 2);
    }
    EXPECT_TRUE(module.Unload()) << module.Error();
}

}  // namespace
}  // namespace localization_manager::e2e
