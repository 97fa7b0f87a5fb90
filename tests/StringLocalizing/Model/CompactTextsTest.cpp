#include "StringLocalizing/Model/CompactTexts.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "ulo/rtl/TextConversion.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace LocalizationManager::StringLocalizing::Model {
namespace {

Value Text(const std::u16string& text) {
    return Value{{text}};
}

void Seal(CompactTexts& texts) {
    std::u16string duplicate;
    ASSERT_TRUE(texts.Seal(duplicate)) << ulo::WideToUtf8(duplicate);
}

std::u16string Numbered(const char16_t* prefix, int number) {
    const std::string digits = std::to_string(number);
    return prefix + std::u16string(digits.begin(), digits.end());
}

TEST(CompactTexts, FindsExactlyTheStoredKeys) {
    // Lengths around the eight-byte steps of the hash, a key that is a prefix of another, and
    // keys that differ only in their last unit.
    const std::u16string keys[] = {u"",
                                   u"a",
                                   u"abc",
                                   u"abcd",
                                   u"abcde",
                                   u"abcdefgh",
                                   u"abcdefghi",
                                   u"key_00001",
                                   u"key_00002",
                                   u"\xD83D\xDE00",
                                   u"a_key_of_sixteen",
                                   u"a_key_longer_than_twenty_units"};
    CompactTexts texts;
    for (const std::u16string& key : keys) {
        texts.Add(key, Text(u"text of " + key));
    }
    Seal(texts);
    EXPECT_EQ(std::size(keys), texts.Size());
    for (const std::u16string& key : keys) {
        CompactTexts::Entry entry;
        ASSERT_TRUE(texts.Find(key, entry)) << ulo::WideToUtf8(key);
        EXPECT_EQ(key, entry.key);
        EXPECT_EQ(u"text of " + key, entry.plainText);
    }
    for (const std::u16string absent :
         {u"ab", u"abcdefg", u"key_0000", u"key_00003", u"Key_00001", u"key_000010", u"\xD83D",
          u"a_key_of_sixteem", u"a_key_of_sixteen_"}) {
        CompactTexts::Entry entry;
        EXPECT_FALSE(texts.Find(absent, entry)) << ulo::WideToUtf8(absent);
    }
}

TEST(CompactTexts, KeepsOtherValuesAsValuesForTheCompiler) {
    CompactTexts texts;
    texts.Add(u"plain", Text(u"Loaded"));
    texts.Add(u"empty", Text(u""));
    const Value param{{Param{u"n"}}};
    const Value two{{std::u16string(u"a"), std::u16string(u"b")}};
    texts.Add(u"param", Value(param));
    texts.Add(u"two", Value(two));
    texts.Add(u"none", Value{});
    Seal(texts);

    CompactTexts::Entry entry;
    ASSERT_TRUE(texts.Find(u"empty", entry));
    EXPECT_TRUE(entry.IsPlainText());
    EXPECT_EQ(u"", entry.plainText);
    ASSERT_EQ(3u, texts.Composites().size());
    ASSERT_TRUE(texts.Find(u"param", entry));
    EXPECT_FALSE(entry.IsPlainText());
    EXPECT_EQ(param, *entry.value);
    // The entry refers to the value the compiler changes, not to a copy.
    EXPECT_EQ(&texts.Composites().at(u"two"), (texts.Find(u"two", entry), entry.value));
    EXPECT_EQ(two, texts.Composites().at(u"two"));
    ASSERT_TRUE(texts.Find(u"plain", entry));
    EXPECT_EQ(u"Loaded", entry.plainText);
}

TEST(CompactTexts, SealNamesTheFirstKeyAddedAgain) {
    CompactTexts texts;
    for (const char16_t* key : {u"a", u"b", u"c", u"b", u"a"}) {
        texts.Add(key, Text(u"text"));
    }
    std::u16string duplicate;
    EXPECT_FALSE(texts.Seal(duplicate));
    EXPECT_EQ(u"b", duplicate);

    CompactTexts composites;
    composites.Add(u"ref", Value{{KeyRef{u"key"}}});
    composites.Add(u"ref", Value{{Param{u"p"}}});
    EXPECT_FALSE(composites.Seal(duplicate));
    EXPECT_EQ(u"ref", duplicate);
}

TEST(CompactTexts, ManyKeysStayFindable) {
    // Enough keys that the table grows many times and keys probe past each other.
    CompactTexts texts;
    for (int number = 0; number < 20000; number += 2) {
        const std::u16string key = Numbered(u"k", number);
        Value value = number % 6 == 0 ? Value{{Param{key}}} : Text(Numbered(u"text ", number));
        texts.Add(key, std::move(value));
    }
    Seal(texts);
    for (int number = 0; number < 20000; ++number) {
        CompactTexts::Entry entry;
        const bool found = texts.Find(Numbered(u"k", number), entry);
        ASSERT_EQ(number % 2 == 0, found) << number;
        if (found && number % 6 != 0) {
            EXPECT_EQ(Numbered(u"text ", number), entry.plainText);
        }
    }
    ASSERT_EQ(10000u, texts.Size());
    std::set<std::u16string> listed;
    for (const CompactTexts::Entry& entry : texts.Entries()) {
        listed.emplace(entry.key);
        const int number = std::stoi(ulo::WideToUtf8(std::u16string(entry.key.substr(1))));
        EXPECT_EQ(number % 6 != 0, entry.IsPlainText()) << number;
    }
    EXPECT_EQ(10000u, listed.size());
}

TEST(CompactTexts, KeepsWhatTheFileWritesWhereItWritesIt) {
    // Keys written in lower case and texts written without escapes stay in the file's text;
    // the others are copied, and every entry reads the same either way.
    CompactTexts texts(
        u"plain = 'Loaded'\nUpper = 'Upper key'\nescaped = 'it\\'s'\n"
        u"empty = ''\nref = plain\ntail = 'a\\\\'  ; after\n");
    Parsing::ParseLocFile(texts.Source(), u"test.lt", texts);
    const std::u16string& source = texts.Source();
    const auto inSource = [&source](std::u16string_view units) {
        return units.data() >= source.data() &&
               units.data() + units.size() <= source.data() + source.size();
    };
    const struct {
        const char16_t* key;
        const char16_t* text;
        bool keyInSource;
        bool textInSource;
    } cases[] = {
        {u"plain", u"Loaded", true, true},  {u"upper", u"Upper key", false, true},
        {u"escaped", u"it's", true, false}, {u"empty", u"", true, true},
        {u"tail", u"a\\", true, false},
    };
    for (const auto& expected : cases) {
        CompactTexts::Entry entry;
        ASSERT_TRUE(texts.Find(expected.key, entry)) << ulo::WideToUtf8(expected.key);
        EXPECT_EQ(expected.key, entry.key);
        EXPECT_EQ(expected.text, entry.plainText) << ulo::WideToUtf8(expected.key);
        EXPECT_EQ(expected.keyInSource, inSource(entry.key)) << ulo::WideToUtf8(expected.key);
        if (!entry.plainText.empty()) {  // an empty text stands nowhere in particular
            EXPECT_EQ(expected.textInSource, inSource(entry.plainText))
                << ulo::WideToUtf8(expected.key);
        }
    }
    CompactTexts::Entry entry;
    ASSERT_TRUE(texts.Find(u"ref", entry));
    EXPECT_FALSE(entry.IsPlainText());
}

TEST(CompactTexts, EmptyOrUnsealedStoreFindsNothing) {
    CompactTexts texts;
    CompactTexts::Entry entry;
    EXPECT_TRUE(texts.Empty());
    EXPECT_FALSE(texts.Find(u"", entry));
    texts.Add(u"key", Text(u"text"));
    EXPECT_FALSE(texts.Find(u"key", entry));
    Seal(texts);
    EXPECT_TRUE(texts.Find(u"key", entry));

    CompactTexts empty;
    Seal(empty);
    EXPECT_TRUE(empty.Empty());
    EXPECT_FALSE(empty.Find(u"key", entry));
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Model
