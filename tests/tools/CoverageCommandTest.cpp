// "locmgr coverage": the file each culture reads per scope and what it lacks, above all the
// keys a more specific file hides.

#include "File/TempTree.h"
#include "ToolTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace locmgr::testing {
namespace {

using LocalizationManager::Testing::TempTree;
using nlohmann::json;
using ::testing::HasSubstr;

const json* ScopeOf(const json& report, const std::string& culture, const std::string& scope) {
    for (const json& entry : report["cultures"]) {
        if (entry["culture"] != culture) {
            continue;
        }
        for (const json& candidate : entry["scopes"]) {
            if (candidate["scope"] == scope) {
                return &candidate;
            }
        }
    }
    ADD_FAILURE() << "no " << culture << "/" << scope;
    static const json kNone = json::object();
    return &kNone;
}

TEST(CoverageCommandTest, APartialFileHidesTheKeysItLacks) {
    TempTree tree;
    tree.File("root/neutral/Locs/common.lt", "app = 'App'\n")
        .File("root/neutral/Locs/settings.lt",
              "title = 'Settings'\ncolour = 'Colour'\n"
              "size = 'Size'\n")
        .File("root/en/Locs/settings.lt", "title = 'Settings'\nColour = 'Color'\nsize = 'Size'\n")
        .File("root/en-US/Locs/settings.lt", "colour = 'Color'\nextra = 'New'\napp = 'x'\n")
        .File("root/neutral/Common/logo.svg", "<svg/>")
        .File("root/neutral/settings/icon.png", "png")
        .File("root/en/settings/icon.png", "png")
        .File("alt/en/Locs/common.lt", "app = 'Alt'\n");
    const std::string root = std::filesystem::path(tree.Path("root")).string();
    const std::string alt = std::filesystem::path(tree.Path("alt")).string();
    const ProcessResult result =
        Locmgr({"coverage", "--root", root, "--alt", alt, "--format", "json"});
    ASSERT_EQ(0, result.exitStatus) << result.err;
    const json report = JsonOf(result);
    EXPECT_EQ("neutral", report["reference"]);

    const json& us = *ScopeOf(report, "en-US", "settings");
    EXPECT_EQ(root + "/en-US/Locs/settings.lt", us["file"]);
    EXPECT_EQ(json::array({"size", "title"}), us["missingKeys"]);
    EXPECT_EQ(json::array({"app", "extra"}), us["extraKeys"]);
    // Hidden: en's file (its title and size) and neutral's (the same two keys).
    ASSERT_EQ(2u, us["hiddenFiles"].size());
    EXPECT_EQ(root + "/en/Locs/settings.lt", us["hiddenFiles"][0]["file"]);
    EXPECT_EQ(json::array({"size", "title"}), us["hiddenFiles"][0]["hiddenKeys"]);

    const json& en = *ScopeOf(report, "en", "settings");
    EXPECT_TRUE(en["missingKeys"].empty());
    EXPECT_FALSE(en["referenceFile"].get<bool>());
    const json& common = *ScopeOf(report, "en", "common");
    EXPECT_EQ(alt + "/en/Locs/common.lt", common["file"]);
    EXPECT_TRUE(common["alternative"].get<bool>());

    // en has its own icon, which en-US finds too; neither has its own logo.
    for (const json& culture : report["cultures"]) {
        std::vector<std::string> gaps;
        for (const json& gap : culture["binaryGaps"]) {
            gaps.push_back(gap["scope"].get<std::string>() + "/" + gap["key"].get<std::string>());
        }
        const std::vector<std::string> expected =
            culture["culture"] == "en" || culture["culture"] == "en-US"
                ? std::vector<std::string>{"Common/logo.svg"}
                : std::vector<std::string>{"Common/logo.svg", "settings/icon.png"};
        EXPECT_EQ(expected, gaps) << culture["culture"];
    }

    const ProcessResult text = Locmgr({"coverage", "--root", root, "--alt", alt});
    EXPECT_THAT(text.out, HasSubstr("! hides " + root +
                                    "/en/Locs/settings.lt: the module reads "
                                    "only " +
                                    root + "/en-US/Locs/settings.lt"));
    EXPECT_THAT(text.out, HasSubstr("lost 2 keys: size, title\n"));
}

TEST(CoverageCommandTest, ListsRootFilesTheAlternativeDirectoryReplaces) {
    const json report =
        JsonOf(Locmgr({"coverage", "--root", kRoot, "--alt", kAlt, "--format", "json"}));
    ASSERT_EQ(2u, report["shadowed"].size());
    EXPECT_EQ(kRoot + "/de/Locs/download.lt", report["shadowed"][0]["file"]);
    EXPECT_EQ(kAlt + "/de/Locs/download.lt", report["shadowed"][0]["alternativeFile"]);
    EXPECT_EQ(kAlt + "/neutral/Common/logo.txt", report["shadowed"][1]["alternativeFile"]);
}

TEST(CoverageCommandTest, ComparesWithAnotherCultureOnRequest) {
    const json report =
        JsonOf(Locmgr({"coverage", "--root", kBroken, "--reference", "de", "--format", "json"}));
    EXPECT_EQ("de", report["reference"]);
    // ru's settings file does not parse: reported, not hidden.
    const json& settings = *ScopeOf(report, "ru", "settings");
    EXPECT_THAT(settings["problem"].get<std::string>(), HasSubstr("does not parse"));
    // sr-Latn reads neutral's banner, which lacks all of de's doubling keys.
    EXPECT_EQ(21u, ScopeOf(report, "sr-Latn", "banner")->at("missingKeys").size());

    EXPECT_EQ(2, Locmgr({"coverage", "--root", kRoot, "--reference", "xx"}).exitStatus);
    // A culture without a folder of its own reads neutral's texts.
    EXPECT_EQ(0, Locmgr({"coverage", "--root", kRoot, "--reference", "ja"}).exitStatus);
}

}  // namespace
}  // namespace locmgr::testing
