// Every test builds a real localization tree ("root/..." and "alt/...") in a temporary folder.

#include "File/FileResourceProvider.h"
#include "File/TempTree.h"
#include "TestSupport/Cultures.h"
#include "TestSupport/ExpectThrowMessage.h"
#include "ulo/rtl/CodeContracts.h"
#include "ulo/rtl/TextConversion.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace LocalizationManager::File {
namespace {

using localization_manager::Culture;
using StringLocalizing::Model::PluralFormRuleId;
using Testing::MakeCulture;
using Testing::TempTree;

constexpr std::uint32_t kEnglish = 7;
constexpr std::int32_t kPortuguese = 24;

Culture English(const char* first = "", const char* second = "") {
    return MakeCulture(kEnglish, first, second);
}

FileResourceProvider RootOnly(TempTree& tree) {
    tree.Directory("root");
    return {tree.Path("root"), u""};
}

FileResourceProvider WithAlternative(TempTree& tree) {
    tree.Directory("root").Directory("alt");
    return {tree.Path("root"), tree.Path("alt")};
}

std::vector<std::u16string> Paths(const TempTree& tree, const std::vector<std::string>& names) {
    std::vector<std::u16string> paths;
    for (const std::string& name : names) {
        paths.push_back(tree.Path(name));
    }
    return paths;
}

// The description of the read failure `read` raises, or a note that it raised none.
std::string ReadFailure(const std::function<void()>& read) {
    try {
        read();
    } catch (const UloCallFailedException& error) {
        return error.Description();
    }
    return "no UloCallFailedException";
}

const std::string kCannotOpen = "Cannot open file, error: Access denied";

TEST(FileResourceProviderConstruction, UnreachableRootFailsWithTheContractText) {
    TempTree tree;
    tree.Directory("alt");
    const std::string expected =
        "Contract Violation! Violated argument 'ulo::filesystem::IsDirectory(rootLocalizationUri)'"
        " at LocalizationManager::File::FileResourceProvider::FileResourceProvider(const "
        "std::u16string&, const std::u16string&) at File/FileResourceProvider:111Description: "
        "root localization URI has to be directory, error: File not found";
    const std::u16string alternatives[] = {u"", tree.Path("alt"), tree.Path("missing-alt")};
    for (const std::u16string& root : {tree.Path("missing"), std::u16string()}) {
        for (const std::u16string& alternative : alternatives) {
            EXPECT_THROW_MSG(FileResourceProvider(root, alternative), UloCallFailedException,
                             expected);
        }
    }
}

TEST(FileResourceProviderConstruction, PlainFileRootAndMissingAlternativeAreAccepted) {
    TempTree tree;
    tree.File("file-root").File("root/en/Locs/s.lt", "k = 'root'");
    FileResourceProvider fileRoot(tree.Path("file-root"), tree.Path("missing-alt"));
    EXPECT_THROW_MSG(fileRoot.GetLocalizationText(u"s", English()), std::runtime_error,
                     "cannot find localization file 's.lt'");

    FileResourceProvider missingAlternative(tree.Path("root"), tree.Path("missing-alt"));
    EXPECT_EQ(u"k = 'root'", missingAlternative.GetLocalizationText(u"s", English()).text);
}

TEST(FileResourceProviderLocalization, CultureFoldersFromMostSpecificToNeutral) {
    TempTree tree;
    const std::string folders[] = {"en-US-x", "en-US", "en", "neutral"};
    for (const std::string& folder : folders) {
        tree.File("root/" + folder + "/Locs/s.lt", "k = '" + folder + " \xC3\xA9'");
    }
    auto provider = RootOnly(tree);
    // Files disappear one by one under the same provider: nothing is cached.
    for (const std::string& folder : folders) {
        const auto found = provider.GetLocalizationText(u"s", English("US", "x"));
        EXPECT_EQ(u"k = '" + ulo::Utf8ToWide(folder) + u" é'", found.text);
        EXPECT_EQ(tree.Path("root/" + folder + "/Locs/s.lt"), found.path);
        tree.Remove("root/" + folder);
    }
    EXPECT_THROW_MSG(provider.GetLocalizationText(u"s", English("US", "x")), std::runtime_error,
                     "cannot find localization file 's.lt'");
    tree.File("root/en/Locs/s.lt");
    EXPECT_EQ(tree.Path("root/en/Locs/s.lt"),
              provider.GetLocalizationText(u"s", English("US", "x")).path);
}

TEST(FileResourceProviderLocalization, FolderThatServesTheText) {
    const struct {
        std::vector<std::string> files;
        Culture culture;
        std::string served;                    // "": none
        std::vector<std::string> probes = {};  // checked unless empty
    } cases[] = {
        // The alternative directory goes through all its folders before the root.
        {{"alt/en/Locs/s.lt", "root/en-US/Locs/s.lt"}, English("US", "x"), "alt/en/Locs/s.lt"},
        {{"alt/neutral/Locs/s.lt", "root/en-US-x/Locs/s.lt"},
         English("US", "x"),
         "alt/neutral/Locs/s.lt"},
        {{"alt/en-US/Locs/s.lt", "root/en-US/Locs/s.lt"},
         English("US", "x"),
         "alt/en-US/Locs/s.lt"},
        {{"alt/en-US/Locs/other.lt", "root/neutral/Locs/s.lt"},
         English("US", "x"),
         "root/neutral/Locs/s.lt"},
        // A second subtag without a first is ignored.
        {{"root/en-x/Locs/s.lt", "root/en--x/Locs/s.lt", "root/en/Locs/s.lt"},
         English("", "x"),
         "root/en/Locs/s.lt",
         {"alt/en/Locs/s.lt", "alt/neutral/Locs/s.lt", "root/en/Locs/s.lt",
          "root/neutral/Locs/s.lt"}},
        // Folder and file names are matched exactly as written.
        {{"root/en-us/Locs/s.lt", "root/EN/Locs/s.lt", "root/en/Locs/S.lt"}, English("US"), ""},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.files.front());
        TempTree tree;
        for (const std::string& file : testCase.files) {
            tree.File(file);
        }
        auto provider = WithAlternative(tree);
        if (!testCase.probes.empty()) {
            EXPECT_EQ(Paths(tree, testCase.probes),
                      provider.LocalizationFileCandidates(u"s", testCase.culture));
        }
        if (testCase.served.empty()) {
            EXPECT_THROW_MSG(provider.GetLocalizationText(u"s", testCase.culture),
                             std::runtime_error, "cannot find localization file 's.lt'");
        } else {
            EXPECT_EQ(tree.Path(testCase.served),
                      provider.GetLocalizationText(u"s", testCase.culture).path);
        }
    }
}

