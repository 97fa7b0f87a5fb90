// "locmgr init" and "locmgr merge" over trees a translator would have: a partial file that
// check fails on until it is merged and translated, a new culture that serves what it served
// before, reference texts that changed under a translation, and files that cannot be merged.

#include "File/TempTree.h"
#include "ToolTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace locmgr::testing {
namespace {

using LocalizationManager::Testing::TempTree;
using ::testing::HasSubstr;
using ::testing::Not;

std::string PathOf(const TempTree& tree, const std::string& relative = "") {
    return std::filesystem::path(tree.Path(relative)).string();
}

void Replace(const std::string& path, const std::string& from, const std::string& to) {
    std::string text = ReadFile(path);
    const std::size_t at = text.find(from);
    ASSERT_NE(std::string::npos, at) << from << " in " << path;
    text.replace(at, from.size(), to);
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

std::size_t FindingCount(const std::string& root) {
    const ProcessResult result = Locmgr({"check", "--root", root, "--format", "json"});
    return JsonOf(result).value("findings", nlohmann::json::array()).size();
}

// A French file started by hand: one key missing, one the reference dropped, one left in
// English.
TEST(MergeCommandTest, APartialTranslationPassesCheckAfterMergeAndTranslation) {
    TempTree tree;
    tree.File("neutral/Locs/common.lt", "ok = 'OK'\n")
        .File("neutral/Locs/download.lt",
              "; The window's title\ntitle = 'Download'\nretry = 'Try again'\ndone = 'Done'\n")
        .File("fr/Locs/common.lt", "ok = 'D’accord'\n")
        .File("fr/Locs/download.lt",
              "; Translated\r\ntitle = 'Télécharger'\r\n\r\nretry = 'Try again' ; later\r\n"
              "more = 'Plus'\r\n");
    const std::string root = PathOf(tree);
    const std::string file = PathOf(tree, "fr/Locs/download.lt");
    EXPECT_EQ(1, Locmgr({"check", "--root", root, "--strict"}).exitStatus);
    EXPECT_EQ(3u, FindingCount(root));

    ProcessResult result = Locmgr({"merge", "--root", root, "--culture", "fr"});
    ASSERT_EQ(0, result.exitStatus) << result.err;
    EXPECT_EQ(file +
                  ": 1 added, 1 obsolete\n"
                  "  added done (the reference's text, to translate)\n"
                  "  obsolete more (the reference has no such key; --prune removes it)\n",
              result.out.substr(result.out.find(file)));
    // The added key follows the key the reference puts before it; the rest keeps its bytes.
    EXPECT_EQ(
        "; Translated\r\ntitle = 'Télécharger'\r\n\r\nretry = 'Try again' ; later\r\n"
        "done = 'Done'\r\nmore = 'Plus'\r\n",
        ReadFile(file));
    result = Locmgr({"check", "--root", root, "--format", "json"});
    EXPECT_EQ(0, result.exitStatus);
    EXPECT_TRUE(FindingsOf(JsonOf(result), "missing-key").empty());
    EXPECT_EQ(2u, FindingsOf(JsonOf(result), "untranslated").size());

    Replace(file, "'Try again'", "'Réessayer'");
    Replace(file, "'Done'", "'Terminé'");
    result = Locmgr({"merge", "--root", root, "--culture", "fr", "--prune"});
    ASSERT_EQ(0, result.exitStatus) << result.err;
    EXPECT_THAT(result.out, HasSubstr("  removed more\n"));
    EXPECT_EQ(
        "; Translated\r\ntitle = 'Télécharger'\r\n\r\nretry = 'Réessayer' ; later\r\n"
        "done = 'Terminé'\r\n",
        ReadFile(file));
    result = Locmgr({"check", "--root", root, "--strict"});
    EXPECT_EQ(0, result.exitStatus) << result.out;
    EXPECT_THAT(result.out, HasSubstr("fr 100% (4 of 4)"));
}

// A new culture starts from what it reads today, so that the application shows the same texts
// while translation is under way (the neutral texts, or those of the culture it falls back to)
// and check lists what is left to translate.
TEST(MergeCommandTest, InitStartsACultureFromTheFilesItReadsToday) {
    const struct {
        std::string culture;
        std::string folder;        // the folder created
        std::string from;          // the folder its files are copies of
        std::size_t untranslated;  // texts check reports as the reference's own
    } cases[] = {
        // Every text but the five without a letter ("$percent + '%'"), which read alike.
        {"fr", "fr", "neutral", 23},
        // German's "OK" may stay as it is in de (locmgr.json), not in de-AT.
        {"de-AT", "de-AT", "de", 1},
    };
    for (const auto& testCase : cases) {
        TempTree folder;
        const std::string root = PathOf(folder, "tree");
        std::filesystem::copy(kRoot, root, std::filesystem::copy_options::recursive);
        const std::vector<std::string> get{"get",
                                           "--root",
                                           root,
                                           "--scope",
                                           "download",
                                           "--culture",
                                           testCase.culture,
                                           "--param",
                                           "count=3",
                                           "--param",
                                           "folders=2",
                                           "--param",
                                           "fileName=a.txt",
                                           "status",
                                           "summary",
                                           "saveHint"};
        const std::string servedBefore = Locmgr(get).out;

        ProcessResult result = Locmgr({"init", "--root", root, "--culture", testCase.culture});
        ASSERT_EQ(0, result.exitStatus) << result.err;
        for (const std::string scope : {"common", "download", "settings"}) {
            const std::string created = root + "/" + testCase.folder + "/Locs/" + scope + ".lt";
            EXPECT_EQ(ReadFile(root + "/" + testCase.from + "/Locs/" + scope + ".lt"),
                      ReadFile(created))
                << created;
            EXPECT_THAT(result.out, HasSubstr(created + ": new, a copy of "));
        }
        EXPECT_EQ(servedBefore, Locmgr(get).out) << testCase.culture;
        const ProcessResult check = Locmgr({"check", "--root", root, "--format", "json"});
        EXPECT_EQ(0, check.exitStatus);
        EXPECT_EQ(testCase.untranslated, FindingsOf(JsonOf(check), "untranslated").size());

        const std::string before = ReadFile(root + "/" + testCase.folder + "/Locs/common.lt");
        result = Locmgr({"init", "--root", root, "--culture", testCase.culture});
        EXPECT_EQ(1, result.exitStatus);
        EXPECT_THAT(result.err, HasSubstr("has a folder already"));
        EXPECT_EQ(before, ReadFile(root + "/" + testCase.folder + "/Locs/common.lt"));
    }
}

class ReviewTest : public ::testing::Test {
  protected:
    void SetUp() override {
        tree_.File("neutral/Locs/common.lt", "ok = 'OK'\n")
            .File("neutral/Locs/download.lt",
                  "title = 'Download'\nretry = 'Try again'\nstatus = 'Files: ' + $count\n")
            .File("fr/Locs/common.lt", "ok = 'OK'\n")
            .File("fr/Locs/download.lt",
                  "title = 'Télécharger'\nretry = 'Try again'\nstatus = 'Fichiers : ' + $count\n");
        ASSERT_EQ(0, Merge().exitStatus);
    }

    ProcessResult Merge(std::vector<std::string> extra = {}) {
        std::vector<std::string> arguments{"merge", "--root", PathOf(tree_), "--culture", "fr"};
        arguments.insert(arguments.end(), extra.begin(), extra.end());
        return Locmgr(arguments);
    }

    std::string Reference() const { return PathOf(tree_, "neutral/Locs/download.lt"); }
    std::string Translation() const { return PathOf(tree_, "fr/Locs/download.lt"); }

    TempTree tree_;
};

TEST_F(ReviewTest, ATranslationWaitsForReviewUntilItChangesOrIsKept) {
    Replace(Reference(), "'Download'", "'Download files'");
    Replace(Reference(), "'Files: '", "'Files found: '");
    // Never translated: the text follows the reference, and check still reports it.
    Replace(Reference(), "'Try again'", "'Retry'");
    const std::string titleReview =
        "  review title: the reference's text was 'Download' and is now 'Download files'\n";
    const std::string statusReview =
        "  review status: the reference's text was 'Files: ' + "
        "$count and is now 'Files found: ' + $count\n";
    for (int run = 0; run < 2; ++run) {
        const ProcessResult result = Merge();
        EXPECT_EQ(0, result.exitStatus) << result.err;
        EXPECT_THAT(result.out,
                    HasSubstr("download.lt: " + std::string(run == 0 ? "1 updated, " : "") +
                              "2 to review\n"));
        EXPECT_THAT(result.out, HasSubstr(titleReview + statusReview));
    }
    EXPECT_THAT(ReadFile(Translation()), HasSubstr("\nretry = 'Retry'\n"));
    ProcessResult result = Merge({"--reviewed", "download:TITLE"});
    EXPECT_EQ(0, result.exitStatus) << result.err;
    EXPECT_THAT(result.out, Not(HasSubstr(titleReview)));
    EXPECT_THAT(result.out, HasSubstr(statusReview));

    Replace(Translation(), "'Fichiers : '", "'Fichiers trouvés : '");
    result = Merge();
    EXPECT_THAT(result.out, HasSubstr("download.lt: up to date\n"));

    // A review asked for no longer is a mistake to point out, not to ignore.
    result = Merge({"--reviewed", "download:title"});
    EXPECT_EQ(1, result.exitStatus);
    EXPECT_THAT(result.err, HasSubstr("no translation of 'title' in scope 'download' waits"));
}

TEST_F(ReviewTest, ARecordThatCannotBeReadStopsTheMerge) {
    const std::string record = PathOf(tree_, "locmgr.merge.json");
    for (const std::string content :
         {"{", R"({"locmgrMerge": 2})", R"({"locmgrMerge": 1, "cultures": {"fr": []}})",
          R"({"locmgrMerge": 1, "cultures": {"fr": {"reference": "neutral", "scopes":
              {"download": {"title": {"reference": 3}}}}}})"}) {
        std::ofstream(record, std::ios::binary | std::ios::trunc) << content;
        const std::string before = ReadFile(Translation());
        Replace(Reference(), "= 'Download", "= 'Download it");
        const ProcessResult result = Merge();
        EXPECT_EQ(2, result.exitStatus) << content;
        EXPECT_THAT(result.err, HasSubstr("locmgr.merge.json")) << content;
        EXPECT_EQ(content, ReadFile(record));
        EXPECT_EQ(before, ReadFile(Translation()));
    }
}

