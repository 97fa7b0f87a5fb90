// "locmgr pseudo": texts that look translated, served through the alternative directory,
// with nothing the module relies on changed.

#include "File/TempTree.h"
#include "ToolTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace locmgr::testing {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

class PseudoCommandTest : public ::testing::Test {
  protected:
    // Each test its own folder: ctest runs the cases of this file side by side.
    LocalizationManager::Testing::TempTree tree_;
    const std::string out_ = std::filesystem::path(tree_.Path("pseudo")).string();
};

// The number of entries "locmgr parse" reads from a file, or -1 when it fails.
int EntryCount(const std::string& file) {
    const ProcessResult result = Locmgr({"parse", file});
    if (result.exitStatus != 0) {
        return -1;
    }
    return static_cast<int>(Lines(result.out).size()) - 1;  // less the file's header line
}

TEST_F(PseudoCommandTest, EveryCultureReadsTheCopyOfItsOwnFile) {
    const ProcessResult result =
        Locmgr({"pseudo", "--root", kRoot, "--out", out_, "--format", "json"});
    ASSERT_EQ(0, result.exitStatus) << result.err;
    const json report = JsonOf(result);
    ASSERT_EQ(17u, report["files"].size());
    for (const json& file : report["files"]) {
        // The copy parses back to as many keys as its source.
        EXPECT_EQ(EntryCount(file["source"]), EntryCount(file["output"])) << file["output"];
        EXPECT_EQ(file["keys"].get<int>(), EntryCount(file["output"]));
    }
    EXPECT_EQ(0, Locmgr({"check", "--root", kRoot, "--alt", out_}).exitStatus);

    const ProcessResult text = Locmgr({"get", "--root", kRoot, "--alt", out_, "--scope", "download",
                                       "--culture", "ru", "--param", "count=3", "status"});
    EXPECT_EQ("[Загружено: [3 файла].]\n", text.out);
    const ProcessResult english = Locmgr(
        {"get", "--root", kRoot, "--alt", out_, "--scope", "download", "--culture", "en", "title"});
    EXPECT_EQ("[Ðöŵñļöåð]\n", english.out);
}

TEST_F(PseudoCommandTest, OneCultureGoesIntoItsOwnFolderOnly) {
    ASSERT_EQ(0, Locmgr({"pseudo", "--root", kRoot, "--out", out_, "--culture", "en-US", "--style",
                         "long"})
                     .exitStatus);
    EXPECT_TRUE(std::filesystem::exists(out_ + "/en-US/Locs/settings.lt"));
    EXPECT_TRUE(std::filesystem::exists(out_ + "/en-US/Locs/download.lt"));  // from neutral
    EXPECT_FALSE(std::filesystem::exists(out_ + "/neutral"));
    const auto get = [&](const std::string& culture) {
        return Locmgr({"get", "--root", kRoot, "--alt", out_, "--scope", "settings", "--culture",
                       culture, "theme"})
            .out;
    };
    EXPECT_EQ("[Çöļöŕ šçĥéɱé~~~~~]\n", get("en-US"));
    EXPECT_EQ("Colour scheme\n", get("en"));
    EXPECT_EQ(0, Locmgr({"check", "--root", kRoot, "--alt", out_}).exitStatus);
}

TEST_F(PseudoCommandTest, RefusesToWriteIntoTheTreeAndSkipsBrokenFiles) {
    const ProcessResult inside =
        Locmgr({"pseudo", "--root", kRoot, "--out", kRoot + "/neutral/pseudo"});
    EXPECT_EQ(2, inside.exitStatus);
    EXPECT_THAT(inside.err, HasSubstr("must not be the root directory or lie inside it"));
    EXPECT_EQ(2, Locmgr({"pseudo", "--root", kRoot, "--out", out_, "--style", "wide"}).exitStatus);

    const ProcessResult broken = Locmgr({"pseudo", "--root", kBroken, "--out", out_});
    EXPECT_EQ(1, broken.exitStatus);
    EXPECT_THAT(broken.err, HasSubstr("ru/Locs/settings.lt: not written: parse error at file"));
    EXPECT_FALSE(std::filesystem::exists(out_ + "/ru/Locs/settings.lt"));
    EXPECT_TRUE(std::filesystem::exists(out_ + "/ru/Locs/download.lt"));
}

}  // namespace
}  // namespace locmgr::testing