TEST(FileResourceProviderLocalization, NeutralServesEveryLanguage) {
    TempTree tree;
    tree.File("root/neutral/Locs/common.lt", "k = 'neutral'");
    auto provider = RootOnly(tree);
    for (std::uint32_t id = 0; id < 35; ++id) {
        EXPECT_EQ(u"k = 'neutral'", provider.GetLocalizationText(u"common", MakeCulture(id)).text)
            << id;
    }
}

TEST(FileResourceProviderBinary, ScopeThenCommonPerCultureFolderAlternativeFirst) {
    std::vector<std::string> order;
    for (const std::string base : {"alt", "root"}) {
        for (const std::string folder : {"en-US", "en", "neutral"}) {
            order.push_back(base + "/" + folder + "/dlg/k.bin");
            order.push_back(base + "/" + folder + "/Common/k.bin");
        }
    }
    TempTree tree;
    for (const std::string& file : order) {
        tree.File(file);
    }
    auto provider = WithAlternative(tree);
    EXPECT_EQ(Paths(tree, order),
              provider.BinaryResourceCandidates(u"dlg", English("US"), u"k.bin"));
    for (const std::string& file : order) {
        EXPECT_EQ(tree.Path(file), provider.GetBinaryResourcePath(u"dlg", English("US"), u"k.bin"));
        tree.Remove(file);
    }
    EXPECT_THROW_MSG(provider.GetBinaryResourcePath(u"dlg", English("US"), u"k.bin"),
                     std::runtime_error, "cannot find binary resource file for key 'k.bin'");
}

