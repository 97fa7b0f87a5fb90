// "locmgr explain": the search, the rule and the compiled text of one key, as the module
// would arrive at them.

#include "ToolTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace locmgr::testing {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

json Explain(const std::vector<std::string>& arguments, int expectedStatus) {
    std::vector<std::string> full{"explain", "--format", "json"};
    full.insert(full.end(), arguments.begin(), arguments.end());
    const ProcessResult result = Locmgr(full);
    EXPECT_EQ(expectedStatus, result.exitStatus) << result.err;
    return JsonOf(result);
}

TEST(ExplainCommandTest, ShowsSearchRuleOperandsAndParameters) {
    const json explanation = Explain({"--root", kRoot, "--alt", kAlt, "--scope", "download",
                                      "--culture", "de-AT", "windowTitle"},
                                     0);
    EXPECT_EQ("de-AT", explanation["culture"]["name"]);
    // Alternative directory first, most specific folder first.
    const json& probes = explanation["scopeCandidates"];
    ASSERT_EQ(6u, probes.size());
    EXPECT_EQ(kAlt + "/de-AT/Locs/download.lt", probes[0]["path"]);
    EXPECT_FALSE(probes[0]["exists"].get<bool>());
    EXPECT_EQ(kRoot + "/neutral/Locs/download.lt", probes[5]["path"]);
    EXPECT_EQ(kAlt + "/de/Locs/download.lt", explanation["scopeFile"]);
    EXPECT_EQ(kRoot + "/de/Locs/common.lt", explanation["commonFile"]);
    // The references are expanded: only texts remain.
    std::string text;
    for (const json& operand : explanation["operands"]) {
        ASSERT_EQ("text", operand["kind"]);
        text += operand["text"].get<std::string>();
    }
    EXPECT_EQ("Herunterladen – File Courier Enterprise", text);
    EXPECT_EQ(json::array(), explanation["problems"]);
}

TEST(ExplainCommandTest, ShowsTheRuleFileAndNumbersForEachForm) {
    const json explanation =
        Explain({"--root", kRoot, "--scope", "download", "--culture", "ru", "summary"}, 0);
    const json& rule = explanation["pluralRule"];
    EXPECT_EQ(kRoot + "/ru/Plural.rule", rule["file"]);
    EXPECT_EQ(3, rule["formCount"]);
    EXPECT_EQ(json::array({1, 21, 31, 41, 51, 61, 71, 81}), rule["forms"][0]["sampleNumbers"]);
    EXPECT_EQ("n % 10 == 1 && n % 100 != 11", rule["forms"][0]["condition"]);
    EXPECT_EQ(json::array({"count", "folders"}), explanation["parameters"]);
    const json& plural = explanation["operands"][0];
    EXPECT_EQ("plural", plural["kind"]);
    EXPECT_EQ("count", plural["name"]);
    EXPECT_EQ(3u, plural["forms"].size());

    const json builtIn =
        Explain({"--root", kRoot, "--scope", "download", "--culture", "ar", "title"}, 0);
    EXPECT_TRUE(builtIn["pluralRule"]["file"].is_null());
    EXPECT_EQ(6, builtIn["pluralRule"]["formCount"]);
    EXPECT_EQ("n % 100 >= 3 && n % 100 <= 10", builtIn["pluralRule"]["forms"][3]["condition"]);
    EXPECT_EQ(json::array({kRoot + "/ar/Plural.rule"}),
              builtIn["pluralRule"]["ruleFileCandidates"]);
}

TEST(ExplainCommandTest, SaysWhyARequestFails) {
    const struct {
        std::vector<std::string> arguments;
        std::string problem;
    } cases[] = {
        {{"--scope", "download", "--culture", "ru", "summary"},
         "Invalid plural form count (expected: 3, got: 2, discriminator: count)"},
        {{"--scope", "settings", "--culture", "de", "title"},
         "Cyclic reference found:(colors->theme->colors)"},
        {{"--scope", "download", "--culture", "sr-Latn", "title"},
         "cannot find localization file 'common.lt'"},
        {{"--scope", "download", "--culture", "de", "nothing"}, "Key 'nothing' not found"},
        {{"--scope", "help", "--culture", "pl", "help"}, "expecting \";\" here"},
    };
    for (const auto& testCase : cases) {
        std::vector<std::string> arguments{"--root", kBroken};
        arguments.insert(arguments.end(), testCase.arguments.begin(), testCase.arguments.end());
        const json explanation = Explain(arguments, 1);
        EXPECT_THAT(
            explanation["problems"].dump(),
            HasSubstr(
                json(testCase.problem).dump().substr(1, json(testCase.problem).dump().size() - 2)))
            << testCase.problem;
    }
    const ProcessResult text =
        Locmgr({"explain", "--root", kRoot, "--scope", "download", "--culture", "ru", "status"});
    EXPECT_THAT(text.out, HasSubstr("<- read"));
    EXPECT_THAT(text.out, HasSubstr("form 1: 2, 3, 4, 22, 23, 24, 32, 33, ..."));
    EXPECT_EQ(
        2,
        Locmgr({"explain", "--root", kRoot, "--scope", "download", "--culture", "ru"}).exitStatus);
}

}  // namespace
}  // namespace locmgr::testing
