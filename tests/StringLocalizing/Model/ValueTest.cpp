#include "StringLocalizing/Model/KeyNotFoundException.h"
#include "StringLocalizing/Model/Value.h"
#include "TestSupport/ExpectThrowMessage.h"

#include <gtest/gtest.h>

namespace LocalizationManager::StringLocalizing::Model {
namespace {

Value Text(const std::u16string& text) {
    return Value{{Operand(text)}};
}

TEST(Value, OperandAlternativesKeepTheirOrder) {
    EXPECT_EQ(0, Operand(std::u16string(u"x")).which());
    EXPECT_EQ(1, Operand(KeyRef{u"k"}).which());
    EXPECT_EQ(2, Operand(Param{u"p"}).which());
    EXPECT_EQ(3, Operand(PluralForm{}).which());
}

TEST(Value, CopyingAPluralFormCopiesEveryForm) {
    PluralForm plural{u"n", {}};
    plural.forms.push_back(new Value(Text(u"one")));
    plural.forms.push_back(new Value(Text(u"many")));
    const Value original{{Operand(std::move(plural))}};

    Value copy = original;
    auto& copiedForms = boost::get<PluralForm>(copy.operands[0]).forms;
    const auto& originalForms = boost::get<PluralForm>(original.operands[0]).forms;
    ASSERT_EQ(2u, copiedForms.size());
    EXPECT_NE(&originalForms[0], &copiedForms[0]);
    EXPECT_EQ(original, copy);

    copiedForms[1] = Text(u"other");
    EXPECT_EQ(u"many", boost::get<std::u16string>(originalForms[1].operands[0]));
    EXPECT_FALSE(original == copy);
}

TEST(KeyNotFoundException, NamesTheKeyAsMessageText) {
    EXPECT_THROW_MSG(throw KeyNotFoundException(u"title"), KeyNotFoundException,
                     "Key 'title' not found");
    // Each UTF-16 unit is encoded on its own, a surrogate pair as two three-byte groups.
    EXPECT_THROW_MSG(throw KeyNotFoundException(u"\u00E9\xD83D\xDE00"), KeyNotFoundException,
                     "Key '\xC3\xA9\xED\xA0\xBD\xED\xB8\x80' not found");
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Model
