// Cultures compared with the reference along the runtime's search order, the tree's settings
// and the baseline, through the whole check as "locmgr check" runs it.

#include "Baseline.h"
#include "CheckSettings.h"
#include "File/TempTree.h"
#include "TreeChecker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace locmgr::analysis {
namespace {

using LocalizationManager::Testing::TempTree;
using ::testing::HasSubstr;

using Files = std::vector<std::pair<std::string, std::string>>;

const Files kReference{
    {"neutral/Locs/common.lt", "appName = 'App'\nok = 'OK'\nfiles = $count + ' files'\n"},
    {"neutral/Locs/s.lt",
     "title = 'Download'\nstatus = 'Loaded ' + files\nprogress = $percent + '%'\n"},
};

bool IsComparison(FindingKind kind) {
    return kind == FindingKind::kMissingKey || kind == FindingKind::kObsoleteKey ||
           kind == FindingKind::kUntranslated || kind == FindingKind::kParameterMismatch;
}

// "kind severity file-below-root key cultures", one per finding of the comparison.
std::set<std::string> Summaries(const CheckResult& result, const std::string& root) {
    std::set<std::string> summaries;
    for (const Finding& finding : result.findings) {
        if (!IsComparison(finding.kind)) {
            continue;
        }
        std::string cultures;
        for (const std::string& culture : finding.cultures) {
            cultures += (cultures.empty() ? "" : ",") + culture;
        }
        summaries.insert(std::string(InfoOf(finding.kind).id) + " " +
                         SeverityName(finding.GetSeverity()) + " " +
                         finding.file.substr(root.size() + 1) + " " + finding.key + " " + cultures);
    }
    return summaries;
}

class TranslationCheckTest : public ::testing::Test {
  protected:
    void Write(const Files& files) {
        for (const auto& [path, content] : files) {
            tree_.File(path, content);
        }
    }

    CheckResult Check(const std::string& reference = "neutral", const std::string& baseline = "") {
        CheckOptions options;
        options.root = Root();
        options.reference = reference;
        options.baseline = baseline;
        return CheckTree(options);
    }

    std::string Root() const { return ulo::WideToNarrowMessage(tree_.Path()); }

