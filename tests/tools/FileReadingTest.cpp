// Every locmgr command reads a text file as the module does (File::GetFileContent): what the
// module refuses, the tool refuses at once with the module's message, and what the module
// decodes (U+FFFD for malformed UTF-8, trailing NULs dropped) the tool decodes alike.

#include "File/TempTree.h"
#include "ToolTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace locmgr::testing {
namespace {

using LocalizationManager::Testing::TempTree;
using nlohmann::json;
using ::testing::EndsWith;
using ::testing::HasSubstr;

const std::string kReadFailure = ": cannot read the file: ";

struct Case {
    std::string name;
    // Makes the scope file neutral/Locs/<name>.lt in `tree`.
    void (*make)(TempTree& tree, const std::string& relative);
    // For a file the module reads: the entry parse prints and the text of key "a".
    std::string entry;
    std::string text;
    // For one it refuses: part of the module's message.
    std::string failure;
};

const Case kCases[] = {
    {"fifo", [](TempTree& tree, const std::string& relative) { tree.Fifo(relative); }, "", "",
     "Cannot open file, error: "},
    {"dev_zero",
     [](TempTree& tree, const std::string& relative) {
         tree.Directory("neutral/Locs");
         std::filesystem::create_symlink("/dev/zero", std::filesystem::path(tree.Path(relative)));
     },
     "", "", "Cannot open file, error: "},
    {"trailing_nuls",
     [](TempTree& tree, const std::string& relative) {
         tree.File(relative, std::string("a = 'x'\n\0\0\0", 11));
     },
     "a = 'x'\n", "x", ""},
    {"invalid_utf8",
     [](TempTree& tree, const std::string& relative) { tree.File(relative, "a = 'x\xFF\xC3y'\n"); },
     "a = 'x\uFFFD\uFFFDy'\n", "x\uFFFD\uFFFDy", ""},
    {"bom_only",
     [](TempTree& tree, const std::string& relative) { tree.File(relative, "\xEF\xBB\xBF"); }, "",
     "", "MultiByteToWideChar conversion failed"},
    {"bom_and_text",
     [](TempTree& tree, const std::string& relative) {
         tree.File(relative,
                   "\xEF\xBB\xBF"
                   "a = 'x'\n");
     },
     "a = 'x'\n", "x", ""},
};

TEST(FileReadingTest, EveryCommandReadsAsTheModuleDoes) {
    for (const Case& testCase : kCases) {
        SCOPED_TRACE(testCase.name);
        TempTree tree;
        tree.File("neutral/Locs/common.lt", "c = 'common'\n");
        const std::string relative = "neutral/Locs/" + testCase.name + ".lt";
        testCase.make(tree, relative);
        const std::string root = std::filesystem::path(tree.Path()).string();
        const std::string file = std::filesystem::path(tree.Path(relative)).string();

        const auto started = std::chrono::steady_clock::now();
        const ProcessResult parse = Locmgr({"parse", file});
        const ProcessResult get =
            Locmgr({"get", "--root", root, "--scope", testCase.name, "--culture", "en", "a"});
        const ProcessResult check = Locmgr({"check", "--root", root, "--format", "json"});
        const ProcessResult explain =
            Locmgr({"explain", "--root", root, "--scope", testCase.name, "--culture", "en", "a"});
        TempTree out;
        const ProcessResult pseudo = Locmgr({"pseudo", "--root", root, "--out",
                                             std::filesystem::path(out.Path("pseudo")).string()});
        // A FIFO without a writer or an endless device must not hold anything up.
        EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(20));

        if (testCase.failure.empty()) {
            EXPECT_EQ(0, parse.exitStatus) << parse.err;
            EXPECT_EQ("# " + file + ": 1 entries\n" + testCase.entry, parse.out);
            EXPECT_EQ(0, get.exitStatus) << get.err;
            EXPECT_EQ(testCase.text + "\n", get.out);
            EXPECT_EQ(0, check.exitStatus) << check.out;
            EXPECT_THAT(explain.out, HasSubstr("  1. text \"" + testCase.text + "\"\n"));
            EXPECT_THAT(pseudo.out, HasSubstr(testCase.name + ".lt: 1 keys from "));
            continue;
        }
        // parse names the file and gives the module's message, which the module's own
        // tracer line for the same file ends with.
        EXPECT_EQ(1, parse.exitStatus);
        EXPECT_EQ("", parse.out);
        ASSERT_THAT(parse.err, HasSubstr(file + kReadFailure));
        const std::string message = parse.err.substr(file.size() + kReadFailure.size());
        EXPECT_THAT(message, HasSubstr(testCase.failure));
        EXPECT_EQ(1, get.exitStatus);
        EXPECT_THAT(get.err, EndsWith(message));
        // check reports the file as unreadable, in the same words.
        const auto unreadable = FindingsOf(JsonOf(check), "unreadable-file");
        ASSERT_EQ(1u, unreadable.size()) << check.out;
        const std::string line = message.substr(0, message.size() - 1);
        EXPECT_EQ("cannot read the file: " + line, unreadable[0]["message"].get<std::string>());
        // explain says why the request fails, pseudo why it wrote no copy.
        EXPECT_THAT(explain.out, HasSubstr(testCase.name + ".lt: " + line + "\n"));
        EXPECT_THAT(pseudo.out + pseudo.err,
                    HasSubstr(testCase.name + ".lt: not written: " + line));
    }
}

// "parse -" hands standard input to the same reading as a file: the same entries, the same
// failure, only the name differs.
TEST(FileReadingTest, StandardInputReadsAsAFile) {
    const auto named = [](std::string text, const std::string& file) {
        for (std::size_t at = text.find(file); at != std::string::npos; at = text.find(file)) {
            text.replace(at, file.size(), "<stdin>");
        }
        return text;
    };
    for (const Case& testCase : kCases) {
        TempTree tree;
        const std::string relative = "neutral/Locs/" + testCase.name + ".lt";
        testCase.make(tree, relative);
        const std::filesystem::path file = tree.Path(relative);
        if (!std::filesystem::is_regular_file(std::filesystem::symlink_status(file))) {
            continue;
        }
        SCOPED_TRACE(testCase.name);
        std::ifstream stream(file, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(stream), {}};

        const ProcessResult fromFile = Locmgr({"parse", file.string()});
        const ProcessResult fromInput = Locmgr({"parse", "-"}, bytes);
        EXPECT_EQ(fromFile.exitStatus, fromInput.exitStatus);
        EXPECT_EQ(named(fromFile.out, file.string()), fromInput.out);
        EXPECT_EQ(named(fromFile.err, file.string()), fromInput.err);
    }
    // Read once only: a second "-" would silently read nothing.
    const ProcessResult twice = Locmgr({"parse", "-", "-"}, "a = 'x'\n");
    EXPECT_EQ(2, twice.exitStatus);
    EXPECT_THAT(twice.err, HasSubstr("standard input ('-') can be read only once"));
}

}  // namespace
}  // namespace locmgr::testing
