#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsePluralRuleFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace LocalizationManager::StringLocalizing::Parsing {
namespace {

// offset, line, column
using Point = std::tuple<std::size_t, std::uint32_t, std::uint32_t>;

Point At(const SourcePoint& point) {
    return {point.offset, point.line, point.column};
}

SourceIndex Index(const std::u16string& text, Model::ResourceDictionary& dictionary) {
    SourceIndex index;
    ParseLocFileIndexed(text, u"test.lt", dictionary, index);
    return index;
}

TEST(SourceIndex, RecordsEveryPartWhereItStands) {
    // A tab advances to column 5; the second entry starts on line 3 after a comment.
    const std::u16string text =
        u"\tTitle = app + $Name\n; note\nstatus = {$n: 'one' + {$m: x, 'y'}, Other} + 'z'\n";
    Model::ResourceDictionary dictionary;
    const SourceIndex index = Index(text, dictionary);
    ASSERT_EQ(2u, index.entries.size());

    const IndexedEntry& title = index.entries[0];
    EXPECT_EQ(u"Title", title.key);
    EXPECT_EQ(u"title", title.lowerKey);
    EXPECT_EQ(Point(1, 1, 5), At(title.keySpan.begin));
    EXPECT_EQ(Point(6, 1, 10), At(title.keySpan.end));
    EXPECT_EQ(Point(20, 1, 24), At(title.span.end));
    ASSERT_EQ(1u, title.references.size());
    EXPECT_EQ(u"app", title.references[0].lowerKey);
    EXPECT_EQ(Point(9, 1, 13), At(title.references[0].span.begin));
    ASSERT_EQ(1u, title.parameters.size());
    EXPECT_EQ(u"Name", title.parameters[0].name);
    EXPECT_EQ(Point(15, 1, 19), At(title.parameters[0].span.begin));
    EXPECT_TRUE(title.plurals.empty());

    ASSERT_EQ(1u, index.comments.size());
    EXPECT_EQ(Point(21, 2, 1), At(index.comments[0].begin));
    EXPECT_EQ(Point(27, 2, 7), At(index.comments[0].end));

    const IndexedEntry& status = index.entries[1];
    EXPECT_EQ(Point(28, 3, 1), At(status.keySpan.begin));
    ASSERT_EQ(2u, status.plurals.size());
    const IndexedPlural& outer = status.plurals[0];
    const IndexedPlural& inner = status.plurals[1];
    EXPECT_EQ(u"n", outer.parameter);
    EXPECT_EQ(0, outer.pluralDepth);
    EXPECT_EQ(Point(37, 3, 10), At(outer.span.begin));
    EXPECT_EQ(Point(70, 3, 43), At(outer.span.end));
    EXPECT_EQ(Point(38, 3, 11), At(outer.parameterSpan.begin));
    ASSERT_EQ(2u, outer.forms.size());
    EXPECT_EQ(Point(42, 3, 15), At(outer.forms[0].begin));
    EXPECT_EQ(Point(64, 3, 37), At(outer.forms[1].begin));
    EXPECT_EQ(u"m", inner.parameter);
    EXPECT_EQ(1, inner.pluralDepth);
    ASSERT_EQ(2u, inner.forms.size());
    // The reference inside both invocations, and the one in the outer invocation's last form.
    ASSERT_EQ(2u, status.references.size());
    EXPECT_EQ(u"x", status.references[0].lowerKey);
    EXPECT_EQ(2, status.references[0].pluralDepth);
    EXPECT_EQ(u"other", status.references[1].lowerKey);
    EXPECT_EQ(1, status.references[1].pluralDepth);
    EXPECT_TRUE(status.parameters.empty()) << "discriminators are not parameters";
}

TEST(SourceIndex, CollectsEveryDuplicateAndKeepsTheFirstDefinitions) {
    Model::ResourceDictionary dictionary;
    const SourceIndex index = Index(u"a = '1'\nb = '2'\nA = '3'\nB = '4'\na = '5'\n", dictionary);
    EXPECT_EQ(5u, index.entries.size());
    ASSERT_EQ(3u, index.duplicates.size());
    const DuplicateDefinition& first = index.duplicates[0];
    EXPECT_EQ(u"a", first.lowerKey);
    EXPECT_EQ(u"A", first.writtenKey);
    EXPECT_EQ(Point(0, 1, 1), At(first.firstKey.begin));
    EXPECT_EQ(Point(16, 3, 1), At(first.secondKey.begin));
    EXPECT_EQ(u"b", index.duplicates[1].lowerKey);
    EXPECT_EQ(Point(0, 1, 1), At(index.duplicates[2].firstKey.begin));
    EXPECT_EQ(u"1", boost::get<std::u16string>(dictionary.at(u"a").operands.at(0)));
    EXPECT_EQ(u"2", boost::get<std::u16string>(dictionary.at(u"b").operands.at(0)));

    // The runtime's parse stops at the first, with the key as a field.
    Model::ResourceDictionary runtime;
    try {
        ParseLocFile(u"a = '1'\nA = '2'\n", u"test.lt", runtime);
        FAIL() << "a duplicate was accepted";
    } catch (const ParsingException& error) {
        ASSERT_NE(nullptr, error.DuplicateKey());
        EXPECT_EQ(u"a", *error.DuplicateKey());
        EXPECT_EQ(nullptr, error.Syntax());
    }
}

TEST(SourceIndex, SyntaxErrorsCarryTheirFields) {
    const struct {
        const char* name;
        std::u16string text;
        bool ruleFile;
        SyntaxError expected;
    } cases[] = {
        {"missing value",
         u"a = 'x'\n\tb = ",
         false,
         {u"test.lt", 2, 8, 12, u"\tb = ", ExpectedKind::kElement, u"<value>"}},
        {"missing equals sign",
         u"a 'x'",
         false,
         {u"test.lt", 1, 3, 2, u"a 'x'", ExpectedKind::kLiteral, u"\"=\""}},
        {"not a key",
         u"a = 'x'\n%",
         false,
         {u"test.lt", 2, 1, 8, u"%", ExpectedKind::kEndOfInput, u"<eoi>"}},
        {"rule without ';'",
         u"n == 1",
         true,
         {u"test.lt", 1, 7, 6, u"n == 1", ExpectedKind::kLiteral, u"\";\""}},
    };
    for (const auto& testCase : cases) {
        try {
            if (testCase.ruleFile) {
                ParsePluralRuleFile(testCase.text, u"test.lt");
            } else {
                Model::ResourceDictionary dictionary;
                SourceIndex index;
                ParseLocFileIndexed(testCase.text, u"test.lt", dictionary, index);
            }
            ADD_FAILURE() << testCase.name << ": accepted";
        } catch (const ParsingException& error) {
            ASSERT_NE(nullptr, error.Syntax()) << testCase.name;
            const SyntaxError& syntax = *error.Syntax();
            EXPECT_EQ(testCase.expected.fileName, syntax.fileName) << testCase.name;
            EXPECT_EQ(testCase.expected.line, syntax.line) << testCase.name;
            EXPECT_EQ(testCase.expected.column, syntax.column) << testCase.name;
            EXPECT_EQ(testCase.expected.offset, syntax.offset) << testCase.name;
            EXPECT_EQ(testCase.expected.lineText, syntax.lineText) << testCase.name;
            EXPECT_EQ(testCase.expected.expectedKind, syntax.expectedKind) << testCase.name;
            EXPECT_EQ(testCase.expected.expected, syntax.expected) << testCase.name;
            EXPECT_EQ(nullptr, error.DuplicateKey()) << testCase.name;
        }
    }
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Parsing