    TempTree tree_;
};

TEST_F(TranslationCheckTest, FindsWhatEachCultureWouldFailOrLose) {
    struct Case {
        const char* name;
        Files files;
        std::set<std::string> expected;
    };
    const std::vector<Case> cases{
        {"complete",
         {{"fr/Locs/common.lt", "appName = 'Appli'\nok = 'D\\'accord'\nfiles = $count + ' f.'"},
          {"fr/Locs/s.lt",
           "title = 'Télécharger'\nstatus = 'Chargé ' + files\n"
           "progress = $percent + ' %'"}},
         {}},
        {"a culture reading the reference's own files has nothing to compare", {}, {}},
        {"missing key, not even in the culture's common texts",
         {{"fr/Locs/common.lt", "appName = 'Appli'\nok = 'Oui'\nfiles = $count + ' f.'"},
          {"fr/Locs/s.lt", "title = 'Télécharger'\nprogress = $percent + ' %'"}},
         {"missing-key error fr/Locs/s.lt status fr"}},
        {"a key the culture's common texts answer is not missing",
         {{"fr/Locs/common.lt",
           "appName = 'Appli'\nok = 'Oui'\nfiles = $count + ' f.'\nstatus = 'Chargé'"},
          {"fr/Locs/s.lt", "title = 'Télécharger'\nprogress = $percent + ' %'"}},
         {}},
        {"missing from the common texts, extra keys, a common key redefined is not extra",
         {{"fr/Locs/common.lt", "appName = 'Appli'\nfiles = $count + ' f.'\nold = 'x'"},
          {"fr/Locs/s.lt",
           "title = 'Télécharger'\nstatus = 'Chargé ' + files\n"
           "progress = $percent + ' %'\nok = 'Oui'\nGone = 'y'"}},
         {"missing-key error fr/Locs/common.lt ok fr",
          "obsolete-key warning fr/Locs/common.lt old fr",
          "obsolete-key warning fr/Locs/s.lt Gone fr"}},
        {"untranslated, but not a text without letters",
         {{"fr/Locs/common.lt", "appName = 'App'\nok = 'Oui'\nfiles = $count + ' files'"},
          {"fr/Locs/s.lt",
           "title = 'Download'\nstatus = 'Chargé ' + files\n"
           "progress = $percent + '%'"}},
         {"untranslated warning fr/Locs/common.lt appName fr",
          "untranslated warning fr/Locs/common.lt files fr",
          "untranslated warning fr/Locs/s.lt title fr"}},
        {"a parameter misspelt and one dropped, seen through references",
         {{"fr/Locs/common.lt", "appName = 'Appli'\nok = 'Oui'\nfiles = $cuont + ' f.'"},
          {"fr/Locs/s.lt",
           "title = 'Télécharger'\nstatus = 'Chargé ' + files\n"
           "progress = 'en cours'"}},
         {"parameter-mismatch error fr/Locs/common.lt files fr",
          "parameter-mismatch warning fr/Locs/common.lt files fr",
          "parameter-mismatch error fr/Locs/s.lt status fr",
          "parameter-mismatch warning fr/Locs/s.lt status fr",
          "parameter-mismatch warning fr/Locs/s.lt progress fr"}},
        {"one file read by two cultures gives one finding for both",
         {{"fr/Locs/common.lt", "appName = 'Appli'\nok = 'Oui'\nfiles = $count + ' f.'"},
          {"fr/Locs/s.lt", "title = 'Télécharger'\nprogress = $percent + ' %'"},
          {"fr-CA/Locs/common.lt", "appName = 'Appli'\nok = 'Oui'\nfiles = $count + ' f.'"}},
         {"missing-key error fr/Locs/s.lt status fr,fr-CA"}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.name);
        tree_.Remove("fr").Remove("fr-CA");
        Write(kReference);
        Write(test.files);
        if (test.files.empty()) {
            tree_.Directory("fr");
        }
        EXPECT_EQ(test.expected, Summaries(Check(), Root()));
    }
}

TEST_F(TranslationCheckTest, MessagesNameTheRuntimeFailureAndTheCloseName) {
    Write(kReference);
    Write({{"fr/Locs/common.lt", "appName = 'Appli'\nok = 'Oui'\nfiles = $count + ' f.'"},
           {"fr/Locs/s.lt", "Title = 'Télécharger'\nprogress = $percnt + ' %'"}});
    std::vector<std::string> messages;
    for (const Finding& finding : Check().findings) {
        messages.push_back(finding.message);
    }
    EXPECT_THAT(messages, ::testing::UnorderedElementsAre(
                              "key 'status' of the reference is neither here nor in the "
                              "culture's common.lt: requests for it fail (Key 'status' not found)",
                              "the text of 'progress' asks for the parameter '$percnt' that the "
                              "reference's does not: the application does not know it (did you "
                              "mean '$percent'?)",
                              "the text of 'progress' drops the parameter '$percent' that the "
                              "reference's shows: its value is lost"));
}

TEST_F(TranslationCheckTest, CompletionCountsTheKeysWithATextOfTheCulturesOwn) {
    Write(kReference);
    Write({{"fr/Locs/common.lt", "appName = 'App'\nok = 'Oui'\nfiles = $count + ' f.'"},
           {"fr/Locs/s.lt", "title = 'Télécharger'\nprogress = $percent + ' %'"},
           {"de/Locs/common.lt", "appName = 'App'\nok = 'OK'\nfiles = $count + ' Dateien'"}});
    const CheckResult result = Check();
    ASSERT_EQ(2u, result.completion.size());
    const CultureCompletion& de = result.completion[0];
    EXPECT_EQ("de", de.culture);
    EXPECT_EQ(1u, de.translated);  // appName and ok are untranslated, s.lt is the reference's
    EXPECT_EQ(6u, de.total);
    const CultureCompletion& fr = result.completion[1];
    ASSERT_EQ(2u, fr.scopes.size());
    EXPECT_EQ("common", fr.scopes[0].scope);
    EXPECT_EQ(2u, fr.scopes[0].translated);
    EXPECT_EQ("s", fr.scopes[1].scope);
    EXPECT_EQ(2u, fr.scopes[1].translated);
    EXPECT_EQ(3u, fr.scopes[1].total);
}

TEST_F(TranslationCheckTest, AnotherCultureAsReference) {
    Write(kReference);
    Write({{"de/Locs/s.lt", "title = 'Laden'\nstatus = 'Geladen'\nprogress = $percent + ' %'"},
           {"fr/Locs/s.lt", "title = 'Laden'\nprogress = $percent + ' %'"}});
    EXPECT_EQ((std::set<std::string>{"missing-key error fr/Locs/s.lt status fr",
                                     "untranslated warning fr/Locs/s.lt title fr"}),
              Summaries(Check("de"), Root()));
    EXPECT_THROW(Check("xx"), std::invalid_argument);
}

TEST_F(TranslationCheckTest, SettingsChangeSeveritiesAndTheTextsThatMayStayTheSame) {
    Write(kReference);
    Write({{"fr/Locs/common.lt", "appName = 'App'\nok = 'OK'\nfiles = $count + ' files'"},
           {"fr/Locs/s.lt", "title = 'Download'\nextra = 'x'\nprogress = $percent + '%'"},
           {"en-GB/Locs/s.lt",
            "title = 'Download'\nstatus = 'Loaded ' + files\n"
            "progress = $percent + '%'"},
           {"locmgr.json", R"({
              "neutralLanguage": "EN",
              "severity": { "obsolete-key": "off", "missing-key": "warning" },
              "sameAsReference": [ "APPNAME" ],
              "cultures": { "fr": { "severity": { "obsolete-key": "error" },
                                    "sameAsReference": [ "ok" ] } }
            })"}});
    EXPECT_EQ((std::set<std::string>{"missing-key warning fr/Locs/s.lt status fr",
                                     "obsolete-key error fr/Locs/s.lt extra fr",
                                     "untranslated warning fr/Locs/common.lt files fr",
                                     "untranslated warning fr/Locs/s.lt title fr"}),
              Summaries(Check(), Root()));
}

TEST_F(TranslationCheckTest, BadSettingsAreRefusedWithWhereAndWhat) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"{", "locmgr.json: not valid JSON"},
        {"[]", "locmgr.json: the settings should be an object"},
        {R"({"severity": {"no-such-kind": "off"}})",
         "\"severity.no-such-kind\" should be absent: no finding kind has that id"},
        {R"({"severity": {"untranslated": "info"}})",
         "\"severity.untranslated\" should be \"error\", \"warning\" or \"off\""},
        {R"({"neutralLanguage": "klingon"})",
         "\"neutralLanguage\" should be a language name such as \"en\""},
        {R"({"sameAsReference": "appName"})", "\"sameAsReference\" should be a list of keys"},
        {R"({"cultures": {"de": {"strict": true}}})",
         "\"cultures.de.strict\" should be absent: a culture has \"severity\" and "
         "\"sameAsReference\""},
        {R"({"colour": 1})", "\"colour\" should be absent"},
    };
    Write(kReference);
    for (const auto& [content, message] : cases) {
        SCOPED_TRACE(content);
        tree_.File("locmgr.json", content);
        try {
            Check();
            ADD_FAILURE() << "accepted";
        } catch (const SettingsError& error) {
            EXPECT_THAT(error.what(), HasSubstr(message));
        }
    }
    // Neither is read: a pipe would block the check.
    tree_.Remove("locmgr.json").Directory("locmgr.json");
    EXPECT_THROW(Check(), SettingsError);
    tree_.Remove("locmgr.json").Fifo("locmgr.json");
    EXPECT_THROW(Check(), SettingsError);
}

