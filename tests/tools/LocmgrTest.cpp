// locmgr as users run it: a real process over the example tree, loading the module built
// beside it. Each case checks standard output, standard error and the exit status.

#include "Locmgr.h"
#include "TestSupport/ExampleTexts.h"
#include "TestSupport/Fixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace locmgr::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string kErrorPrefix = "localization manager error: ";

// Every line on standard error is a tracer line of the module, and there is at least one.
void ExpectOnlyTracerLines(const std::string& err) {
    const std::vector<std::string> lines = Lines(err);
    EXPECT_FALSE(lines.empty());
    for (const std::string& line : lines) {
        EXPECT_THAT(line, StartsWith(kErrorPrefix));
    }
}

TEST(LocmgrGetTest, PrintsTheTextsOfTheExampleTree) {
    using LocalizationManager::Testing::kExampleCount;
    using LocalizationManager::Testing::kExampleFolders;
    for (const auto& example : LocalizationManager::Testing::kExampleTexts) {
        const ProcessResult result =
            Locmgr({"get", "--root", kRoot, "--alt", kAlt, "--culture", example.cultureName,
                    "--scope", example.scope, "--param", std::string("count=") + kExampleCount,
                    "--param", std::string("folders=") + kExampleFolders, example.key});
        EXPECT_EQ(0, result.exitStatus) << result.err;
        EXPECT_EQ(std::string(example.text) + "\n", result.out)
            << example.cultureName << " " << example.scope << "/" << example.key;
        EXPECT_EQ("", result.err);
    }
}

TEST(LocmgrGetTest, PrintsEachTextOnItsOwnLine) {
    const struct {
        std::vector<std::string> arguments;
        std::string out;
    } cases[] = {
        {{"--culture", "ru", "--scope", "download", "--param", "count=3", "--param", "folders=2",
          "status", "summary"},
         "Загружено: 3 файла.\n3 файла в 2 папках.\n"},
        // The last value of a parameter wins.
        {{"--culture", "en", "--scope", "download", "--param", "count=1", "--param", "count=5",
          "status"},
         "Loaded 5 files.\n"},
        {{"--no-resolver", "--culture", "sr-Latn", "--scope", "settings", "title"},
         "Podešavanja\n"},
    };
    for (const auto& testCase : cases) {
        std::vector<std::string> arguments{"get", "--root", kRoot};
        arguments.insert(arguments.end(), testCase.arguments.begin(), testCase.arguments.end());
        const ProcessResult result = Locmgr(arguments);
        EXPECT_EQ(0, result.exitStatus) << result.err;
        EXPECT_EQ(testCase.out, result.out);
        EXPECT_EQ("", result.err);
    }
}

TEST(LocmgrGetTest, FailingRequestsPrintTheTracerLineAndExitWithOne) {
    const struct {
        std::vector<std::string> arguments;
        std::string out;
        std::string errorPart;
    } cases[] = {
        // The other keys are still printed, in order.
        {{"--root", kRoot, "--scope", "download", "--culture", "en", "title", "noSuchKey", "done"},
         "Download\nDownload complete 🎉\n",
         "noSuchKey"},
        // A parameter nobody gives, with and without a resolver.
        {{"--root", kRoot, "--scope", "download", "--culture", "en", "status"}, "", "status"},
        {{"--root", kRoot, "--scope", "download", "--culture", "en", "--no-resolver", "status"},
         "",
         "status"},
        {{"--root", kRoot, "--scope", "noSuchScope", "--culture", "en", "title"},
         "",
         "noSuchScope.lt"},
        {{"--root", kExamples + "/no-such-folder", "--scope", "download", "--culture", "en",
          "title"},
         "",
         "no-such-folder"},
    };
    for (const auto& testCase : cases) {
        std::vector<std::string> arguments{"get"};
        arguments.insert(arguments.end(), testCase.arguments.begin(), testCase.arguments.end());
        const ProcessResult result = Locmgr(arguments);
        EXPECT_EQ(1, result.exitStatus);
        EXPECT_EQ(testCase.out, result.out);
        ExpectOnlyTracerLines(result.err);
        EXPECT_THAT(result.err, HasSubstr(testCase.errorPart));
    }
}

