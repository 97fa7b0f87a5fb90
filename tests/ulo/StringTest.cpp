#include "ulo/String.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace ulo::types {
namespace {

using String16 = basic_string_t<char16_t>;

// The content and the terminator after it.
void ExpectHolds(const std::u16string& expected, const String16& actual) {
    EXPECT_EQ(expected.size(), actual.size());
    EXPECT_EQ(expected.empty(), actual.empty());
    EXPECT_EQ(expected, std::u16string(actual.c_str(), actual.size()));
    EXPECT_EQ(u'\0', actual.c_str()[actual.size()]);
    EXPECT_EQ(actual.c_str(), actual.data());
}

TEST(StringTest, Construction) {
    ExpectHolds(u"", String16());
    ExpectHolds(u"", String16(nullptr));
    ExpectHolds(u"", String16(nullptr, 0));
    ExpectHolds(u"scope", String16(u"scope"));
    ExpectHolds(u"sco", String16(u"scope", 3));
    ExpectHolds(std::u16string(u"a\0b", 3), String16(u"a\0b", 3));
    ExpectHolds(u"\U0001F600", String16(std::u16string(u"\U0001F600")));

    const std::u16string text(u"a\0\xD800z", 4);
    EXPECT_EQ(text, String16(text).ToStdString());
}

TEST(StringTest, CopiesAreIndependent) {
    String16 original(u"text");
    String16 copy(original);
    original[0] = u'n';
    ExpectHolds(u"next", original);
    ExpectHolds(u"text", copy);

    String16 assigned(u"something longer");
    assigned = original;
    ExpectHolds(u"next", assigned);
    EXPECT_NE(original.c_str(), assigned.c_str());
}

TEST(StringTest, MoveLeavesTheSourceEmpty) {
    String16 source(u"moved");
    const char16_t* buffer = source.c_str();
    String16 target(std::move(source));
    EXPECT_EQ(buffer, target.c_str());
    ExpectHolds(u"", source);

    String16 assigned(u"old");
    assigned = std::move(target);
    ExpectHolds(u"moved", assigned);
    ExpectHolds(u"", target);
}

TEST(StringTest, SelfAssignmentKeepsTheContent) {
    String16 text(u"self");
    String16& alias = text;
    text = alias;
    ExpectHolds(u"self", text);
    text = std::move(alias);
    ExpectHolds(u"self", text);
    // Assigning a part of the string's own buffer.
    text.assign(text.c_str() + 1, 2);
    ExpectHolds(u"el", text);
}

TEST(StringTest, ResizeKeepsThePrefixAndZeroFills) {
    const struct {
        const char* name;
        std::u16string initial;
        std::size_t size;
        std::u16string expected;
    } cases[] = {
        {"grow", u"ab", 4, std::u16string(u"ab\0\0", 4)},
        {"grow empty", u"", 2, std::u16string(2, u'\0')},
        {"shrink", u"abcd", 2, u"ab"},
        {"same size", u"abc", 3, u"abc"},
        {"to empty", u"abc", 0, u""},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        String16 text(testCase.initial);
        text.resize(testCase.size);
        ExpectHolds(testCase.expected, text);
    }
}

TEST(StringTest, ReusesItsBufferForTextsThatFit) {
    String16 text(u"a longer text");
    const char16_t* buffer = text.c_str();
    text.assign(u"short", 5);
    ExpectHolds(u"short", text);
    EXPECT_EQ(buffer, text.c_str());

    // Growing back within the buffer zero-fills: the old characters must not reappear.
    text.resize(8);
    ExpectHolds(std::u16string(u"short\0\0\0", 8), text);
    EXPECT_EQ(buffer, text.c_str());

    text.clear();
    ExpectHolds(u"", text);
    EXPECT_EQ(buffer, text.c_str()) << "cleared, the buffer stays for the next text";

    text.assign(u"longer than any text before", 27);
    ExpectHolds(u"longer than any text before", text);
    EXPECT_EQ(27u, text.capacity());

    String16 moved(std::move(text));
    EXPECT_EQ(27u, moved.capacity());
    EXPECT_EQ(0u, text.capacity());
}

TEST(StringTest, ImpossibleSizeThrowsAndKeepsTheContent) {
    String16 text(u"kept");
    EXPECT_THROW(text.resize(static_cast<std::size_t>(-1) / 2), std::bad_alloc);
    EXPECT_THROW(text.resize(static_cast<std::size_t>(-1)), std::bad_alloc);
    ExpectHolds(u"kept", text);
}

TEST(StringTest, EqualityComparesEveryUnit) {
    EXPECT_EQ(String16(u"key"), String16(u"key"));
    EXPECT_EQ(String16(), String16(u""));
    EXPECT_NE(String16(u"key"), String16(u"Key"));
    EXPECT_NE(String16(u"key"), String16(u"keys"));
    // An embedded zero is content, not the end.
    EXPECT_NE(String16(u"a\0b", 3), String16(u"a\0c", 3));
    EXPECT_NE(String16(u"a"), String16(u"a\0", 2));
}

}  // namespace
}  // namespace ulo::types
