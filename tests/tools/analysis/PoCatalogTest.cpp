// Texts as translators see them in a PO catalog: whole sentences per choice of plural forms,
// placeholders in brace format, and the culture's rule as the catalog's Plural-Forms.

#include "ParseValue.h"
#include "PoCatalog.h"
#include "TranslationUnit.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace locmgr::analysis {
namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;

TEST(PoCatalogTest, EverySentenceIsWholeWithItsPlaceholders) {
    const struct {
        std::u16string value;
        std::map<std::u16string, std::size_t> forms;
        std::string sentence;
    } cases[] = {
        {u"'Loaded ' + fileCount + ' of ' + $total + '.'",
         {},
         "Loaded {key.filecount} of {total}."},
        {u"'{x}' + $n", {}, "{{x}}{n}"},
        {u"'Loaded ' + {$count: 'one file', $count + ' files'} + '.'",
         {{u"count", 1}},
         "Loaded {count} files."},
        // Forms past the end of an invocation take its last form; no choice takes the first.
        {u"{$count: 'a', 'b'}", {{u"count", 5}}, "b"},
        {u"{$count: 'a', 'b'}", {}, "a"},
        // Invocations on one parameter choose together; nested ones follow their own.
        {u"{$c: 'one', 'many'} + ' / ' + {$c: 'x', 'y'} + {$f: '', ' in ' + {$c: '1', 'n'}}",
         {{u"c", 1}, {u"f", 1}},
         "many / y in n"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(test.sentence, BraceFormat(Evaluate(ParseValue(test.value), test.forms)));
    }
    EXPECT_EQ(
        (std::vector<std::u16string>{u"c", u"g", u"f"}),
        Discriminators(ParseValue(u"{$c: 'a', {$g: 'x', 'y'}} + {$f: 'a', 'b'} + {$c: 'a'}")));
}

TEST(PoCatalogTest, PluralFormsPickTheFirstConditionThatHolds) {
    EXPECT_EQ("nplurals=1; plural=0;", PluralFormsHeader({}));
    EXPECT_EQ("nplurals=1; plural=0;", PluralFormsHeader({"n >= 0 || n < 1"}));
    EXPECT_EQ("nplurals=3; plural=(n % 10 == 1) ? 0 : (n == 2 || n < 1) ? 1 : 2;",
              PluralFormsHeader({"n % 10 == 1", "n == 2 || n < 1", "n >= 0 || n < 1"}));
}

TEST(PoCatalogTest, WritesTheFormatGettextReads) {
    CatalogUnit single;
    single.notes = {"window caption"};
    single.file = "neutral/Locs/s.lt";
    single.line = 3;
    single.context = "title";
    single.source = {{Piece::Kind::kText, u"Say \"hi\"\\\n"}};
    single.targets = {{{Piece::Kind::kText, u"Сказать"}}};
    // Untranslated: as many empty translations as the rule has forms.
    CatalogUnit plural;
    plural.file = "neutral/Locs/s.lt";
    plural.line = 4;
    plural.context = "files|folders=1";
    plural.plural = true;
    plural.source = {{Piece::Kind::kText, u"one file"}};
    plural.sourcePlural = {{Piece::Kind::kParameter, u"count"}, {Piece::Kind::kText, u" files"}};
    const Catalog catalog{
        "s", "ru", "en", {"n == 1", "n == 2", "n >= 0 || n < 1"}, "Texts", {single, plural}};
    std::ostringstream out;
    WritePo(out, catalog);
    EXPECT_EQ(
        "# Texts\n"
        "msgid \"\"\n"
        "msgstr \"\"\n"
        "\"Project-Id-Version: s\\n\"\n"
        "\"PO-Revision-Date: \\n\"\n"
        "\"Last-Translator: \\n\"\n"
        "\"Language-Team: \\n\"\n"
        "\"MIME-Version: 1.0\\n\"\n"
        "\"Content-Type: text/plain; charset=UTF-8\\n\"\n"
        "\"Content-Transfer-Encoding: 8bit\\n\"\n"
        "\"Language: ru\\n\"\n"
        "\"Plural-Forms: nplurals=3; plural=(n == 1) ? 0 : (n == 2) ? 1 : 2;\\n\"\n"
        "\n"
        "#. window caption\n"
        "#: neutral/Locs/s.lt:3\n"
        "#, python-brace-format\n"
        "msgctxt \"title\"\n"
        "msgid \"Say \\\"hi\\\"\\\\\\n\"\n"
        "msgstr \"Сказать\"\n"
        "\n"
        "#: neutral/Locs/s.lt:4\n"
        "#, python-brace-format\n"
        "msgctxt \"files|folders=1\"\n"
        "msgid \"one file\"\n"
        "msgid_plural \"{count} files\"\n"
        "msgstr[0] \"\"\n"
        "msgstr[1] \"\"\n"
        "msgstr[2] \"\"\n",
        out.str());
    // UTF-8 has no way to write a lone surrogate.
    single.targets = {{{Piece::Kind::kText, std::u16string(1, char16_t{0xD800})}}};
    EXPECT_THROW(WritePo(out, Catalog{"s", "ru", "", {}, "", {single}}), UnwritableText);
}

}  // namespace
}  // namespace locmgr::analysis
