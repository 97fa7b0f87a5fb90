// "locmgr import" writes translations back so that the module serves exactly what the catalogs
// say: an untouched catalog changes no byte, a culture rebuilt from its catalog alone serves
// what it served before for every number, a real tool's rewrite of every translation shows in
// every text, and a translation with a wrong placeholder is refused as a whole.

#include "File/TempTree.h"
#include "ToolTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace locmgr::testing {
namespace {

using ::testing::HasSubstr;

const std::vector<std::string> kDownloadKeys{"title",  "windowTitle", "status",  "progress",
                                             "paused", "summary",     "cleanup", "saveHint",
                                             "failed", "done"};

class ImportCommandTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::copy(kRoot, Tree(), std::filesystem::copy_options::recursive);
    }

    std::string Tree() const { return std::filesystem::path(folder_.Path("tree")).string(); }
    std::string Catalogs() const {
        return std::filesystem::path(folder_.Path("catalogs")).string();
    }

    void Export(const std::string& format) {
        const ProcessResult result = Locmgr({"export", "--root", Tree(), "--culture", "ru", "--out",
                                             Catalogs(), "--format", format});
        ASSERT_EQ(0, result.exitStatus) << result.err;
    }

    ProcessResult Import(const std::string& catalog) {
        return Locmgr({"import", "--root", Tree(), "--culture", "ru", "--in", catalog});
    }

    // What the module serves in ru for every key of the download scope, with the numbers
    // 0..1000 (and the other number in step with it), one answer per line.
    std::string Served() const {
        std::string requests;
        for (const std::string& key : kDownloadKeys) {
            for (int number = 0; number <= 1000; ++number) {
                requests += R"({"scope": "download", "culture": "ru", "key": ")" + key +
                            R"(", "params": {"count": )" + std::to_string(number) +
                            R"(, "folders": )" + std::to_string((number * 7) % 1001) +
                            R"(, "fileName": "f.txt", "percent": 5}})" + "\n";
            }
        }
        const ProcessResult result = Locmgr({"batch", "--root", Tree()}, requests);
        EXPECT_EQ(0, result.exitStatus) << result.out.substr(0, 500);
        return result.out;
    }

    LocalizationManager::Testing::TempTree folder_;
};

TEST_F(ImportCommandTest, RoundTripsServeTheSameTexts) {
    const std::string served = Served();
    const std::string file = Tree() + "/ru/Locs/download.lt";
    const std::string before = ReadFile(file);
    for (const std::string format : {"po", "xliff"}) {
        Export(format);
        const std::string catalog =
            Catalogs() + (format == "po" ? "/download.po" : "/download.xlf");
        // Untouched: not a byte changes.
        ProcessResult result = Import(catalog);
        ASSERT_EQ(0, result.exitStatus) << result.err;
        EXPECT_THAT(result.out, HasSubstr("scope download unchanged"));
        EXPECT_EQ(before, ReadFile(file));
        // Rebuilt from the catalog alone: the culture's file starts from the neutral one and
        // takes every text from the catalog.
        std::filesystem::remove(file);
        result = Import(catalog);
        ASSERT_EQ(0, result.exitStatus) << result.err;
        EXPECT_THAT(result.out, HasSubstr("download.lt written"));
        EXPECT_EQ(served, Served()) << format;
        std::ofstream(file, std::ios::binary) << before;
    }
}

