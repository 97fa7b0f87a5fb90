// The SARIF output loads in code-scanning viewers: it is valid against the official SARIF
// 2.1.0 schema (checked with a real validator when it is installed) and has the parts viewers
// read (checked here in any case).

#include "File/TempTree.h"
#include "ToolTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace locmgr::testing {
namespace {

using nlohmann::json;

std::string SarifOf(const std::vector<std::string>& tree) {
    std::vector<std::string> arguments{"check", "--format", "sarif"};
    arguments.insert(arguments.end(), tree.begin(), tree.end());
    return Locmgr(arguments).out;
}

TEST(SarifOutputTest, HasWhatViewersRead) {
    const json log = json::parse(SarifOf({"--root", kBroken}));
    EXPECT_EQ("2.1.0", log["version"]);
    EXPECT_THAT(log["$schema"].get<std::string>(), ::testing::HasSubstr("sarif-schema-2.1.0"));
    ASSERT_EQ(1u, log["runs"].size());
    const json& run = log["runs"][0];
    EXPECT_EQ("locmgr", run["tool"]["driver"]["name"]);
    const json& rules = run["tool"]["driver"]["rules"];
    ASSERT_FALSE(run["results"].empty());
    for (const json& result : run["results"]) {
        // Each result names its rule by id and by index, consistently.
        const auto index = result["ruleIndex"].get<std::size_t>();
        ASSERT_LT(index, rules.size());
        EXPECT_EQ(rules[index]["id"], result["ruleId"]);
        EXPECT_TRUE(result["level"] == "error" || result["level"] == "warning");
        EXPECT_FALSE(result["message"]["text"].get<std::string>().empty());
        const json& location = result["locations"][0]["physicalLocation"];
        EXPECT_EQ(0u, location["artifactLocation"]["uri"].get<std::string>().find("file:///"));
        if (location.contains("region")) {
            EXPECT_GE(location["region"]["startLine"].get<int>(), 1);
            EXPECT_GE(location["region"]["startColumn"].get<int>(), 1);
        }
    }
}

// The validator is installed by tools/locmgr/scripts/install-sarif-validator.sh (ajv and the
// schema, from the npm registry).
TEST(SarifOutputTest, IsValidAgainstTheOfficialSchema) {
    const char* configured = std::getenv("LM_SARIF_VALIDATOR");
    const std::string validator = configured != nullptr ? configured : LM_DEFAULT_SARIF_VALIDATOR;
    if (!std::filesystem::exists(validator + "/node_modules/ajv-draft-04")) {
        GTEST_SKIP() << "no SARIF validator in " << validator
                     << "; run tools/locmgr/scripts/install-sarif-validator.sh " << validator;
    }
    const LocalizationManager::Testing::TempTree tree;
    const std::string folder = std::filesystem::path(tree.Path()).string();
    std::vector<std::string> arguments{"node", LM_SARIF_SCRIPTS "/validate-sarif.js", validator};
    const std::vector<std::vector<std::string>> trees{{"--root", kBroken},
                                                      {"--root", kRoot, "--alt", kAlt}};
    for (std::size_t index = 0; index < trees.size(); ++index) {
        const std::string file = folder + "/" + std::to_string(index) + ".sarif";
        std::ofstream(file, std::ios::binary) << SarifOf(trees[index]);
        arguments.push_back(file);
    }
    arguments.insert(arguments.begin(), "/usr/bin/env");
    const ProcessResult validation = RunProcess(arguments);
    EXPECT_EQ(0, validation.exitStatus) << validation.out << validation.err;
}

}  // namespace
}  // namespace locmgr::testing
