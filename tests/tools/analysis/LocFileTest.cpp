// Loading a file as the runtime does, and going past the first duplicate key to what the
// runtime would report next.

#include "File/TempTree.h"
#include "LocFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace locmgr::analysis {
namespace {

using LocalizationManager::Testing::TempTree;
using ::testing::HasSubstr;

TEST(LocFileTest, ReportsEveryDuplicateAndParsesTheRest) {
    TempTree tree;
    tree.File("a.lt",
              "Title = 'x'\n"
              "other = 'y'\n"
              "title = 'z'\n"
              "OTHER = 'w' +\n"
              "   'v'\n"
              "last = title\n");
    const LocFile file(tree.Path("a.lt"));
    EXPECT_FALSE(file.Loadable());
    EXPECT_FALSE(file.ParseError());
    ASSERT_EQ(2u, file.Duplicates().size());
    EXPECT_EQ(u"title", file.Duplicates()[0].lowerKey);
    EXPECT_EQ(1, file.Duplicates()[0].first.line);
    EXPECT_EQ(3, file.Duplicates()[0].second.line);
    EXPECT_EQ(u"OTHER", file.Duplicates()[1].writtenKey);
    ASSERT_TRUE(file.Dictionary());
    EXPECT_EQ(3u, file.Dictionary()->size());
    EXPECT_EQ(1u, file.Dictionary()->count(u"last"));
}

TEST(LocFileTest, ASyntaxErrorAfterADuplicateIsFoundWithItsRealPosition) {
    TempTree tree;
    tree.File("a.lt", "a = 'x'\nA = 'y'\nb = 'z\n");
    const LocFile file(tree.Path("a.lt"));
    ASSERT_EQ(1u, file.Duplicates().size());
    ASSERT_TRUE(file.ParseError());
    EXPECT_EQ(4, file.ParseError()->position.line);
    EXPECT_THAT(file.ParseError()->report, HasSubstr("expecting \"'\" here"));
    EXPECT_FALSE(file.Dictionary());
}

TEST(LocFileTest, ReadAndParseErrorsAreTheRuntimes) {
    TempTree tree;
    tree.File("tab.lt", "a = 'x'\n\tb 'y'\n").Directory("folder.lt").File("bom.lt", "\xEF\xBB\xBF");
    const LocFile parse(tree.Path("tab.lt"));
    ASSERT_TRUE(parse.ParseError());
    EXPECT_EQ(2, parse.ParseError()->position.line);
    EXPECT_EQ(7, parse.ParseError()->position.column);
    EXPECT_EQ(4, parse.ParseError()->position.unitColumn);
    EXPECT_THAT(parse.ParseError()->report, testing::StartsWith("parse error at file "));

    for (const char* name : {"folder.lt", "bom.lt", "missing.lt"}) {
        const LocFile unreadable(tree.Path(name));
        EXPECT_FALSE(unreadable.ReadError().empty()) << name;
        EXPECT_FALSE(unreadable.Loadable()) << name;
    }
}

}  // namespace
}  // namespace locmgr::analysis