TEST(LocmgrGetTest, UnknownCultureNameIsReportedByName) {
    const ProcessResult result =
        Locmgr({"get", "--root", kRoot, "--scope", "download", "--culture", "xx", "title"});
    EXPECT_EQ(1, result.exitStatus);
    EXPECT_EQ("", result.out);
    EXPECT_THAT(result.err, HasSubstr("unknown culture name 'xx'"));
}

TEST(LocmgrStreamTest, WritesTheResourceBytes) {
    const struct {
        std::vector<std::string> arguments;
        std::string file;
    } cases[] = {
        {{"--culture", "ru", "icon.svg"}, kRoot + "/neutral/download/icon.svg"},
        {{"--culture", "en-US", "--alt", kAlt, "logo.txt"}, kAlt + "/neutral/Common/logo.txt"},
        {{"--culture", "en-US", "logo.txt"}, kRoot + "/neutral/Common/logo.txt"},
    };
    for (const auto& testCase : cases) {
        std::vector<std::string> arguments{"stream",   "--root",   kRoot,    "--scope",
                                           "download", "--module", LM_MODULE};
        arguments.insert(arguments.end(), testCase.arguments.begin(), testCase.arguments.end());
        const ProcessResult result = Locmgr(arguments);
        EXPECT_EQ(0, result.exitStatus) << result.err;
        EXPECT_EQ(LocalizationManager::Testing::ReadBytes(testCase.file), result.out);
        EXPECT_FALSE(result.out.empty());
    }
}

TEST(LocmgrStreamTest, MissingOrEscapingResourceFails) {
    for (const std::string key : {"missing.png", "../../ru/Plural.rule"}) {
        const ProcessResult result =
            Locmgr({"stream", "--root", kRoot, "--scope", "download", "--culture", "en", key});
        EXPECT_EQ(1, result.exitStatus) << key;
        EXPECT_EQ("", result.out);
        ExpectOnlyTracerLines(result.err);
    }
}

TEST(LocmgrCultureTest, PrintsLanguageAndSubtagsPerName) {
    const ProcessResult result =
        Locmgr({"culture", "ru", "EN-us", "sr-Latn-RS", "anz", "la", "zh-Hant-HK-x"});
    EXPECT_EQ(0, result.exitStatus) << result.err;
    EXPECT_EQ(
        "ru\t26\tru\t\t\n"
        "EN-us\t7\ten\tus\t\n"
        "sr-Latn-RS\t30\tsr-Latn\tRS\t\n"
        "anz\t7\ten\tau\t\n"
        "la\t28\tes\tmx\t\n"
        "zh-Hant-HK-x\t2\tzh-Hant\tHK\tx\n",
        result.out);
    EXPECT_EQ("", result.err);

    const ProcessResult unknown = Locmgr({"culture", "english", "de"});
    EXPECT_EQ(1, unknown.exitStatus);
    EXPECT_EQ("de\t12\tde\t\t\n", unknown.out);
    EXPECT_THAT(unknown.err, HasSubstr("unknown culture name 'english'"));
}