// A file merge would have to guess about is named and left as it was; the other scopes are
// merged.
TEST(MergeCommandTest, FilesThatCannotBeMergedAreLeftAsTheyWere) {
    const struct {
        std::string file;
        std::string content;
        std::string errPart;
    } cases[] = {
        {"fr/Locs/download.lt", "title = 'Titre\n", "cannot be loaded (line 2: expecting"},
        {"fr/Locs/download.lt", "title = 'a'\nTitle = 'b'\n", "defines 'Title' more than once"},
        {"fr/Locs/download.lt", "\xEF\xBB\xBF", "cannot be loaded ("},
        // The runtime reads malformed UTF-8 as U+FFFD; writing the file would change it.
        {"fr/Locs/download.lt", "title = '\xC3\x28'\n", "cannot be merged"},
        {"neutral/Locs/download.lt", "title = \n", "the reference's file"},
    };
    for (const auto& testCase : cases) {
        TempTree tree;
        tree.File("neutral/Locs/common.lt", "ok = 'OK'\n")
            .File("neutral/Locs/download.lt", "title = 'Download'\nmore = 'More'\n")
            .File("fr/Locs/download.lt", "title = 'Titre'\n")
            .File(testCase.file, testCase.content);
        const std::string file = PathOf(tree, "fr/Locs/download.lt");
        const std::string before = ReadFile(file);
        const ProcessResult result = Locmgr({"merge", "--root", PathOf(tree), "--culture", "fr"});
        EXPECT_EQ(1, result.exitStatus) << testCase.content;
        EXPECT_THAT(result.err, HasSubstr("scope download left as it was"));
        EXPECT_THAT(result.err, HasSubstr(testCase.errPart)) << testCase.content;
        EXPECT_EQ(before, ReadFile(file)) << testCase.content;
        EXPECT_EQ(ReadFile(PathOf(tree, "neutral/Locs/common.lt")),
                  ReadFile(PathOf(tree, "fr/Locs/common.lt")));
    }
}

