#include "File/TempTree.h"
#include "ulo/rtl/FileSystem.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

using LocalizationManager::Testing::TempTree;

TEST(FileSystemTest, QueriesPaths) {
    TempTree tree;
    tree.Directory("dir").File("file", "x");
    const std::u16string root = tree.Path();
    const struct {
        const char* name;
        std::u16string path;
        std::int32_t query;
        std::int32_t isDirectory;
    } cases[] = {
        {"directory", root + u"/dir", ulo::kResultOk, ulo::kResultOk},
        {"directory with slash", root + u"/dir/", ulo::kResultOk, ulo::kResultOk},
        {"file", root + u"/file", ulo::kResultOk, ulo::kResultFalse},
        {"missing", root + u"/missing", ulo::kResultPlatformFileNotFound,
         ulo::kResultPlatformFileNotFound},
        {"through a file", root + u"/file/x", ulo::kResultPlatformPathNotFound,
         ulo::kResultPlatformPathNotFound},
        {"empty", u"", ulo::kResultPlatformFileNotFound, ulo::kResultPlatformFileNotFound},
        {"lone surrogate", root + u"/\xD800", ulo::kResultPlatformInvalidPathName,
         ulo::kResultPlatformInvalidPathName},
        // Cut at the NUL, the path would name the existing directory.
        {"NUL unit", root + u"/dir" + std::u16string(1, u'\0') + u"x",
         ulo::kResultPlatformInvalidPathName, ulo::kResultPlatformInvalidPathName},
        {"too long", root + u"/" + std::u16string(300, u'a'), ulo::kResultPlatformInvalidPathName,
         ulo::kResultPlatformInvalidPathName},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        EXPECT_EQ(test.query, ulo::filesystem::QueryPath(test.path));
        EXPECT_EQ(test.query == ulo::kResultOk, ulo::filesystem::Exists(test.path));
        EXPECT_EQ(test.isDirectory, ulo::filesystem::IsDirectory(test.path));
    }
}

TEST(FileSystemTest, NonAsciiNamesReachTheFileSystemAsUtf8) {
    TempTree tree;
    tree.File(
        "gr\xC3\xB6\xC3\x9F"
        "e-\xF0\x9F\x98\x80.lt",
        "x");
    EXPECT_TRUE(ulo::filesystem::Exists(tree.Path() + u"/größe-\xD83D\xDE00.lt"));
}

}  // namespace
