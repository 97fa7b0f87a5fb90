// Walks tests/data/parsing/loc_file: each NAME.lt is parsed as file "NAME.lt" and the result is
// compared with NAME.expected, which holds either the entries in canonical form or the exact
// message of the ParsingException. Each fixture also goes through the position-tracking parse,
// which must agree with the fast one.

#include "StringLocalizing/Model/ValueFormat.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "TestSupport/Fixtures.h"
#include "ulo/rtl/TextConversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Parsing {
namespace {

namespace fs = std::filesystem;

const fs::path kFixtureDir = fs::path(LM_TEST_DATA_DIR) / "parsing" / "loc_file";

bool ExpectsError(const std::string& name) {
    return Testing::ReadBytes(kFixtureDir / (name + ".expected")).rfind("error: ", 0) == 0;
}

std::vector<std::string> ValidFixtureNames() {
    std::vector<std::string> names = Testing::FixtureNames(kFixtureDir, ".lt");
    names.erase(std::remove_if(names.begin(), names.end(), ExpectsError), names.end());
    return names;
}

using ParseFunction = void (*)(const std::u16string& text, const std::u16string& fileName,
                               Model::ResourceDictionary& dictionary);

// What a fixture produces: the dictionary as the parse left it, and the wide report of the
// ParsingException (empty when the parse succeeded).
struct Outcome {
    Model::ResourceDictionary dictionary;
    std::u16string report;
};

Outcome ParseFixture(const std::string& name, ParseFunction parse) {
    const std::u16string text = ulo::Utf8ToWide(Testing::ReadBytes(kFixtureDir / (name + ".lt")));
    Outcome outcome;
    try {
        parse(text, ulo::Utf8ToWide(name + ".lt"), outcome.dictionary);
    } catch (const ParsingException& error) {
        EXPECT_EQ(ulo::WideToNarrowMessage(error.WideMessage()), error.what());
        outcome.report = error.WideMessage();
    }
    return outcome;
}

// The entries in canonical form, or "error: " and the message.
std::string Describe(const Outcome& outcome) {
    if (!outcome.report.empty()) {
        return "error: " + ulo::WideToNarrowMessage(outcome.report) + "\n";
    }
    return ulo::WideToUtf8(Model::FormatDictionary(outcome.dictionary));
}

class ParseLocFileFixture : public ::testing::TestWithParam<std::string> {};

TEST_P(ParseLocFileFixture, MatchesExpectation) {
    Testing::ExpectMatchesExpectation(kFixtureDir, GetParam(),
                                      Describe(ParseFixture(GetParam(), ParseLocFile)));
}

// The fast parse builds its reports from the position-tracking parse, so the two must agree
// on everything: the same entries, kept also after a failure, and the same report to the unit.
TEST_P(ParseLocFileFixture, PositionTrackingParseAgrees) {
    const Outcome fast = ParseFixture(GetParam(), ParseLocFile);
    const Outcome tracked = ParseFixture(GetParam(), ParseLocFileWithPositions);
    EXPECT_EQ(tracked.report, fast.report);
    EXPECT_EQ(tracked.dictionary, fast.dictionary);
}

// The indexed parse for tools agrees with the runtime's on every fixture but those that define
// a key twice, which it takes whole; every span it records covers the text it stands for.
TEST_P(ParseLocFileFixture, IndexedParseAgreesAndItsSpansCoverTheirText) {
    const Outcome fast = ParseFixture(GetParam(), ParseLocFile);
    const std::u16string text =
        ulo::Utf8ToWide(Testing::ReadBytes(kFixtureDir / (GetParam() + ".lt")));
    SourceIndex index;
    Outcome indexed;
    try {
        ParseLocFileIndexed(text, ulo::Utf8ToWide(GetParam() + ".lt"), indexed.dictionary, index);
    } catch (const ParsingException& error) {
        indexed.report = error.WideMessage();
    }
    if (index.duplicates.empty()) {
        EXPECT_EQ(fast.report, indexed.report);
        EXPECT_EQ(fast.dictionary, indexed.dictionary);
    } else {
        EXPECT_TRUE(indexed.report.empty());
    }
    const auto textOf = [&text](const SourceSpan& span) {
        return text.substr(span.begin.offset, span.end.offset - span.begin.offset);
    };
    for (const IndexedEntry& entry : index.entries) {
        EXPECT_EQ(entry.key, textOf(entry.keySpan));
        EXPECT_EQ(0u, textOf(entry.span).rfind(entry.key, 0));
        for (const IndexedParameter& parameter : entry.parameters) {
            EXPECT_EQ(u"$" + parameter.name, textOf(parameter.span));
        }
        for (const IndexedPlural& plural : entry.plurals) {
            EXPECT_EQ(u"$" + plural.parameter, textOf(plural.parameterSpan));
            EXPECT_EQ(u'{', textOf(plural.span).front());
            EXPECT_EQ(u'}', textOf(plural.span).back());
            EXPECT_FALSE(plural.forms.empty());
        }
        for (const IndexedReference& reference : entry.references) {
            EXPECT_EQ(reference.lowerKey.size(), textOf(reference.span).size());
        }
    }
}

class ValidLocFileFixture : public ::testing::TestWithParam<std::string> {};

// The canonical form is itself a valid file that parses back to the same entries.
TEST_P(ValidLocFileFixture, CanonicalFormParsesBackToTheSameEntries) {
    const Model::ResourceDictionary dictionary = ParseFixture(GetParam(), ParseLocFile).dictionary;
    Model::ResourceDictionary reparsed;
    ParseLocFile(Model::FormatDictionary(dictionary), u"canonical.lt", reparsed);
    EXPECT_EQ(dictionary, reparsed);
}

INSTANTIATE_TEST_SUITE_P(Fixtures, ParseLocFileFixture,
                         ::testing::ValuesIn(Testing::FixtureNames(kFixtureDir, ".lt")),
                         Testing::FixtureTestName);
INSTANTIATE_TEST_SUITE_P(Fixtures, ValidLocFileFixture, ::testing::ValuesIn(ValidFixtureNames()),
                         Testing::FixtureTestName);

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Parsing
