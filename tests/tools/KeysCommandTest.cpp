// "locmgr keys" and "unused": the header compiles for the keys a scope has and not for a
// misspelt one, names every parameter any culture's text asks for and gives every key a
// constant; unused finds the keys sources leave out and the ones they ask for in vain.

#include "File/TempTree.h"
#include "ToolTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace locmgr::testing {
namespace {

using LocalizationManager::Testing::TempTree;
using ::testing::HasSubstr;

// Whether `program`, with the header at `header` included, compiles against the host library.
bool Compiles(const std::string& header, const std::string& program, const TempTree& folder) {
    const std::string source = std::filesystem::path(folder.Path("use.cpp")).string();
    std::ofstream(source) << "#include \"" << header << "\"\n"
                          << "#include \"localization_manager/host/Localization.h\"\n"
                          << program << "\n";
    return RunProcess({LM_CXX_COMPILER, "-std=c++17", "-fsyntax-only", "-I" LM_HOST_INCLUDE_DIR,
                       "-I" LM_PUBLIC_INCLUDE_DIR, "-I" LM_GENERATED_INCLUDE_DIR, source})
               .exitStatus == 0;
}

TEST(KeysCommandTest, TheHeaderCompilesForTheScopesKeysOnly) {
    TempTree folder;
    const std::string header = std::filesystem::path(folder.Path("download_keys.h")).string();
    const ProcessResult result = Locmgr({"keys", "--root", kRoot, "--scope", "download",
                                         "--namespace", "app::text", "--header", header});
    ASSERT_EQ(0, result.exitStatus) << result.err;
    EXPECT_EQ(header + ": 18 keys of scope download\n", result.out);
    const std::string use = R"(
        void Show(const localization_manager::host::ScopeTexts& texts) {
            texts.Get(app::text::download::%s, {{"count", 3}, {"folders", 2}});
        })";
    const auto with = [&use](const std::string& key) {
        std::string program = use;
        program.replace(program.find("%s"), 2, key);
        return program;
    };
    // A key of the scope, and one of the common texts that every scope reads.
    EXPECT_TRUE(Compiles(header, with("summary"), folder));
    EXPECT_TRUE(Compiles(header, with("appName"), folder));
    EXPECT_FALSE(Compiles(header, with("sumary"), folder));
    EXPECT_TRUE(Compiles(header,
                         "static_assert(app::text::download::kAll.size() == 18);\n"
                         "static_assert(app::text::download::summary.parameterCount == 2);\n"
                         "static_assert(app::text::download::summary.parameters[1] == "
                         "\"folders\");\n"
                         "static_assert(app::text::download::title.parameterCount == 0);",
                         folder));
}

// Every culture's text counts: a German text that shows a number the English one leaves out
// still needs it from the application.
TEST(KeysCommandTest, ParametersOfEveryCultureAndKeysCppReserves) {
    TempTree tree;
    tree.File("neutral/Locs/common.lt", "ok = 'OK'\n")
        .File("neutral/Locs/dialogs/save-as.lt",
              "delete = 'Delete'\nsize = 'Size: ' + $size\n_x = 'x'\nkAll = 'all'\n"
              "title = 'Files'\n")
        .File("de/Locs/dialogs/save-as.lt",
              "delete = 'Löschen'\nsize = 'Größe: ' + $size\n_x = 'x'\nkAll = 'alle'\n"
              "title = $count + ' Dateien' + name\nname = ' von ' + $owner\n");
    const std::string root = std::filesystem::path(tree.Path()).string();
    ProcessResult result = Locmgr({"keys", "--root", root, "--scope", "dialogs/save-as"});
    ASSERT_EQ(0, result.exitStatus) << result.err;
    for (const std::string expected :
         {"namespace keys::dialogs::save_u002Das {",
          "inline constexpr std::string_view title[] = {\"count\", \"owner\"};",
          "TextKey kdelete{\"delete\"};", "TextKey size{\"size\", parameters::size, 1};",
          "TextKey k_x{\"_x\"};", "TextKey kkAll{\"kAll\"};", "TextKey ok{\"ok\"};"}) {
        EXPECT_THAT(result.out, HasSubstr(expected));
    }

    tree.File("neutral/Locs/dialogs/save-as.lt", "delete = 'a'\nkdelete = 'b'\n");
    result = Locmgr({"keys", "--root", root, "--scope", "dialogs/save-as"});
    EXPECT_EQ(1, result.exitStatus);
    EXPECT_THAT(result.err, HasSubstr("'delete' and 'kdelete' would both be the constant kdelete"));
    result = Locmgr({"keys", "--root", root, "--scope", "none"});
    EXPECT_EQ(1, result.exitStatus);
    EXPECT_THAT(result.err, HasSubstr("no texts of scope 'none'"));
    result = Locmgr({"keys", "--root", root, "--scope", "common", "--namespace", "a::1b"});
    EXPECT_EQ(1, result.exitStatus);
    EXPECT_THAT(result.err, HasSubstr("'a::1b' is not a C++ namespace name"));
}

}  // namespace
}  // namespace locmgr::testing

namespace locmgr::testing {
namespace {

TEST(UnusedCommandTest, KeysNoSourceUsesAndKeysSourcesAskForInVain) {
    TempTree tree;
    tree.File("loc/neutral/Locs/common.lt", "ok = 'OK'\nunusedCommon = 'x'\n")
        .File("loc/neutral/Locs/dialogs/save.lt",
              "title = 'Save'\nsize = 'Size'\nnever = 'Never'\ndelete = 'Delete'\n")
        .File("src/app.cpp",
              "// texts.Get(\"never\") is a comment\n"
              "auto a = texts.Get(app::keys::dialogs::save::title);\n"
              "auto b = texts.Get(\"SIZE\");\n"
              "auto c = texts.Get(\"titel\");\n"
              "auto d = save::kdelete;\n")
        .File("src/ui/labels.h", "const char* kOk = \"ok\";\n")
        .File("src/notes.txt", "never unusedCommon\n");
    const std::string root = std::filesystem::path(tree.Path("loc")).string();
    const std::string sources = std::filesystem::path(tree.Path("src")).string();
    // A header "locmgr keys" wrote names every key, and is no use of them.
    ASSERT_EQ(0, Locmgr({"keys", "--root", root, "--scope", "dialogs/save", "--header",
                         sources + "/save_keys.h"})
                     .exitStatus);

    ProcessResult result = Locmgr({"unused", "--root", root, "--source", sources});
    EXPECT_EQ(1, result.exitStatus) << result.err;
    EXPECT_EQ(root + "/neutral/Locs/common.lt:2: key 'unusedCommon' is used by no source file\n" +
                  root +
                  "/neutral/Locs/dialogs/save.lt:3: key 'never' is used by no source file\n" +
                  sources + "/app.cpp:4: 'titel' is asked for, and the reference has no such key " +
                  "(did you mean 'title'?)\n" +
                  "2 unused keys, 1 unknown keys asked for, in 2 source files\n",
              result.out);

    tree.File("src/more.cpp",
              "Get(\"never\"); Get(\"unusedCommon\"); Get(\"title\"); "
              "Get(\"size\"); Get(\"delete\");")
        .File("src/app.cpp", "");
    result = Locmgr({"unused", "--root", root, "--source", sources});
    EXPECT_EQ(0, result.exitStatus) << result.out;
    result = Locmgr({"unused", "--root", root, "--source", sources + "/none"});
    EXPECT_EQ(2, result.exitStatus);
    EXPECT_THAT(result.err, HasSubstr("no source file or folder"));
}

}  // namespace
}  // namespace locmgr::testing
