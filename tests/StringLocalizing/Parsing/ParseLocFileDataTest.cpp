// Walks tests/data/parsing/loc_file: each NAME.lt is parsed as file "NAME.lt" and the result is
// compared with NAME.expected, which holds either the entries in canonical form or the exact
// message of the ParsingException. LM_UPDATE_EXPECTED=1 rewrites the expectations (review the
// diff before committing it).

#include "StringLocalizing/Model/ValueFormat.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "ulo/rtl/TextConversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Parsing {
namespace {

namespace fs = std::filesystem;

const fs::path kFixtureDir = fs::path(LM_TEST_DATA_DIR) / "parsing" / "loc_file";

std::string ReadBytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::string> FixtureNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kFixtureDir)) {
        if (entry.path().extension() == ".lt") {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool ExpectsError(const std::string& name) {
    return ReadBytes(kFixtureDir / (name + ".expected")).rfind("error: ", 0) == 0;
}

std::vector<std::string> ValidFixtureNames() {
    std::vector<std::string> names = FixtureNames();
    names.erase(std::remove_if(names.begin(), names.end(), ExpectsError), names.end());
    return names;
}

// What a fixture produces: its entries in canonical form, or "error: " and the message.
std::string ParseFixture(const std::string& name, Model::ResourceDictionary& dictionary) {
    const std::u16string text = ulo::Utf8ToWide(ReadBytes(kFixtureDir / (name + ".lt")));
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
    const std::string& name = GetParam();
    Model::ResourceDictionary dictionary;
    const std::string actual = ParseFixture(name, dictionary);
    const fs::path expectedPath = kFixtureDir / (name + ".expected");

    const char* update = std::getenv("LM_UPDATE_EXPECTED");
    if (update != nullptr && std::string(update) == "1") {
        std::ofstream(expectedPath, std::ios::binary) << actual;
        return;
    }
    ASSERT_TRUE(fs::exists(expectedPath)) << expectedPath;
    EXPECT_EQ(ReadBytes(expectedPath), actual);
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

std::string ParamName(const ::testing::TestParamInfo<std::string>& info) {
    return info.param;
}

INSTANTIATE_TEST_SUITE_P(Fixtures, ParseLocFileFixture, ::testing::ValuesIn(FixtureNames()),
                         ParamName);
INSTANTIATE_TEST_SUITE_P(Fixtures, ValidLocFileFixture, ::testing::ValuesIn(ValidFixtureNames()),
                         ParamName);

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Parsing
