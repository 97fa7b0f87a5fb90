// "locmgr export" writes catalogs that GNU gettext's own checker and the Translate Toolkit
// accept, with the culture's plural rule and texts, the same texts in PO and in XLIFF.

#include "File/TempTree.h"
#include "ToolTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

namespace locmgr::testing {
namespace {

using ::testing::HasSubstr;

class ExportCommandTest : public ::testing::Test {
  protected:
    std::string Out() const { return std::filesystem::path(folder_.Path("po")).string(); }
    std::string XliffOut() const { return std::filesystem::path(folder_.Path("xliff")).string(); }

    // The texts of a catalog as the Translate Toolkit reads them, a line per form; empty when
    // the toolkit is not installed.
    static std::string ToolkitTexts(const std::string& catalog) {
        const ProcessResult result = RunProcess(
            {"/usr/bin/python3", std::string(LM_TOOLS_TEST_DATA) + "/catalog-texts.py", catalog});
        EXPECT_TRUE(result.exitStatus == 0 || result.exitStatus == 3) << result.err;
        return result.exitStatus == 0 ? result.out : std::string();
    }

    // Exports `culture` in both formats and expects the toolkit to read the same texts from
    // both: `forms` of them in the download scope.
    void ExpectSameTextsInBothFormats(const std::string& culture, std::size_t forms) {
        for (const auto& [format, out] : {std::pair{"po", Out()}, std::pair{"xliff", XliffOut()}}) {
            const ProcessResult result = Locmgr({"export", "--root", kRoot, "--culture", culture,
                                                 "--out", out, "--format", format});
            ASSERT_EQ(0, result.exitStatus) << result.err;
        }
        for (const char* scope : {"common", "download", "settings"}) {
            const std::string po = ToolkitTexts(Out() + "/" + scope + ".po");
            if (po.empty()) {
                GTEST_SKIP() << "the Translate Toolkit is not installed";
            }
            EXPECT_EQ(po, ToolkitTexts(XliffOut() + "/" + scope + ".xlf")) << scope;
            if (std::string(scope) == "download") {
                EXPECT_EQ(forms, static_cast<std::size_t>(std::count(po.begin(), po.end(), '\n')));
            }
        }
    }

    LocalizationManager::Testing::TempTree folder_;
};

TEST_F(ExportCommandTest, CatalogsPassGettextsCheckAndCarryTheCulturesTexts) {
    const ProcessResult result =
        Locmgr({"export", "--root", kRoot, "--culture", "ru", "--out", Out()});
    ASSERT_EQ(0, result.exitStatus) << result.err;
    EXPECT_EQ(Out() + "/common.po: 8 units, 8 translated\n" + Out() +
                  "/download.po: 14 units, 14 translated\n" + Out() +
                  "/settings.po: 10 units, 10 translated\n",
              result.out);
    const std::string download = ReadFile(Out() + "/download.po");
    EXPECT_THAT(download, HasSubstr("\"Plural-Forms: nplurals=3; plural=(n % 10 == 1 && n % 100 "
                                    "!= 11) ? 0 : (n % 10 >= 2 && n % 10 <= 4 && (n % 100 < 10 "
                                    "|| n % 100 >= 20)) ? 1 : 2;\\n\"\n"));
    EXPECT_THAT(download, HasSubstr("#. window caption\n"));
    EXPECT_THAT(download, HasSubstr("msgctxt \"progress\"\n"
                                    "msgid \"Downloading {fileName} ({percent}%)\"\n"));
    // The second discriminator's forms are units of their own, each with whole sentences; the
    // source sentence is the reference's for a number the unit's form stands for.
    EXPECT_THAT(download, HasSubstr("#. {folders} is 1, 21, 31, 41, ... here\n"
                                    "#: neutral/Locs/download.lt:17\n"
                                    "#, python-brace-format\n"
                                    "msgctxt \"summary|folders=0\"\n"
                                    "msgid \"One file in {folders} folders.\"\n"
                                    "msgid_plural \"{count} files in {folders} folders.\"\n"
                                    "msgstr[0] \"{count} файл в {folders} папке.\"\n"));

    // GNU gettext comes with the project's dependencies (the benchmarks use it).
    const std::string msgfmt = "/usr/bin/msgfmt";
    if (!std::filesystem::exists(msgfmt)) {
        GTEST_SKIP() << "msgfmt is not installed";
    }
    for (const char* scope : {"common", "download", "settings"}) {
        const ProcessResult check = RunProcess(
            {msgfmt, "-c", "--check-format", "-o", "/dev/null", Out() + "/" + scope + ".po"});
        EXPECT_EQ(0, check.exitStatus) << scope << ": " << check.err;
    }
}

TEST_F(ExportCommandTest, PoAndXliffCarryTheSameTextsForTheToolkit) {
    // ru: 3 forms, translated.
    ExpectSameTextsInBothFormats("ru", 26);
    EXPECT_THAT(ReadFile(XliffOut() + "/download.xlf"),
                HasSubstr("<source>Downloading <ph id=\"fileName\" ctype=\"x-parameter\">"
                          "{fileName}</ph> (<ph id=\"percent\" ctype=\"x-parameter\">{percent}"
                          "</ph>%)</source>\n"));
    // fr: 2 forms, nothing translated.
    ExpectSameTextsInBothFormats("fr", 16);
    EXPECT_THAT(ReadFile(XliffOut() + "/download.xlf"),
                HasSubstr("<target state=\"needs-translation\"/>"));
}

TEST_F(ExportCommandTest, ACultureWithoutTextsOfItsOwnExportsEmptyTargets) {
    const ProcessResult result = Locmgr(
        {"export", "--root", kRoot, "--culture", "fr", "--scope", "download", "--out", Out()});
    ASSERT_EQ(0, result.exitStatus) << result.err;
    EXPECT_EQ(Out() + "/download.po: 12 units, 0 translated\n", result.out);
    EXPECT_THAT(ReadFile(Out() + "/download.po"), HasSubstr("msgid \"Download\"\nmsgstr \"\"\n"));
}

TEST_F(ExportCommandTest, BadRequestsAreRefused) {
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string message;
    } cases[] = {
        {{"--culture", "xx"}, 2, "unknown culture name 'xx'"},
        {{"--culture", "ru", "--scope", "nothing"}, 2, "no texts of scope 'nothing'"},
        {{"--culture", "ru", "--format", "mo"}, 2, "unknown --format 'mo'"},
    };
    for (const auto& test : cases) {
        std::vector<std::string> arguments{"export", "--root", kRoot, "--out", Out()};
        arguments.insert(arguments.end(), test.arguments.begin(), test.arguments.end());
        const ProcessResult result = Locmgr(arguments);
        EXPECT_EQ(test.status, result.exitStatus) << test.message;
        EXPECT_THAT(result.err, HasSubstr(test.message));
    }
    // A culture whose file does not parse is named, and nothing is written for it.
    const ProcessResult broken = Locmgr(
        {"export", "--root", kBroken, "--culture", "ru", "--scope", "settings", "--out", Out()});
    EXPECT_EQ(1, broken.exitStatus);
    EXPECT_THAT(broken.err, HasSubstr("scope settings not written: the culture's file"));
}

}  // namespace
}  // namespace locmgr::testing