TEST_F(ImportCommandTest, ARealToolsRewriteOfEveryTranslationShowsInEveryText) {
    const std::string msgfilter = "/usr/bin/msgfilter";
    if (!std::filesystem::exists(msgfilter)) {
        GTEST_SKIP() << "msgfilter is not installed";
    }
    const std::vector<std::string> before = Lines(Served());
    Export("po");
    // msgfilter rewrites the header too, so the scope comes from the file's name.
    std::filesystem::create_directories(Catalogs() + "/rewritten");
    const ProcessResult filtered =
        RunProcess({msgfilter, "-i", Catalogs() + "/download.po", "-o",
                    Catalogs() + "/rewritten/download.po", "sed", "-e", "s/^/[x]/"});
    ASSERT_EQ(0, filtered.exitStatus) << filtered.err;
    const ProcessResult result = Import(Catalogs() + "/rewritten/download.po");
    ASSERT_EQ(0, result.exitStatus) << result.err;
    const std::vector<std::string> after = Lines(Served());
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t line = 0; line < before.size(); ++line) {
        // {"ok": true, "text": "..."}: the text starts with the prefix, and is what it was
        // without the prefixes (a text that takes another's through a reference has two).
        const std::size_t text = before[line].find("\"text\": \"") + 9;
        EXPECT_EQ(before[line].substr(0, text) + "[x]", after[line].substr(0, text + 3));
        std::string stripped = after[line];
        for (std::size_t at; (at = stripped.find("[x]")) != std::string::npos;) {
            stripped.erase(at, 3);
        }
        ASSERT_EQ(before[line], stripped);
    }
}

TEST_F(ImportCommandTest, AWrongPlaceholderRefusesTheWholeCatalog) {
    Export("po");
    const std::string file = Tree() + "/ru/Locs/download.lt";
    const std::string before = ReadFile(file);
    std::string catalog = ReadFile(Catalogs() + "/download.po");
    const struct {
        std::string from;
        std::string to;
        std::string message;
    } cases[] = {
        {"«{fileName}»", "«{fileNmae}»",
         "unit 'progress': {fileNmae} is not a placeholder of the source; did you mean "
         "{fileName}?"},
        {"({percent}%)\"\n\n", "(%)\"\n\n",
         "unit 'progress': the translation drops {percent}, which the source has"},
        {"Загрузка\"", "Загрузка {\"", "unit 'title': translation 0: a '{' that opens no"},
    };
    for (const auto& test : cases) {
        std::string changed = catalog;
        const std::size_t at = changed.find("msgstr \"Загрузка");
        ASSERT_NE(std::string::npos, changed.find(test.from, at)) << test.from;
        changed.replace(changed.find(test.from, at), test.from.size(), test.to);
        // A change elsewhere in the same catalog that alone would be taken.
        const std::string paused = "Пауза";
        changed.replace(changed.find(paused), paused.size(), "Стоп");
        folder_.File("catalogs/download.po", changed);
        const ProcessResult result = Import(Catalogs() + "/download.po");
        EXPECT_EQ(1, result.exitStatus);
        EXPECT_THAT(result.err, HasSubstr(test.message));
        EXPECT_EQ(before, ReadFile(file));
    }
}

TEST_F(ImportCommandTest, UnreadableCatalogsAreNamedAndChangeNothing) {
    const std::string file = Tree() + "/ru/Locs/download.lt";
    const std::string before = ReadFile(file);
    const struct {
        std::string name;
        std::string content;
        std::string message;
    } cases[] = {
        {"download.po", "msgid \"a\nmsgstr \"b\"\n", "download.po:2: end-of-line within string"},
        {"download.xlf", "<?xml version=\"1.0\"?><xliff><file original=\"download\"><body>",
         "download.xlf: not well-formed XML"},
        {"download.xlf", "<?xml version=\"1.0\"?><html/>", "not an XLIFF document"},
        {"nothing.po", "msgid \"\"\nmsgstr \"Project-Id-Version: none\\n\"\n",
         "names no scope of the reference (neither 'none' nor 'nothing')"},
        // An entity is never read from elsewhere; the empty target is no translation.
        {"download.xlf",
         "<?xml version=\"1.0\"?><!DOCTYPE x [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>"
         "<xliff><file original=\"download\"><body><trans-unit id=\"title\"><source>a</source>"
         "<target>&e;</target></trans-unit></body></file></xliff>",
         ""},
    };
    for (const auto& test : cases) {
        folder_.File("bad/" + test.name, test.content);
        const ProcessResult result =
            Import(std::filesystem::path(folder_.Path("bad/" + test.name)).string());
        EXPECT_EQ(test.message.empty() ? 0 : 1, result.exitStatus) << test.name;
        EXPECT_THAT(result.err, HasSubstr(test.message));
        EXPECT_EQ(before, ReadFile(file));
    }
}

}  // namespace
}  // namespace locmgr::testing