TEST(FileResourceProviderPluralRules, QualifierFolderThenLanguageFolderInRootOnly) {
    TempTree tree;
    tree.File("root/pt/BR/Plural.rule", "br").File("root/pt/Plural.rule", "pt");
    // None of these is ever a rule file: no "-" joining, no neutral, no alternative.
    tree.File("root/pt-BR/Plural.rule").File("root/neutral/Plural.rule");
    tree.File("alt/pt/BR/Plural.rule").File("alt/pt/Plural.rule");
    auto provider = WithAlternative(tree);
    const PluralFormRuleId brazil{kPortuguese, "BR"};
    const PluralFormRuleId portuguese{kPortuguese, ""};

    EXPECT_EQ(Paths(tree, {"root/pt/BR/Plural.rule", "root/pt/Plural.rule"}),
              provider.PluralFormRulesCandidates(brazil));
    const auto found = provider.GetPluralFormRulesText(brazil);
    EXPECT_EQ(u"br", found.text);
    EXPECT_EQ(tree.Path("root/pt/BR/Plural.rule"), found.path);
    EXPECT_EQ(u"pt", provider.GetPluralFormRulesText(portuguese).text);

    tree.Remove("root/pt/BR");
    EXPECT_EQ(u"pt", provider.GetPluralFormRulesText(brazil).text);
    EXPECT_TRUE(provider.HasPluralFormRules(brazil));

    tree.Remove("root/pt/Plural.rule");
    for (const auto& id : {brazil, portuguese}) {
        EXPECT_FALSE(provider.HasPluralFormRules(id));
        EXPECT_EQ(u"", provider.FindPluralFormRulesFile(id));
    }
    EXPECT_THROW_MSG(provider.GetPluralFormRulesText(brazil), std::runtime_error,
                     "cannot find plural form file for id 'pt-BR'");
    EXPECT_THROW_MSG(provider.GetPluralFormRulesText(portuguese), std::runtime_error,
                     "cannot find plural form file for id 'pt'");
}

TEST(FileResourceProviderPluralRules, UnqualifiedIdIgnoresQualifierFolders) {
    TempTree tree;
    tree.File("root/pt/BR/Plural.rule");
    EXPECT_FALSE(RootOnly(tree).HasPluralFormRules(PluralFormRuleId{kPortuguese, ""}));
}

TEST(FileResourceProviderPluralRules, QualifierCannotLeadOutOfTheRoot) {
    TempTree tree;
    // root/pt/../../Plural.rule would be this file, outside the root.
    tree.File("root/pt/Plural.rule").File("Plural.rule");
    for (const std::string qualifier : {"../..", "..", "x/../../.."}) {
        EXPECT_EQ(
            Paths(tree, {"root/pt/Plural.rule"}),
            RootOnly(tree).PluralFormRulesCandidates(PluralFormRuleId{kPortuguese, qualifier}))
            << qualifier;
    }
}

TEST(FileResourceProvider, UnsupportedLanguageFailsBeforeAnyFileIsLookedAt) {
    TempTree tree;
    // A lookup that tried "neutral" before naming the language would succeed here.
    for (const std::string base : {"alt", "root"}) {
        tree.File(base + "/neutral/Locs/s.lt").File(base + "/neutral/s/k");
    }
    auto provider = WithAlternative(tree);
    const Culture unsupported = MakeCulture(35);
    EXPECT_THROW_MSG(provider.GetLocalizationText(u"s", unsupported), std::range_error,
                     "Unsupported language 35");
    EXPECT_THROW_MSG(provider.GetBinaryResourcePath(u"s", unsupported, u"k"), std::range_error,
                     "Unsupported language 35");
    for (const std::int32_t id : {35, -1}) {
        const PluralFormRuleId ruleId{id, ""};
        const std::string message =
            "Unsupported language " + std::to_string(static_cast<std::uint32_t>(id));
        EXPECT_THROW_MSG(provider.HasPluralFormRules(ruleId), std::range_error, message);
        EXPECT_THROW_MSG(provider.GetPluralFormRulesText(ruleId), std::range_error, message);
    }
}

