#include "ulo/ResultCode.h"
#include "ulo/rtl/ResultCodeMessage.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace ulo {
namespace {

struct TextCase {
    std::uint32_t code;
    const char16_t* text;
};

std::int32_t Code(std::uint32_t bits) {
    return static_cast<std::int32_t>(bits);
}

void ExpectTexts(const TextCase* first, const TextCase* last) {
    for (const TextCase* testCase = first; testCase != last; ++testCase) {
        EXPECT_EQ(std::u16string(testCase->text), ResultCodeText(Code(testCase->code)))
            << std::hex << std::showbase << testCase->code;
    }
}

TEST(ResultCodeTextTest, CodesWithoutText) {
    const char16_t* const unknown = u"Unknown result code";
    const char16_t* const unknownPlatform = u"Unknown platform result code";
    const TextCase cases[] = {
        // Gaps of the general numbering, at their edges.
        {0x80000002, unknown},
        {0x8000003F, unknown},
        {0x80000047, unknown},
        {0x8000004E, unknown},
        {0x80000052, unknown},
        {0x8000005F, unknown},
        {0x80000061, unknown},
        // Around the table and the codes tested one by one.
        {0x80000000, unknown},
        {0x8000006D, unknown},
        {0x80000181, unknown},
        {0x80000222, unknown},
        {0xFFFFFFFF, unknown},
        {0x00000002, unknown},
        {0x7FFFFFFF, unknown},
        // Bits 16-30 equal to 1 decide the platform group, whatever the sign.
        {0x800100FF, unknownPlatform},
        {0x8001010A, unknownPlatform},
        {0x80010000, unknownPlatform},
        {0x8001FFFF, unknownPlatform},
        {0x00010100, unknownPlatform},
        {0x00010000, unknownPlatform},
        // Neighbours of the group are general codes.
        {0x80020100, unknown},
        {0x00020100, unknown},
    };
    ExpectTexts(std::begin(cases), std::end(cases));
}

TEST(ResultCodeMessageTest, IsTheNarrowText) {
    EXPECT_EQ("Not found", ResultCodeMessage(kResultNotFound));
    EXPECT_EQ("Sxs is incorrect", ResultCodeMessage(kResultPlatformSxsIncorrect));
    EXPECT_EQ("Unknown result code", ResultCodeMessage(Code(0x80000000)));
}

TEST(ResultCodeTest, SignDecidesSuccess) {
    const struct {
        std::uint32_t code;
        bool succeeded;
    } cases[] = {
        {0x00000000, true},  {0x00000001, true},  {0x7FFFFFFF, true},  {0x00010100, true},
        {0x80000000, false}, {0x8000004D, false}, {0xFFFFFFFF, false}, {0x80010100, false},
    };
    for (const auto& testCase : cases) {
        EXPECT_EQ(testCase.succeeded, Succeeded(Code(testCase.code))) << std::hex << testCase.code;
        EXPECT_EQ(!testCase.succeeded, Failed(Code(testCase.code))) << std::hex << testCase.code;
    }
}

}  // namespace
}  // namespace ulo
