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

TEST(ResultCodeTextTest, EveryListedCode) {
    const TextCase cases[] = {
        {0x00000000, u"No error"},
        {0x00000001, u"False"},
        {0x80000001, u"Interface not supported"},
        {0x80000040, u"Unexpected"},
        {0x80000041, u"Out of memory"},
        {0x80000042, u"Not supported"},
        {0x80000043, u"Not implemented"},
        {0x80000044, u"Buffer too small"},
        {0x80000045, u"Access denied"},
        {0x80000046, u"Invalid argument"},
        {0x8000004A, u"Not matched"},
        {0x8000004B, u"Unspecified error"},
        {0x8000004C, u"Not found"},
        {0x8000004D, u"Found"},
        {0x8000004F, u"Locked"},
        {0x80000050, u"Not locked"},
        {0x80000051, u"Operation cancelled"},
        {0x80000057, u"Method not found"},
        {0x80000058, u"Stack is empty"},
        {0x80000059, u"Media error"},
        {0x8000005A, u"Invalid signature"},
        {0x8000005B, u"Invalid version"},
        {0x8000005C, u"Invalid size"},
        {0x8000005D, u"Invalid type"},
        {0x8000005E, u"Invalid index"},
        {0x80000062, u"Out of space"},
        {0x80000063, u"Not ready"},
        {0x80000064, u"Less than"},
        {0x80000065, u"More than"},
        {0x80000066, u"Prohibited"},
        {0x80000067, u"Already done"},
        {0x80000068, u"Need reboot"},
        {0x80000069, u"Bases corrupted"},
        {0x8000006A, u"Invalid state"},
        {0x8000006B, u"Not initialized"},
        {0x8000006C, u"Insufficient resources"},
        {0x80000180, u"Property not found"},
        {0x80000221, u"Operation timeout"},
        {0x80010100, u"Unspecified platform error"},
        {0x80010101, u"Invalid handle"},
        {0x80010102, u"File not found"},
        {0x80010103, u"Path not found"},
        {0x80010104, u"Sharing violation"},
        {0x80010105, u"Already exists"},
        {0x80010106, u"Wait abandoned"},
        {0x80010107, u"Symbol not found"},
        {0x80010108, u"Sxs is incorrect"},
        {0x80010109, u"Invalid path name"},
    };
    ExpectTexts(std::begin(cases), std::end(cases));
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
