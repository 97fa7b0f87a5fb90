#include "StringLocalizing/Model/CultureNames.h"
#include "TestSupport/Cultures.h"
#include "ulo/ResultCode.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace LocalizationManager::StringLocalizing::Model {
namespace {

using localization_manager::Culture;
using LocalizationManager::Testing::MakeCulture;

TEST(ConvertCultureName, PrefixOfTheTableThenSubtagsAsWritten) {
    const struct {
        std::string name;
        Culture culture;
    } cases[] = {
        {"ru", MakeCulture(26)},
        {"EN-US", MakeCulture(7, "US")},
        {"sr-latn-rs", MakeCulture(30, "rs")},
        {"Sr-Latn-RS", MakeCulture(30, "RS")},
        {"en-us-x-y", MakeCulture(7, "us", "x-y")},
        {"zh-Hans", MakeCulture(3)},
        {"zh-Hant-TW", MakeCulture(2, "TW")},
        {"anz", MakeCulture(7, "au")},
        {"anz-nz", MakeCulture(7, "nz")},  // the given subtag replaces the group's
        {"br", MakeCulture(24, "br")},
        {"la", MakeCulture(28, "mx")},
        {"hch", MakeCulture(2, "hk")},
        {"sea", MakeCulture(7, "my")},
        {"en-", MakeCulture(7, "")},
    };
    for (const auto& testCase : cases) {
        Culture culture = MakeCulture(99, "old", "old");
        EXPECT_EQ(ulo::kResultOk, ConvertCultureName(testCase.name, culture)) << testCase.name;
        EXPECT_TRUE(testCase.culture == culture)
            << testCase.name << " gave " << CultureText(culture);
    }
}

TEST(ConvertCultureName, UnknownNamesLeaveTheCultureAlone) {
    for (const std::string name : {"", "english", "xx", "e", "zh", "sr", "sr-x", "rux"}) {
        Culture culture = MakeCulture(5, "keep");
        EXPECT_EQ(ulo::kResultUnspecifiedError, ConvertCultureName(name, culture)) << name;
        EXPECT_TRUE(MakeCulture(5, "keep") == culture) << name;
    }
}

TEST(CultureText, FirstSubtagAlwaysSecondOnlyWhenPresent) {
    EXPECT_EQ("ru-", CultureText(MakeCulture(26)));
    EXPECT_EQ("en-US", CultureText(MakeCulture(7, "US")));
    EXPECT_EQ("sr-Latn-RS-x", CultureText(MakeCulture(30, "RS", "x")));
    EXPECT_EQ("zh-Hant--x", CultureText(MakeCulture(2, "", "x")));
    EXPECT_THROW(CultureText(MakeCulture(35)), std::range_error);
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Model
