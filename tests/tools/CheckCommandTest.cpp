// "locmgr check" over real trees: every kind of finding, the stable JSON, exit statuses, and
// trees made to break the tool.

#include "File/TempTree.h"
#include "ToolTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace locmgr::testing {
namespace {

using LocalizationManager::Testing::TempTree;
using nlohmann::json;
using ::testing::HasSubstr;

json Check(std::vector<std::string> arguments, int expectedStatus) {
    arguments.insert(arguments.begin(), {"check", "--format", "json"});
    const ProcessResult result = Locmgr(arguments);
    EXPECT_EQ(expectedStatus, result.exitStatus) << result.err;
    EXPECT_EQ("", result.err);
    return JsonOf(result);
}

// The JSON output is a contract with scripts: any change to it must be deliberate. Run with
// LM_UPDATE_GOLDEN=1 to rewrite the golden file after such a change.
TEST(CheckCommandTest, JsonOutputOfTheBrokenTreeIsStable) {
    const ProcessResult result = Locmgr({"check", "--root", kBroken, "--format", "json"});
    EXPECT_EQ(1, result.exitStatus);
    EXPECT_EQ("", result.err);
    std::string out = result.out;
    // Paths as a user in the project folder would see them.
    for (std::size_t at = out.find(kExamples); at != std::string::npos;
         at = out.find(kExamples, at)) {
        out.replace(at, kExamples.size(), "examples");
    }
    const std::string golden = LM_TOOLS_TEST_DATA "/check-broken.json";
    if (std::getenv("LM_UPDATE_GOLDEN") != nullptr) {
        std::ofstream(golden, std::ios::binary) << out;
    }
    std::ifstream file(golden, std::ios::binary);
    const std::string expected{std::istreambuf_iterator<char>(file),
                               std::istreambuf_iterator<char>()};
    EXPECT_EQ(expected, out);
}

TEST(CheckCommandTest, ExitStatusSaysWhetherTheTreeCanShip) {
    TempTree tree;
    tree.File("neutral/Locs/common.lt", "a = 'x' + $count + $Count\n");
    const std::string warningsOnly = std::filesystem::path(tree.Path()).string();
    TempTree settingsTree;
    settingsTree.File("neutral/Locs/common.lt", "a = 'x'").File("locmgr.json", "{");
    const std::string badSettings = std::filesystem::path(settingsTree.Path()).string();
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string errPart;
    } cases[] = {
        {{"check", "--root", kRoot}, 0, ""},
        {{"check", "--root", kRoot, "--alt", kAlt, "--strict"}, 0, ""},
        {{"check", "--root", kBroken}, 1, ""},
        {{"check", "--root", warningsOnly}, 0, ""},
        {{"check", "--strict", "--root", warningsOnly}, 1, ""},
        // The module accepts a missing alternative directory; so does check, with a warning.
        {{"check", "--root", kRoot, "--alt", kExamples + "/no-such-folder"}, 0, ""},
        {{"check", "--root", kRoot, "--alt", kExamples + "/no-such-folder", "--strict"}, 1, ""},
        {{"check"}, 2, "missing --root"},
        {{"check", "--root", kExamples + "/no-such-folder"}, 2, "cannot read the localization"},
        {{"check", "--root", kRoot, "--format", "xml"}, 2, "unknown --format 'xml'"},
        {{"check", "--root", kRoot, "--culture", "klingon"}, 2, "unknown culture name 'klingon'"},
        {{"check", "--root", kRoot, "extra"}, 2, "takes no operands"},
        {{"check", "--root", kRoot, "--reference", "klingon"}, 2, "unknown culture name 'klingon'"},
        {{"check", "--root", badSettings}, 2, "locmgr.json: not valid JSON"},
        {{"check", "--root", kRoot, "--baseline", "a", "--write-baseline", "b"}, 2, "exclude"},
        {{"check", "--root", kRoot, "--baseline", kRoot + "/none.json"},
         2,
         "cannot read the baseline"},
    };
    for (const auto& testCase : cases) {
        const ProcessResult result = Locmgr(testCase.arguments);
        EXPECT_EQ(testCase.status, result.exitStatus) << testCase.arguments.back() << result.err;
        EXPECT_THAT(result.err, HasSubstr(testCase.errPart));
    }
}

// A translator's partial file: the runtime would fail one request and show one English text.
TEST(CheckCommandTest, APartialTranslationFailsUntilABaselineAcceptsIt) {
    TempTree tree;
    tree.File("neutral/Locs/common.lt", "ok = 'OK'")
        .File("neutral/Locs/download.lt", "title = 'Download'\nretry = 'Try again'\ndone = 'Done'")
        .File("fr/Locs/download.lt", "title = 'Télécharger'\nretry = 'Try again'\nmore = 'Plus'");
    const std::string root = std::filesystem::path(tree.Path()).string();
    const std::string baseline = std::filesystem::path(tree.Path("baseline.json")).string();

    ProcessResult result = Locmgr({"check", "--root", root, "--strict"});
    EXPECT_EQ(1, result.exitStatus);
    EXPECT_THAT(result.out, HasSubstr("download.lt: error: key 'done' of the reference is "
                                      "neither here nor in the culture's common.lt"));
    EXPECT_THAT(result.out, HasSubstr("[obsolete-key]"));
    EXPECT_THAT(result.out, HasSubstr("[untranslated]"));
    EXPECT_THAT(result.out, HasSubstr("completion against neutral: fr 25% (1 of 4)\n"));

    result = Locmgr({"check", "--root", root, "--write-baseline", baseline});
    EXPECT_EQ(0, result.exitStatus);
    EXPECT_EQ("baseline of 3 findings written to " + baseline + "\n", result.out);
    result = Locmgr({"check", "--root", root, "--strict", "--baseline", baseline});
    EXPECT_EQ(0, result.exitStatus) << result.out;
    EXPECT_THAT(result.out, HasSubstr("3 findings accepted by the baseline not shown\n"));
}