TEST_F(TranslationCheckTest, ABaselineAcceptsOldFindingsWhereverTheirLinesMove) {
    Write(kReference);
    Write({{"fr/Locs/s.lt", "title = 'Download'\nstatus = 'Chargé'\nprogress = $percent + '%'"}});
    const std::string baseline = ulo::WideToNarrowMessage(tree_.Path("baseline.json"));
    Baseline::Write(baseline, Check().findings, {Root(), ""});

    tree_.File("fr/Locs/s.lt",
               "; a comment moves everything down\n\n"
               "title = 'Download'\nstatus = 'Chargé'\nprogress = $percent + '%'\nnew = 'x'");
    const CheckResult result = Check("neutral", baseline);
    EXPECT_EQ(2u, result.baselined);  // the untranslated title, the dropped $count
    EXPECT_EQ((std::set<std::string>{"obsolete-key warning fr/Locs/s.lt new fr"}),
              Summaries(result, Root()));

    tree_.File("bad.json", R"({"findings": []})");
    EXPECT_THROW(Check("neutral", ulo::WideToNarrowMessage(tree_.Path("bad.json"))), BaselineError);
    EXPECT_THROW(Check("neutral", ulo::WideToNarrowMessage(tree_.Path("none.json"))),
                 BaselineError);
}

}  // namespace
}  // namespace locmgr::analysis
