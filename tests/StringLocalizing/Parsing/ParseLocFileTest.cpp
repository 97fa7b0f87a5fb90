#include "StringLocalizing/Parsing/LocFileGrammar.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "TestSupport/ExpectThrowMessage.h"
#include "TestSupport/GlobalLocale.h"
#include "ulo/rtl/TextConversion.h"

#include <gtest/gtest.h>

#include <locale>
#include <stdexcept>
#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {
namespace {

using Model::KeyRef;
using Model::Param;
using Model::PluralForm;
using Model::ResourceDictionary;
using Model::Value;

ResourceDictionary Parse(const std::u16string& text) {
    ResourceDictionary dictionary;
    ParseLocFile(text, u"test.lt", dictionary);
    return dictionary;
}

std::u16string NestedPlurals(int depth) {
    std::u16string text = u"a = ";
    for (int level = 0; level < depth; ++level) {
        text += u"{$n: ";
    }
    text += u"'x'";
    text.append(depth, u'}');
    return text;
}

TEST(ParseLocFile, BuildsOperandsOfEachKindInFileOrder) {
    const ResourceDictionary dictionary =
        Parse(u"status = 'Loaded ' + $Count + ' ' + {$Count: 'file', Files} + Title");
    const Value& status = dictionary.at(u"status");
    ASSERT_EQ(5u, status.operands.size());
    EXPECT_EQ(u"Loaded ", boost::get<std::u16string>(status.operands[0]));
    EXPECT_EQ(u"Count", boost::get<Param>(status.operands[1]).name);
    EXPECT_EQ(u" ", boost::get<std::u16string>(status.operands[2]));
    const auto& plural = boost::get<PluralForm>(status.operands[3]);
    EXPECT_EQ(u"Count", plural.param);
    ASSERT_EQ(2u, plural.forms.size());
    EXPECT_EQ(u"file", boost::get<std::u16string>(plural.forms[0].operands.at(0)));
    EXPECT_EQ(u"files", boost::get<KeyRef>(plural.forms[1].operands.at(0)).key);
    EXPECT_EQ(u"title", boost::get<KeyRef>(status.operands[4]).key);
}

TEST(ParseLocFile, EmptyQuotedStringIsOneEmptyTextOperand) {
    const ResourceDictionary dictionary = Parse(u"a = ''");
    ASSERT_EQ(1u, dictionary.at(u"a").operands.size());
    EXPECT_EQ(u"", boost::get<std::u16string>(dictionary.at(u"a").operands[0]));
}

// A text grown unit by unit would keep up to as much again as spare capacity for the life of
// the dictionary; texts are stored with exactly their length.
TEST(ParseLocFile, StoresTextsWithoutSpareCapacity) {
    const std::u16string longText(100, u'x');
    const ResourceDictionary dictionary =
        Parse(u"plain = '" + longText + u"' + 'two texts'\n" +
              u"escaped = 'it\\'s a \\\\ path\\nand more'\n" + u"plural = {$n: '" + longText +
              u"', 'eight chars'}");
    const auto& plural = boost::get<PluralForm>(dictionary.at(u"plural").operands.at(0));
    const std::u16string* texts[] = {
        &boost::get<std::u16string>(dictionary.at(u"plain").operands.at(0)),
        &boost::get<std::u16string>(dictionary.at(u"plain").operands.at(1)),
        &boost::get<std::u16string>(dictionary.at(u"escaped").operands.at(0)),
        &boost::get<std::u16string>(plural.forms.at(0).operands.at(0)),
        &boost::get<std::u16string>(plural.forms.at(1).operands.at(0)),
    };
    const std::size_t inlineCapacity = std::u16string().capacity();
    for (const std::u16string* text : texts) {
        ASSERT_GT(text->size(), inlineCapacity) << "a text this short would not be on the heap";
        EXPECT_EQ(text->size(), text->capacity());
    }
}

TEST(ParseLocFile, KeepsEntriesParsedBeforeTheFailingOne) {
    ResourceDictionary dictionary;
    EXPECT_THROW(ParseLocFile(u"a = 'x'\nb = 'y'\nc = ,\nd = 'z'", u"f.lt", dictionary),
                 ParsingException);
    EXPECT_EQ(2u, dictionary.size());
    EXPECT_EQ(1u, dictionary.count(u"a"));
    EXPECT_EQ(1u, dictionary.count(u"b"));
}

TEST(ParseLocFile, DuplicateKeyKeepsTheFirstValue) {
    ResourceDictionary dictionary;
    EXPECT_THROW_MSG(ParseLocFile(u"A = 'x'\na = 'y'", u"f.lt", dictionary), ParsingException,
                     "duplicate key found (keys are case insensitive): 'a'");
    ASSERT_EQ(1u, dictionary.size());
    EXPECT_EQ(u"x", boost::get<std::u16string>(dictionary.at(u"a").operands.at(0)));
}

// Entries after the last key in order go in without a search; a duplicate must still be found
// wherever its first occurrence stands.
TEST(ParseLocFile, FindsADuplicateWhereverTheFirstOccurrenceStands) {
    const struct {
        std::u16string text;
        std::string duplicate;
    } cases[] = {
        {u"a = '1'\nb = '2'\nc = '3'\nA = '4'", "a"},
        {u"a = '1'\nb = '2'\nc = '3'\nB = '4'", "b"},
        {u"a = '1'\nb = '2'\nc = '3'\nC = '4'", "c"},
        {u"c = '1'\nb = '2'\na = '3'\nB = '4'", "b"},
    };
    for (const auto& [text, duplicate] : cases) {
        EXPECT_THROW_MSG(Parse(text), ParsingException,
                         "duplicate key found (keys are case insensitive): '" + duplicate + "'");
    }
}

// The compact store finds a key defined twice only when the parse ends, yet it must report
// what the dictionary, which stops at the duplicate, reports: the first failure in file order.
TEST(ParseLocFile, TheCompactStoreFailsAsTheDictionary) {
    const std::u16string texts[] = {
        u"a = '1'\nb = '2'\nA = '3'\nb = '4'",      // two duplicates: the first in file order
        u"a = '1'\nA = '2'\nb = ,",                 // a duplicate before a syntax error
        u"a = '1'\nb = ,\nA = '2'",                 // a syntax error before a duplicate
        u"r = $p\nR = a + b\nx = '1'",              // composite values
        u"a = '1'\nb = '2' c = '3'\nC = 'x' + $p",  // entries sharing a line
    };
    for (const std::u16string& text : texts) {
        std::string expected = "no failure";
        try {
            Parse(text);
        } catch (const ParsingException& error) {
            expected = error.what();
        }
        std::string actual = "no failure";
        try {
            Model::CompactTexts store(text);
            ParseLocFile(store.Source(), u"test.lt", store);
        } catch (const ParsingException& error) {
            actual = error.what();
        }
        EXPECT_NE("no failure", expected);
        EXPECT_EQ(expected, actual);
    }
}

// The runtime's parse takes entries of one text without escapes by a shorter rule; the parse for
// tools, which records spans, uses the full rules only. Both must read every text alike, above
// all the entries just outside the short rule's reach.
TEST(ParseLocFile, TheShortRuleForPlainEntriesReadsAsTheFullRules) {
    const std::u16string texts[] = {
        u"a = 'x'\nb='y'\n  c  =  'z'  ; comment\nd = ''",
        u"a = 'x' + 'y'\nb = 'x'\n  + 'y'",  // the "+" on the next line continues the value
        u"a = 'it\\'s'\nb = 'a\\nb'\nc = 'back\\\\slash'\nd = 'lone \\ kept'",
        u"a = 'x' +",        // a "+" with no operand after it
        u"a = 'x' b = 'y'",  // two entries on one line
        u"a = 'x' 'y'",      // a second text without "+"
        u"a = 'unclosed",
        u"a = 'x' + $p\nb = {$n: 'one', 'two'}\nc = a",
        u"A = 'x'\na = 'y'",
    };
    for (const std::u16string& text : texts) {
        ResourceDictionary runtime;
        std::string runtimeReport;
        try {
            ParseLocFile(text, u"test.lt", runtime);
        } catch (const ParsingException& error) {
            runtimeReport = error.what();
        }
        ResourceDictionary tools;
        SourceIndex index;
        std::string toolsReport;
        try {
            ParseLocFileIndexed(text, u"test.lt", tools, index);
        } catch (const ParsingException& error) {
            toolsReport = error.what();
        }
        EXPECT_EQ(runtime, tools) << ulo::WideToUtf8(text);
        if (index.duplicates.empty()) {
            EXPECT_EQ(runtimeReport, toolsReport) << ulo::WideToUtf8(text);
        }
    }
}

TEST(ParseLocFile, ReportKeepsWideTextAndNarrowsItForWhat) {
    try {
        Parse(u"\u0416 = 'x'");
        FAIL() << "a key may not begin with a Cyrillic letter";
    } catch (const ParsingException& error) {
        const std::u16string expected =
            u"parse error at file test.lt line 1 column 1\n\"\u0416 = 'x'\"\n ^- expecting <eoi> "
            u"here";
        EXPECT_EQ(expected, error.WideMessage());
        EXPECT_EQ(
            "parse error at file test.lt line 1 column 1\n\"\xD0\x96 = 'x'\"\n ^- expecting <eoi> "
            "here",
            std::string(error.what()));
    }
}

// Whitespace is whatever the runtime's wide classification calls a space, beyond ASCII too:
// the ideographic space separates tokens only once the global locale says it is a space.
TEST(ParseLocFile, WhitespaceBeyondAsciiFollowsTheGlobalLocale) {
    const std::u16string text = u"a\u3000=\u3000'x'";
    EXPECT_THROW(Parse(text), ParsingException) << "the classic locale knows ASCII spaces only";
    std::locale utf8;
    try {
        utf8 = std::locale("C.UTF-8");
    } catch (const std::runtime_error&) {
        GTEST_SKIP() << "no C.UTF-8 locale on this machine";
    }
    const Testing::GlobalLocale scope(utf8);
    EXPECT_EQ(u"x", boost::get<std::u16string>(Parse(text).at(u"a").operands.at(0)));
}

TEST(ParseLocFile, AcceptsPluralFormsNestedUpToTheLimit) {
    const ResourceDictionary dictionary = Parse(NestedPlurals(kMaxPluralNesting));
    const Value* value = &dictionary.at(u"a");
    for (int level = 0; level < kMaxPluralNesting; ++level) {
        value = &boost::get<PluralForm>(value->operands.at(0)).forms.at(0);
    }
    EXPECT_EQ(u"x", boost::get<std::u16string>(value->operands.at(0)));
}

TEST(ParseLocFile, RefusesDeeperNestingWithAPositionedReport) {
    const std::u16string text = NestedPlurals(kMaxPluralNesting + 1);
    const std::string column = std::to_string(5 + 5 * kMaxPluralNesting + 1);
    std::string expected = "parse error at file test.lt line 1 column " + column + "\n\"" +
                           std::string(text.begin(), text.end()) + "\"\n";
    expected += std::string(std::stoi(column), ' ') +
                "^- expecting <at most 32 nested plural form invocations> here";
    EXPECT_THROW_MSG(Parse(text), ParsingException, expected);
}

// Far beyond the depth at which an unguarded descent would exhaust the stack.
TEST(ParseLocFile, HostileNestingFailsWithoutExhaustingTheStack) {
    std::u16string text = u"a = ";
    for (int level = 0; level < 200000; ++level) {
        text += u"{$n:";
    }
    EXPECT_THROW(Parse(text), ParsingException);
}

TEST(ParseLocFile, SameNestingIsAllowedAgainAfterAnInvocationCloses) {
    // The depth counts open invocations, not invocations seen so far.
    std::u16string text;
    for (int entry = 0; entry < 3; ++entry) {
        text += u"k" + std::u16string(1, static_cast<char16_t>(u'a' + entry)) +
                NestedPlurals(kMaxPluralNesting).substr(1) + u"\n";
    }
    EXPECT_EQ(3u, Parse(text).size());
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Parsing
