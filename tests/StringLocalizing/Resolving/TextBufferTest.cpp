#include "StringLocalizing/Resolving/TextBuffer.h"

#include <gtest/gtest.h>

#include <string>

namespace LocalizationManager::StringLocalizing::Resolving {
namespace {

TEST(TextBuffer, KeepsItsTextWhenItOutgrowsTheInlineUnits) {
    TextBuffer buffer;
    std::u16string expected;
    // Pieces of uneven length, across the inline size and several heap growths.
    for (int piece = 0; piece < 200; ++piece) {
        const std::u16string text(static_cast<std::size_t>(piece % 13),
                                  char16_t(u'a' + piece % 26));
        buffer.Append(text);
        expected += text;
        ASSERT_EQ(expected, buffer.View()) << piece;
    }
    buffer.Clear();
    EXPECT_EQ(u"", buffer.View());
    buffer.Append(u"again");
    EXPECT_EQ(u"again", buffer.View());
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Resolving
