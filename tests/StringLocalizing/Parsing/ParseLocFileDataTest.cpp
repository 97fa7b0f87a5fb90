// Walks tests/data/parsing/loc_file: each NAME.lt is parsed as file "NAME.lt" and the result is
// compared with NAME.expected, which holds either the entries in canonical form or the exact
// message of the ParsingException.

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

// What a fixture produces: its entries in canonical form, or "error: " and the message.
std::string ParseFixture(const std::string& name, Model::ResourceDictionary& dictionary) {
    const std::u16string text = ulo::Utf8ToWide(Testing::ReadBytes(kFixtureDir / (name + ".lt")));
    try {
        ParseLocFile(text, ulo::Utf8ToWide(name + ".lt"), dictionary);
    } catch (const ParsingException& error) {
        EXPECT_EQ(ulo::WideToNarrowMessage(error.WideMessage()), error.what());
        return std::string("error: ") + error.what() + "\n";
    }
    return ulo::WideToUtf8(Model::FormatDictionary(dictionary));
}

class ParseLocFileFixture : public ::testing::TestWithParam<std::string> {};

TEST_P(ParseLocFileFixture, MatchesExpectation) {
    Model::ResourceDictionary dictionary;
    Testing::ExpectMatchesExpectation(kFixtureDir, GetParam(),
                                      ParseFixture(GetParam(), dictionary));
}

class ValidLocFileFixture : public ::testing::TestWithParam<std::string> {};

// The canonical form is itself a valid file that parses back to the same entries.
TEST_P(ValidLocFileFixture, CanonicalFormParsesBackToTheSameEntries) {
    Model::ResourceDictionary dictionary;
    ParseFixture(GetParam(), dictionary);
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
