// The source map must put every key, reference, parameter and plural invocation where the
// runtime's parser reads it, or the checks point at the wrong place.

#include "SourceMap.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace locmgr::analysis {
namespace {

struct At {
    int line;
    int column;
    int unitColumn;
};

void ExpectAt(const TextPosition& position, const At& expected, const std::string& what) {
    EXPECT_EQ(expected.line, position.line) << what;
    EXPECT_EQ(expected.column, position.column) << what;
    EXPECT_EQ(expected.unitColumn, position.unitColumn) << what;
}

TEST(SourceMapTest, FindsEntriesWhereTheParserDoes) {
    const struct {
        std::u16string text;
        std::vector<std::u16string> keys;
        std::vector<At> positions;
    } cases[] = {
        {u"a = 'x'\nb='y'", {u"a", u"b"}, {{1, 1, 1}, {2, 1, 1}}},
        // Tabs advance to the next of 1, 5, 9; the unit column counts them as one.
        {u"\tTitle = 'x'", {u"Title"}, {{1, 5, 2}}},
        {u"a = 'x'\r\n\t\tb = 'y'", {u"a", u"b"}, {{1, 1, 1}, {2, 9, 3}}},
        {u"a = 'x'\rb = 'y'", {u"a", u"b"}, {{1, 1, 1}, {2, 1, 1}}},
        // "=", ";" and apostrophes inside strings, escapes, and a string over two lines.
        {u"a = 'b = c; d \\' e = f'\nz = 'multi\nline = no'\nw = 'x'",
         {u"a", u"z", u"w"},
         {{1, 1, 1}, {2, 1, 1}, {4, 1, 1}}},
        // A comment that looks like an entry, and an entry split over lines.
        {u"; fake = 'x'\nreal\n  =\n 'y'", {u"real"}, {{2, 1, 1}}},
        // An escaped backslash right before the closing apostrophe does not escape it.
        {u"a = 'x\\\\'\nb = 'y\\''", {u"a", u"b"}, {{1, 1, 1}, {2, 1, 1}}},
    };
    for (const auto& testCase : cases) {
        const SourceMap map(testCase.text);
        ASSERT_EQ(testCase.keys.size(), map.Entries().size());
        for (std::size_t index = 0; index < testCase.keys.size(); ++index) {
            EXPECT_EQ(testCase.keys[index], map.Entries()[index].key);
            ExpectAt(map.Entries()[index].position, testCase.positions[index],
                     std::string(testCase.keys[index].begin(), testCase.keys[index].end()));
        }
    }
}

TEST(SourceMapTest, TellsReferencesParametersAndPluralsApart) {
    const std::u16string text =
        u"Greeting = 'Hi ' + $Name + title\n"
        u"count = {$n: one + 'x', {$m: 'a', two}} + Tail\n";
    const SourceMap map(text);
    ASSERT_EQ(2u, map.Entries().size());
    EXPECT_EQ(u"greeting", map.Entries()[0].lowerKey);

    ASSERT_EQ(4u, map.References().size());
    const struct {
        std::u16string key;
        int depth;
        At at;
    } references[] = {
        {u"title", 0, {1, 28, 28}},
        {u"one", 1, {2, 14, 14}},
        {u"two", 2, {2, 35, 35}},
        {u"tail", 0, {2, 43, 43}},
    };
    std::size_t index = 0;
    for (const SourceReference& reference : map.References()) {
        ASSERT_LT(index, std::size(references));
        EXPECT_EQ(references[index].key, reference.lowerKey);
        EXPECT_EQ(references[index].depth, reference.pluralDepth);
        ExpectAt(reference.position, references[index].at, "reference");
        ++index;
    }

    ASSERT_EQ(3u, map.Parameters().size());
    EXPECT_EQ(u"Name", map.Parameters()[0].name);
    EXPECT_EQ(u"n", map.Parameters()[1].name);
    ExpectAt(map.Parameters()[2].position, {2, 26, 26}, "$m");

    // Plurals in pre-order: the outer one first.
    const SourceEntry& count = map.Entries()[1];
    ASSERT_EQ(2u, count.endPlural - count.firstPlural);
    ExpectAt(map.Plurals()[count.firstPlural].position, {2, 9, 9}, "outer {");
    ExpectAt(map.Plurals()[count.firstPlural + 1].position, {2, 25, 25}, "inner {");
    EXPECT_EQ(1u, map.Entries()[0].endReference - map.Entries()[0].firstReference);
    EXPECT_EQ(map.FindEntry(u"count"), &count);
    EXPECT_EQ(nullptr, map.FindEntry(u"missing"));
}

TEST(SourceMapTest, SurvivesTextsThatDoNotParse) {
    for (const std::u16string text :
         {u"", u"'", u"{{{{", u"}}}} a = b", u"$", u"a = '\\", u"= = =", u"\xD800 k = 'x'"}) {
        const SourceMap map(text);
        for (const SourceEntry& entry : map.Entries()) {
            EXPECT_LE(entry.offset, entry.end);
            EXPECT_LE(entry.end, text.size());
        }
    }
}

}  // namespace
}  // namespace locmgr::analysis