TEST(CheckCommandTest, ExtraCulturesAreCheckedAgainstTheTextsTheyFallBackTo) {
    // Japanese has one plural form; the example tree serves it only the English neutral texts.
    const json report = Check({"--root", kRoot, "--culture", "ja", "--culture", "fr"}, 1);
    EXPECT_NE(report["cultures"].end(),
              std::find(report["cultures"].begin(), report["cultures"].end(), "ja"));
    const auto counts = FindingsOf(report, "plural-form-count");
    ASSERT_FALSE(counts.empty());
    for (const json& finding : counts) {
        EXPECT_THAT(finding["file"].get<std::string>(), HasSubstr("/neutral/Locs/"));
        EXPECT_EQ(json::array({"ja"}), finding["cultures"]);
    }
}

TEST(CheckCommandTest, HostileTreesGiveFindingsNotCrashes) {
    TempTree tree;
    std::string nested = "a = ";
    for (int depth = 0; depth < 40; ++depth) {
        nested += "{$n: ";
    }
    nested += "'x'";
    for (int depth = 0; depth < 40; ++depth) {
        nested += "}";
    }
    tree.File("neutral/Locs/common.lt", "x = 'ok'\n")
        .File("neutral/Locs/garbage.lt", std::string("\0\xFF\xFE{{{'''\x80", 10))
        .File("neutral/Locs/bom.lt", "\xEF\xBB\xBF")
        .File("neutral/Locs/deep.lt", nested)
        .File("neutral/Locs/self.lt", "a = a\nb = c\nc = b\n")
        .Directory("neutral/Locs/folder.lt")
        .Fifo("neutral/Locs/pipe.lt")
        .File("ru/Locs/common.lt", "x = 'ok'\n")
        .File("ru/Plural.rule", std::string(200, '(') + "n == 1" + std::string(200, ')') + ";")
        .File("de/Plural.rule", "n % 0 == 1;\n")
        .File("fr/Plural.rule", "n == 1; n == 2; n == 3; n == 4; n == 5; n == 6;\n");
    // A folder that contains itself.
    std::filesystem::create_directory_symlink(std::filesystem::path(tree.Path("neutral")),
                                              std::filesystem::path(tree.Path("neutral/download")));
    const json report = Check({"--root", std::filesystem::path(tree.Path()).string()}, 1);
    const auto parse = FindingsOf(report, "parse-error");
    EXPECT_EQ(2u, parse.size());  // garbage.lt and deep.lt (more than 32 nested invocations)
    EXPECT_EQ(3u, FindingsOf(report, "unreadable-file").size());   // bom, folder, pipe
    EXPECT_EQ(2u, FindingsOf(report, "cyclic-reference").size());  // (a->a) and (b->c->b)
    const auto rules = FindingsOf(report, "rule-parse-error");
    ASSERT_EQ(3u, rules.size());
    EXPECT_THAT(rules[0]["message"].get<std::string>(), HasSubstr("non-zero modulus"));
    EXPECT_THAT(rules[1]["message"].get<std::string>(), HasSubstr("at most 5 conditions"));
    EXPECT_THAT(rules[2]["message"].get<std::string>(), HasSubstr("nested parentheses"));
}

TEST(CheckCommandTest, TextOutputNamesPlaceKindAndCultures) {
    const ProcessResult result = Locmgr({"check", "--root", kBroken});
    EXPECT_EQ(1, result.exitStatus);
    // Piped: no progress line on standard error.
    EXPECT_EQ("", result.err);
    EXPECT_THAT(result.out, HasSubstr(kBroken + "/de/Locs/settings.lt:2:1: error: Cyclic reference "
                                                "found:(theme->colors->theme) [cyclic-reference]\n"
                                                "    cultures: de\n"));
    EXPECT_THAT(result.out, HasSubstr("    \"theme = 'Цветовая схема'\"\n"
                                      "              ^- expecting <eoi> here\n"));
    EXPECT_THAT(result.out,
                HasSubstr("completion against neutral: cs 0% (0 of 8), de 25% (2 of "
                          "8), pl 0% (0 of 8), ru 37% (3 of 8), sr-Latn 37% (3 of 8)\n"));
    EXPECT_THAT(result.out, HasSubstr("16 errors, 7 warnings in 17 text files and 2 rule "
                                      "files; cultures: cs, de, pl, ru, sr-Latn\n"));
}

}  // namespace
}  // namespace locmgr::testing