TEST(FileResourceProvider, MissingFileMessagesNameTheFileOrKeyInUtf8) {
    TempTree tree;
    auto provider = RootOnly(tree);
    const struct {
        std::u16string name;
        std::string text;
    } cases[] = {{u"s", "s"}, {u"dialogs/download", "dialogs/download"}, {u"загрузка", "загрузка"}};
    for (const auto& testCase : cases) {
        EXPECT_THROW_MSG(provider.GetLocalizationText(testCase.name, English("US")),
                         std::runtime_error,
                         "cannot find localization file '" + testCase.text + ".lt'");
        EXPECT_THROW_MSG(provider.GetBinaryResourcePath(u"s", English("US"), testCase.name),
                         std::runtime_error,
                         "cannot find binary resource file for key '" + testCase.text + "'");
    }
}

TEST(FileResourceProviderNames, EscapingNamesAreRefusedBeforeAnyFileIsLookedAt) {
    TempTree tree;
    // Each refused name would reach one of these if it were looked up.
    tree.File("root/en/x.lt")
        .File("root/en/x")
        .File("root/en/Locs/b.lt")
        .Directory("root/en/Locs/a");
    tree.File("root/en/Locs/a\\..\\b.lt").Directory("root/en/s/x").Directory("root/en/Common");
    auto provider = RootOnly(tree);
    const std::string refused[] = {"",       "/etc/passwd", "\\x",  "..",
                                   "a/../b", "a\\..\\b",    "../x", "x/.."};
    for (const std::string& name : refused) {
        const std::u16string wide = ulo::Utf8ToWide(name);
        const std::string message = "invalid resource name '" + name + "'";
        EXPECT_THROW_MSG(provider.GetLocalizationText(wide, English()), std::runtime_error,
                         message);
        EXPECT_THROW_MSG(provider.GetBinaryResourcePath(wide, English(), u"k"), std::runtime_error,
                         message);
        EXPECT_THROW_MSG(provider.GetBinaryResourcePath(u"s", English(), wide), std::runtime_error,
                         message);
    }
}

TEST(FileResourceProviderNames, SubFoldersAndDotsInsideNamesWork) {
    for (const std::string name : {"dialogs/download", "a..b", "..a"}) {
        TempTree tree;
        tree.File("root/en/Locs/" + name + ".lt", "k = '" + name + "'");
        tree.File("root/en/" + name + "/k").File("root/en/s/" + name);
        auto provider = RootOnly(tree);
        const std::u16string wide = ulo::Utf8ToWide(name);
        const auto found = provider.GetLocalizationText(wide, English("US"));
        EXPECT_EQ(u"k = '" + wide + u"'", found.text);
        EXPECT_EQ(tree.Path("root/en/Locs/" + name + ".lt"), found.path);
        EXPECT_EQ(tree.Path("root/en/" + name + "/k"),
                  provider.GetBinaryResourcePath(wide, English("US"), u"k"));
        EXPECT_EQ(tree.Path("root/en/s/" + name),
                  provider.GetBinaryResourcePath(u"s", English("US"), wide));
    }
}

TEST(FileResourceProviderSpecialFiles, DirectoryNamedLikeTheFileCountsAsFound) {
    TempTree tree;
    tree.Directory("root/en-US/Locs/s.lt").File("root/en/Locs/s.lt");
    tree.Directory("root/en-US/s/k.bin").File("root/en/s/k.bin");
    tree.Directory("root/pt/BR/Plural.rule").File("root/pt/Plural.rule");
    auto provider = RootOnly(tree);
    EXPECT_EQ(tree.Path("root/en-US/s/k.bin"),
              provider.GetBinaryResourcePath(u"s", English("US"), u"k.bin"));
    EXPECT_EQ(kCannotOpen, ReadFailure([&] { provider.GetLocalizationText(u"s", English("US")); }));
    EXPECT_EQ(kCannotOpen, ReadFailure([&] {
                  provider.GetPluralFormRulesText(PluralFormRuleId{kPortuguese, "BR"});
              }));
}

}  // namespace
}  // namespace LocalizationManager::File
