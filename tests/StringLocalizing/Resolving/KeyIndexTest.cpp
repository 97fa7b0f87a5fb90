#include "StringLocalizing/Resolving/KeyIndex.h"
#include "ulo/rtl/TextConversion.h"

#include <gtest/gtest.h>

#include <string>

namespace LocalizationManager::StringLocalizing::Resolving {
namespace {

using Model::ResourceDictionary;
using Model::Value;

Value Text(const std::u16string& text) {
    return Value{{text}};
}

TEST(KeyIndex, FindsExactlyTheStoredKeys) {
    ResourceDictionary dictionary;
    // Lengths around the eight-byte steps of the hash, a key that is a prefix of another, and
    // keys that differ only in their last unit.
    for (const std::u16string key :
         {u"", u"a", u"abc", u"abcd", u"abcde", u"abcdefgh", u"abcdefghi", u"key_00001",
          u"key_00002", u"\xD83D\xDE00", u"a_key_of_sixteen", u"a_key_of_sixteen_",
          u"a_key_longer_than_twenty_units"}) {
        dictionary.emplace(key, Text(u"text of " + key));
    }
    const KeyIndex index(dictionary);
    EXPECT_EQ(dictionary.size(), index.Size());
    for (const auto& [key, value] : dictionary) {
        const KeyIndex::Entry* entry = index.Find(key);
        ASSERT_NE(nullptr, entry);
        EXPECT_EQ(&value, &entry->Value()) << "the value in place, not a copy";
    }
    for (const std::u16string absent :
         {u"ab", u"abcdefg", u"key_0000", u"key_00003", u"Key_00001", u"key_000010", u"\xD83D",
          u"a_key_of_sixteem", u"a_key_of_sixteen_x"}) {
        EXPECT_EQ(nullptr, index.Find(absent));
    }
}

TEST(KeyIndex, KnowsWhichValuesAreOneLiteralText) {
    ResourceDictionary dictionary;
    dictionary[u"plain"] = Text(u"Loaded");
    dictionary[u"empty"] = Text(u"");
    dictionary[u"param"] = Value{{Model::Param{u"n"}}};
    dictionary[u"two"] = Value{{std::u16string(u"a"), std::u16string(u"b")}};
    dictionary[u"none"] = Value{};
    const KeyIndex index(dictionary);
    EXPECT_EQ(u"Loaded", index.Find(u"plain")->PlainText());
    EXPECT_TRUE(index.Find(u"empty")->IsPlainText());
    EXPECT_EQ(u"", index.Find(u"empty")->PlainText());
    for (const char16_t* key : {u"param", u"two", u"none"}) {
        EXPECT_FALSE(index.Find(key)->IsPlainText()) << ulo::WideToUtf8(key);
    }
}

TEST(KeyIndex, ManyKeysStayFindable) {
    // Enough keys that many share slots and probe past each other.
    ResourceDictionary dictionary;
    for (int number = 0; number < 20000; number += 2) {
        const std::string digits = std::to_string(number);
        dictionary.emplace(u"k" + std::u16string(digits.begin(), digits.end()), Value{});
    }
    const KeyIndex index(dictionary);
    for (int number = 0; number < 20000; ++number) {
        const std::string digits = std::to_string(number);
        const std::u16string key = u"k" + std::u16string(digits.begin(), digits.end());
        EXPECT_EQ(number % 2 == 0, index.Find(key) != nullptr) << number;
    }
}

TEST(KeyIndex, EmptyDictionaryFindsNothing) {
    const ResourceDictionary dictionary;
    const KeyIndex index(dictionary);
    EXPECT_EQ(nullptr, index.Find(u"key"));
    EXPECT_EQ(nullptr, index.Find(u""));
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Resolving
