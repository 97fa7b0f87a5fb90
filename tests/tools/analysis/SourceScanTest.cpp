// What "locmgr unused" reads in a source file: literals and qualified names outside comments,
// and which literals are the key of a text request.

#include "SourceScan.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace locmgr::analysis {
namespace {

// "text@line" per literal, a "!" after a requested one; then "name@line" per qualified name.
std::string Summary(const std::string& source) {
    const SourceScan scan = ScanSource(source);
    std::string summary;
    for (const SourceLiteral& literal : scan.literals) {
        summary += literal.text + "@" + std::to_string(literal.line) +
                   (literal.requested ? "!" : "") + " ";
    }
    for (const SourceName& name : scan.names) {
        summary += name.name + "@" + std::to_string(name.line) + " ";
    }
    return summary;
}

TEST(SourceScanTest, LiteralsAndNamesOutsideComments) {
    const struct {
        std::string source;
        std::string summary;
    } cases[] = {
        {R"(texts.Get("title"); f("title");)", "title@1! title@1 "},
        {R"(x.GetUtf16 ( u8"a" ); l->GetString(u"b", s); Get(key, "c");)", "a@1! b@1! c@1 "},
        {"// Get(\"no\")\n/* Get(\"no\")\n*/ Get(\"yes\")", "yes@3! "},
        {R"src(Get(R"x(raw "quoted")x"); Get(LR"(w)");)src", "raw \"quoted\"@1! w@1! "},
        {R"(Get("a\"b\\c\n");)", "a\"b\\c\\n@1! "},
        {"Get('\"'); Get(1'000); Get(\"k\");", "k@1! "},
        {"Get(keys::download::title, {{\"count\", 3}});\n::app::keys::x::y;",
         "count@1 keys::download::title@1 app::keys::x::y@2 "},
        {"std::string s = \"unterminated\nGet(\"next\");", "unterminated@1 next@2! std::string@1 "},
        {"u8R\"(never closed", "never closed@1 "},
        {"R\"", ""},
    };
    for (const auto& testCase : cases) {
        EXPECT_EQ(testCase.summary, Summary(testCase.source)) << testCase.source;
    }
}

}  // namespace
}  // namespace locmgr::analysis