TEST(LocmgrBatchTest, AnswersEachRequestOnItsOwnLine) {
    const std::string input =
        R"({"scope": "download", "culture": "ru", "key": "status", "params": {"count": 21}})"
        "\n"
        R"({"scope": "download", "culture": "en", "key": "noSuchKey"})"
        "\n\n"
        "not json\n"
        R"({"scope": "download", "culture": "xx", "key": "title"})"
        "\n"
        R"({"scope": "download", "culture": "en", "key": "status"})"
        "\n"
        R"({"scope": "download", "culture": "en", "key": "status", "params": {"count": "1"}})"
        "\n"
        R"({"scope": "download", "culture": "de-AT", "key": "windowTitle"})"
        "\n";
    const ProcessResult result = Locmgr({"batch", "--root", kRoot, "--alt", kAlt}, input);
    EXPECT_EQ(1, result.exitStatus);
    const std::vector<std::string> answers = Lines(result.out);
    ASSERT_EQ(7u, answers.size()) << result.out;
    EXPECT_EQ(R"({"ok": true, "text": "Загружено: 21 файл."})", answers[0]);
    EXPECT_THAT(answers[1],
                StartsWith(R"({"ok": false, "code": 2147483723, "error": ")" + kErrorPrefix));
    EXPECT_THAT(answers[1], HasSubstr("noSuchKey"));
    EXPECT_THAT(answers[2], StartsWith(R"({"ok": false, "code": 2147483718, "error": "invalid)"));
    EXPECT_EQ(R"({"ok": false, "code": 2147483723, "error": "unknown culture name 'xx'"})",
              answers[3]);
    // Parameters belong to one request only.
    EXPECT_THAT(answers[4],
                StartsWith(R"({"ok": false, "code": 2147483723, "error": ")" + kErrorPrefix));
    EXPECT_EQ(R"({"ok": true, "text": "Loaded 1 file."})", answers[5]);
    EXPECT_EQ(R"({"ok": true, "text": "Herunterladen – File Courier Enterprise"})", answers[6]);
    // The module's lines also go to standard error, as for every command.
    EXPECT_EQ(2u, Lines(result.err).size()) << result.err;
    ExpectOnlyTracerLines(result.err);

    const ProcessResult allGood = Locmgr(
        {"batch", "--root", kRoot}, R"({"scope": "settings", "culture": "en-US", "key": "theme"})");
    EXPECT_EQ(0, allGood.exitStatus);
    EXPECT_EQ("{\"ok\": true, \"text\": \"Color scheme\"}\n", allGood.out);
}

TEST(LocmgrUsageTest, BadCommandLinesExitWithTwo) {
    const std::vector<std::string> get{"get",      "--root",    kRoot, "--scope",
                                       "download", "--culture", "en"};
    auto with = [](std::vector<std::string> base, const std::vector<std::string>& more) {
        base.insert(base.end(), more.begin(), more.end());
        return base;
    };
    const struct {
        std::vector<std::string> arguments;
        std::string message;
    } cases[] = {
        {{}, "Usage: locmgr"},
        {{"frobnicate"}, "unknown command 'frobnicate'"},
        {{"get", "--scope", "download", "--culture", "en", "title"}, "missing --root"},
        {with(get, {}), "no KEY given"},
        {with(get, {"--colour", "title"}), "unknown option '--colour'"},
        {with(get, {"--param", "count", "title"}), "--param needs NAME=VALUE"},
        {with(get, {"title", "--scope"}), "'--scope' needs a value"},
        {with(get, {"--no-resolver=yes", "title"}), "takes no value"},
        {with(get, {"--module", "/nonexistent/localization_manager.so", "title"}),
         "cannot load module '/nonexistent/localization_manager.so'"},
        {{"stream", "--root", kRoot, "--scope", "download", "--culture", "en", "a", "b"},
         "exactly one KEY"},
        {{"culture"}, "no culture NAME given"},
        {{"batch", "--root", kRoot, "extra"}, "takes no operands"},
        {{"parse"}, "no FILE given"},
    };
    for (const auto& testCase : cases) {
        const ProcessResult result = Locmgr(testCase.arguments, "");
        EXPECT_EQ(2, result.exitStatus) << testCase.message;
        EXPECT_EQ("", result.out) << testCase.message;
        EXPECT_THAT(result.err, HasSubstr(testCase.message));
    }
}

TEST(LocmgrParseTest, PrintsEntriesOrTheReport) {
    const std::string file = kRoot + "/de/Locs/common.lt";
    const ProcessResult good = Locmgr({"parse", file});
    EXPECT_EQ(0, good.exitStatus) << good.err;
    EXPECT_THAT(good.out, StartsWith("# " + file + ": 8 entries\n"));

    const ProcessResult missing = Locmgr({"parse", "/nonexistent.lt"});
    EXPECT_EQ(1, missing.exitStatus);
    // In the module's words, as the module would report the file.
    EXPECT_THAT(missing.err, StartsWith("/nonexistent.lt: cannot read the file: "));
    EXPECT_THAT(missing.err, ::testing::EndsWith("Cannot open file, error: File not found\n"));
}

}  // namespace
}  // namespace locmgr::testing
