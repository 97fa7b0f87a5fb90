// The order of the search itself is exercised through the provider, on real trees.

#include "File/FileSearch.h"
#include "TestSupport/ExpectThrowMessage.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace LocalizationManager::File {
namespace {

TEST(JoinPath, SeparatorOnlyBetweenTwoPartsThatLackOne) {
    const struct {
        std::u16string left;
        std::u16string right;
        std::u16string joined;
    } cases[] = {
        {u"a", u"b", u"a/b"},     {u"a/", u"b", u"a/b"},  {u"a\\", u"b", u"a\\b"},
        {u"", u"b", u"b"},        {u"a", u"", u"a"},      {u"", u"", u""},
        {u"a", u"b/c", u"a/b/c"}, {u"a", u"/b", u"a//b"}, {u"/", u"b", u"/b"},
    };
    for (const auto& testCase : cases) {
        EXPECT_EQ(testCase.joined, JoinPath(testCase.left, testCase.right));
    }
}

TEST(CultureFolderNames, LeastToMostSpecific) {
    const struct {
        std::uint32_t languageId;
        std::string first;
        std::string second;
        std::vector<std::u16string> names;
    } cases[] = {
        {7, "", "", {u"neutral", u"en"}},
        {7, "", "x", {u"neutral", u"en"}},
        {7, "US", "", {u"neutral", u"en", u"en-US"}},
        {7, "US", "x-y", {u"neutral", u"en", u"en-US", u"en-US-x-y"}},
        {2, "hk", "", {u"neutral", u"zh-Hant", u"zh-Hant-hk"}},
        {34, "", "", {u"neutral", u"vi"}},
        // Subtags that could lead out of the tree name no folder.
        {7, "/../../x", "", {u"neutral", u"en"}},
        {7, "..", "y", {u"neutral", u"en"}},
        {7, "US", "a\\..\\b", {u"neutral", u"en", u"en-US"}},
        {7, "a..b", "", {u"neutral", u"en", u"en-a..b"}},
    };
    for (const auto& testCase : cases) {
        EXPECT_EQ(testCase.names,
                  CultureFolderNames(testCase.languageId, testCase.first, testCase.second));
    }
    EXPECT_THROW_MSG(CultureFolderNames(35, "", ""), std::range_error, "Unsupported language 35");
}

}  // namespace
}  // namespace LocalizationManager::File
