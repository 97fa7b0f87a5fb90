// Walks tests/data/parsing/plural_rule: each NAME.rule is parsed as file "NAME.rule" and the
// result is compared with NAME.expected, which holds either the truth table of the parsed
// conditions over a spread of numbers ("x": the condition holds) or the exact message of the
// ParsingException.

#include "StringLocalizing/Parsing/ParsePluralRuleFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "TestSupport/Fixtures.h"
#include "ulo/rtl/TextConversion.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <limits>
#include <sstream>
#include <string>

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
    const std::u16string text = ulo::Utf8ToWide(Testing::ReadBytes(kFixtureDir / (name + ".rule")));
    try {
        return TruthTable(ParsePluralRuleFile(text, ulo::Utf8ToWide(name + ".rule")));
    } catch (const ParsingException& error) {
        EXPECT_EQ(ulo::WideToNarrowMessage(error.WideMessage()), error.what());
        return std::string("error: ") + error.what() + "\n";
    }
}

class ParsePluralRuleFileFixture : public ::testing::TestWithParam<std::string> {};

TEST_P(ParsePluralRuleFileFixture, MatchesExpectation) {
    Testing::ExpectMatchesExpectation(kFixtureDir, GetParam(), ParseFixture(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Fixtures, ParsePluralRuleFileFixture,
                         ::testing::ValuesIn(Testing::FixtureNames(kFixtureDir, ".rule")),
                         Testing::FixtureTestName);

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Parsing
