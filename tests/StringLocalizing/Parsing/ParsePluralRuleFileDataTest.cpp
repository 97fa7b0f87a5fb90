// Walks tests/data/parsing/plural_rule: each NAME.rule is parsed as file "NAME.rule" and the
// result is compared with NAME.expected, which holds either the truth table of the parsed
// conditions over a spread of numbers ("x": the condition holds) or the exact message of the
// ParsingException. LM_UPDATE_EXPECTED=1 rewrites the expectations (review the diff before
// committing it).

#include "StringLocalizing/Parsing/ParsePluralRuleFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "ulo/rtl/TextConversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Parsing {
namespace {

namespace fs = std::filesystem;

const fs::path kFixtureDir = fs::path(LM_TEST_DATA_DIR) / "parsing" / "plural_rule";

using Limits = std::numeric_limits<std::int64_t>;

// Small numbers where rules differ, both signs, and the numbers around the 32-bit and 64-bit
// limits, where sign extension and the remainder by -1 matter.
// clang-format off
const std::int64_t kSpread[] = {
    Limits::min(), Limits::min() + 1, -4294967296, -4294967295, -2147483649, -2147483648,
    -111, -101, -21, -11, -2, -1, 0, 1, 2, 3, 4, 5, 10, 11, 12, 14, 20, 21, 22, 100, 101, 105, 111,
    2147483647, 2147483648, 4294967295, 4294967296, Limits::max() - 1, Limits::max()};
// clang-format on

std::string ReadBytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::string> FixtureNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kFixtureDir)) {
        if (entry.path().extension() == ".rule") {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string TruthTable(const Model::PluralRuleEntries& entries) {
    std::ostringstream table;
    table << "entries: " << entries.size() << "\n";
    if (entries.empty()) {
        return table.str();
    }
    table.width(20);
    table << "n";
    for (std::size_t index = 0; index < entries.size(); ++index) {
        table << ' ' << index;
    }
    table << '\n';
    for (const std::int64_t n : kSpread) {
        table.width(20);
        table << n;
        for (const Model::PluralRuleEntry& entry : entries) {
            table << ' ' << (entry(n) ? 'x' : '.');
        }
        table << '\n';
    }
    return table.str();
}

// What a fixture produces: its truth table, or "error: " and the message.
std::string ParseFixture(const std::string& name) {
    const std::u16string text = ulo::Utf8ToWide(ReadBytes(kFixtureDir / (name + ".rule")));
    try {
        return TruthTable(ParsePluralRuleFile(text, ulo::Utf8ToWide(name + ".rule")));
    } catch (const ParsingException& error) {
        EXPECT_EQ(ulo::WideToNarrowMessage(error.WideMessage()), error.what());
        return std::string("error: ") + error.what() + "\n";
    }
}

class ParsePluralRuleFileFixture : public ::testing::TestWithParam<std::string> {};

TEST_P(ParsePluralRuleFileFixture, MatchesExpectation) {
    const std::string& name = GetParam();
    const std::string actual = ParseFixture(name);
    const fs::path expectedPath = kFixtureDir / (name + ".expected");

    const char* update = std::getenv("LM_UPDATE_EXPECTED");
    if (update != nullptr && std::string(update) == "1") {
        std::ofstream(expectedPath, std::ios::binary) << actual;
        return;
    }
    ASSERT_TRUE(fs::exists(expectedPath)) << expectedPath;
    EXPECT_EQ(ReadBytes(expectedPath), actual);
}

INSTANTIATE_TEST_SUITE_P(Fixtures, ParsePluralRuleFileFixture, ::testing::ValuesIn(FixtureNames()),
                         [](const ::testing::TestParamInfo<std::string>& info) {
                             return info.param;
                         });

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Parsing
