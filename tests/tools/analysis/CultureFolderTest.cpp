// A folder belongs to a culture exactly when the runtime builds its name for that culture.

#include "CultureFolder.h"
#include "File/FileSearch.h"

#include <gtest/gtest.h>

#include <string>

namespace locmgr::analysis {
namespace {

TEST(CultureFolderTest, NamesTheCultureThatReadsAFolder) {
    const struct {
        std::string folder;
        bool culture;
        std::uint32_t languageId;
        std::string firstSubtag;
        std::string secondSubtag;
    } cases[] = {
        {"de", true, 12, "", ""},           {"en-US", true, 7, "US", ""},
        {"en-au", true, 7, "au", ""},       {"sr-Latn", true, 30, "", ""},
        {"sr-Latn-RS", true, 30, "RS", ""}, {"zh-Hant-HK-x-y", true, 2, "HK", "x-y"},
        {"neutral", false, 0, "", ""},      {"EN", false, 0, "", ""},  // names are case-sensitive
        {"sr", false, 0, "", ""},   // not a language of the table
        {"de-", false, 0, "", ""},  // an empty subtag is never part of a folder name
        {"en--x", false, 0, "", ""},        {"english", false, 0, "", ""},
        {"Locs", false, 0, "", ""},
    };
    for (const auto& testCase : cases) {
        const auto culture = CultureOfFolder(testCase.folder);
        ASSERT_EQ(testCase.culture, culture.has_value()) << testCase.folder;
        if (!culture) {
            continue;
        }
        EXPECT_EQ(testCase.languageId, culture->languageId) << testCase.folder;
        EXPECT_EQ(testCase.firstSubtag, culture->firstSubtag.ToStdString()) << testCase.folder;
        EXPECT_EQ(testCase.secondSubtag, culture->secondSubtag.ToStdString()) << testCase.folder;
        EXPECT_EQ(testCase.folder, CultureName(*culture));
        // The runtime's own list of folders for the culture ends with this one.
        const auto folders = LocalizationManager::File::CultureFolderNames(
            culture->languageId, culture->firstSubtag.ToStdString(),
            culture->secondSubtag.ToStdString());
        EXPECT_EQ(std::u16string(testCase.folder.begin(), testCase.folder.end()), folders.back());
    }
}

}  // namespace
}  // namespace locmgr::analysis