// The file merged is the one the runtime reads: a culture's file in the alternative directory
// hides its file in the root.
TEST(MergeCommandTest, TheCulturesFileInTheAlternativeDirectoryIsTheOneMerged) {
    TempTree tree;
    tree.File("root/neutral/Locs/common.lt", "ok = 'OK'\n")
        .File("root/neutral/Locs/download.lt", "title = 'Download'\nmore = 'More'\n")
        .File("root/de/Locs/download.lt", "title = 'Laden'\n")
        .File("alt/de/Locs/download.lt", "title = 'Herunterladen'\n");
    const ProcessResult result =
        Locmgr({"merge", "--root", PathOf(tree, "root"), "--alt", PathOf(tree, "alt"), "--culture",
                "de", "--scope", "download"});
    ASSERT_EQ(0, result.exitStatus) << result.err;
    EXPECT_EQ("title = 'Herunterladen'\nmore = 'More'\n",
              ReadFile(PathOf(tree, "alt/de/Locs/download.lt")));
    EXPECT_EQ("title = 'Laden'\n", ReadFile(PathOf(tree, "root/de/Locs/download.lt")));
}

TEST(MergeCommandTest, UsageErrorsChangeNothing) {
    TempTree tree;
    tree.File("neutral/Locs/common.lt", "ok = 'OK'\n").File("fr/Locs/common.lt", "x = 'y'\n");
    const std::string root = PathOf(tree);
    const struct {
        std::vector<std::string> arguments;
        std::string errPart;
    } cases[] = {
        {{"merge", "--root", root}, "missing --culture"},
        {{"merge", "--root", root, "--culture", "fr", "--reviewed", "title"}, "SCOPE:KEY"},
        {{"merge", "--root", root, "--culture", "fr", "--scope", "nope"}, "no texts of scope"},
        {{"merge", "--root", root, "--culture", "fr", "--reference", "fr"}, "is the reference"},
        {{"merge", "--root", root, "--culture", "klingon"}, "unknown culture name"},
        {{"init", "--root", root + "/none", "--culture", "de"}, "cannot read"},
    };
    for (const auto& testCase : cases) {
        const ProcessResult result = Locmgr(testCase.arguments);
        EXPECT_EQ(2, result.exitStatus) << testCase.arguments.back();
        EXPECT_THAT(result.err, HasSubstr(testCase.errPart));
        EXPECT_EQ("x = 'y'\n", ReadFile(PathOf(tree, "fr/Locs/common.lt")));
        EXPECT_FALSE(std::filesystem::exists(PathOf(tree, "locmgr.merge.json")));
    }
}

}  // namespace
}  // namespace locmgr::testing
