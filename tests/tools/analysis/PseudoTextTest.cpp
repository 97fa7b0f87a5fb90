// Pseudo-localized texts must change what a reader sees and nothing the runtime relies on.

#include "PseudoText.h"
#include "StringLocalizing/Model/ValueFormat.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "ValueWalk.h"

#include <gtest/gtest.h>

#include <string>

namespace locmgr::analysis {
namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

Model::ResourceDictionary Parse(const std::u16string& text) {
    Model::ResourceDictionary dictionary;
    Parsing::ParseLocFile(text, u"test.lt", dictionary);
    return dictionary;
}

// Everything but the literal texts, in order: references, parameters, plural forms.
std::u16string Structure(const Model::Value& value) {
    std::u16string structure;
    for (const ReferenceUse& reference : References(value)) {
        structure += u"ref:" + reference.key + (reference.insidePlural ? u"(in)" : u"") + u" ";
    }
    for (const std::u16string& name : ParameterNames(value)) {
        structure += u"$" + name + u" ";
    }
    for (const Model::PluralForm* plural : PluralInvocations(value)) {
        structure += u"{" + std::u16string(plural->forms.size(), u'.') + u"} ";
    }
    return structure;
}

TEST(PseudoTextTest, KeepsTheStructureAndParsesBack) {
    const std::u16string source =
        u"title = 'Download'\n"
        u"status = 'Loaded ' + $count + ' ' + {$count: 'file', 'files'} + '.'\n"
        u"retry = title + ': it\\'s \\\\ busy\\nagain'\n"
        u"onlyReference = title\n"
        u"nested = {$a: {$b: 'x', $b + ' y'}, ''}\n"
        u"empty = ''\n";
    const Model::ResourceDictionary original = Parse(source);
    for (const PseudoStyle style : {PseudoStyle::kAccents, PseudoStyle::kLong, PseudoStyle::kRtl}) {
        std::u16string written;
        for (const auto& [key, value] : original) {
            written += key + u" = " + Model::FormatValue(PseudoValue(value, style)) + u"\n";
        }
        const Model::ResourceDictionary reparsed = Parse(written);
        ASSERT_EQ(original.size(), reparsed.size());
        for (const auto& [key, value] : original) {
            ASSERT_EQ(1u, reparsed.count(key));
            EXPECT_EQ(Structure(value), Structure(reparsed.at(key)));
        }
        EXPECT_EQ(original.at(u"onlyreference"), reparsed.at(u"onlyreference"));
    }
}

TEST(PseudoTextTest, ChangesLettersOnly) {
    const struct {
        PseudoStyle style;
        std::u16string text;
        std::u16string expected;
    } cases[] = {
        {PseudoStyle::kAccents, u"Save 2 files?", u"Šåṽé 2 ƒîļéš?"},
        {PseudoStyle::kAccents, u"Загрузка 🎉\n", u"Загрузка 🎉\n"},
        {PseudoStyle::kLong, u"Save", u"Šåṽé~~"},
        {PseudoStyle::kLong, u" - ", u" - "},
        {PseudoStyle::kRtl, u"Save", u"Save"},
    };
    for (const auto& testCase : cases) {
        EXPECT_EQ(testCase.expected, PseudoText(testCase.text, testCase.style));
    }
}

TEST(PseudoTextTest, MarksBothEndsOfAValueWithText) {
    const Model::ResourceDictionary dictionary =
        Parse(u"a = 'Hi'\nb = $name + ' x'\nc = title\nd = {$n: 'a', 'b'}\n");
    const auto format = [&](const char16_t* key, PseudoStyle style) {
        return Model::FormatValue(PseudoValue(dictionary.at(key), style));
    };
    EXPECT_EQ(u"'[Ĥî]'", format(u"a", PseudoStyle::kAccents));
    EXPECT_EQ(u"'[' + $name + ' ẋ]'", format(u"b", PseudoStyle::kAccents));
    EXPECT_EQ(u"title", format(u"c", PseudoStyle::kAccents));
    EXPECT_EQ(u"{$n: 'å', 'ƀ'}", format(u"d", PseudoStyle::kAccents));
    EXPECT_EQ(u"'\u202EHi\u202C'", format(u"a", PseudoStyle::kRtl));
    EXPECT_FALSE(PseudoStyleOf("wide"));
    EXPECT_EQ(PseudoStyle::kLong, PseudoStyleOf("long"));
}

}  // namespace
}  // namespace locmgr::analysis
