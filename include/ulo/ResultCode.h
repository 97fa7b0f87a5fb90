#pragma once

// Result codes: what every operation that crosses a component interface returns instead of
// throwing. A code is a signed 32-bit integer; zero and positive values are successes, negative
// values failures. Codes whose bits 16-30 equal 1 form the platform group, the operating
// system's failures in the framework's own numbering.
//
// Header-only: the module compiles its own copy of this framework support.

#include <cstdint>

namespace ulo {

constexpr std::int32_t kResultOk = 0;
constexpr std::int32_t kResultFalse = 1;

constexpr std::int32_t kResultInterfaceNotSupported = static_cast<std::int32_t>(0x80000001u);
constexpr std::int32_t kResultUnexpected = static_cast<std::int32_t>(0x80000040u);
constexpr std::int32_t kResultOutOfMemory = static_cast<std::int32_t>(0x80000041u);
constexpr std::int32_t kResultNotSupported = static_cast<std::int32_t>(0x80000042u);
constexpr std::int32_t kResultNotImplemented = static_cast<std::int32_t>(0x80000043u);
constexpr std::int32_t kResultBufferTooSmall = static_cast<std::int32_t>(0x80000044u);
constexpr std::int32_t kResultAccessDenied = static_cast<std::int32_t>(0x80000045u);
constexpr std::int32_t kResultInvalidArgument = static_cast<std::int32_t>(0x80000046u);
constexpr std::int32_t kResultNotMatched = static_cast<std::int32_t>(0x8000004Au);
constexpr std::int32_t kResultUnspecifiedError = static_cast<std::int32_t>(0x8000004Bu);
constexpr std::int32_t kResultNotFound = static_cast<std::int32_t>(0x8000004Cu);
// A failure code although it reads like a success; callers test it with Failed() like any other.
constexpr std::int32_t kResultFound = static_cast<std::int32_t>(0x8000004Du);
constexpr std::int32_t kResultLocked = static_cast<std::int32_t>(0x8000004Fu);
constexpr std::int32_t kResultNotLocked = static_cast<std::int32_t>(0x80000050u);
constexpr std::int32_t kResultOperationCancelled = static_cast<std::int32_t>(0x80000051u);
constexpr std::int32_t kResultMethodNotFound = static_cast<std::int32_t>(0x80000057u);
constexpr std::int32_t kResultStackIsEmpty = static_cast<std::int32_t>(0x80000058u);
constexpr std::int32_t kResultMediaError = static_cast<std::int32_t>(0x80000059u);
constexpr std::int32_t kResultInvalidSignature = static_cast<std::int32_t>(0x8000005Au);
constexpr std::int32_t kResultInvalidVersion = static_cast<std::int32_t>(0x8000005Bu);
constexpr std::int32_t kResultInvalidSize = static_cast<std::int32_t>(0x8000005Cu);
constexpr std::int32_t kResultInvalidType = static_cast<std::int32_t>(0x8000005Du);
constexpr std::int32_t kResultInvalidIndex = static_cast<std::int32_t>(0x8000005Eu);
constexpr std::int32_t kResultOutOfSpace = static_cast<std::int32_t>(0x80000062u);
constexpr std::int32_t kResultNotReady = static_cast<std::int32_t>(0x80000063u);
constexpr std::int32_t kResultLessThan = static_cast<std::int32_t>(0x80000064u);
constexpr std::int32_t kResultMoreThan = static_cast<std::int32_t>(0x80000065u);
constexpr std::int32_t kResultProhibited = static_cast<std::int32_t>(0x80000066u);
constexpr std::int32_t kResultAlreadyDone = static_cast<std::int32_t>(0x80000067u);
constexpr std::int32_t kResultNeedReboot = static_cast<std::int32_t>(0x80000068u);
constexpr std::int32_t kResultBasesCorrupted = static_cast<std::int32_t>(0x80000069u);
constexpr std::int32_t kResultInvalidState = static_cast<std::int32_t>(0x8000006Au);
constexpr std::int32_t kResultNotInitialized = static_cast<std::int32_t>(0x8000006Bu);
constexpr std::int32_t kResultInsufficientResources = static_cast<std::int32_t>(0x8000006Cu);
constexpr std::int32_t kResultPropertyNotFound = static_cast<std::int32_t>(0x80000180u);
constexpr std::int32_t kResultOperationTimeout = static_cast<std::int32_t>(0x80000221u);

// The platform group.
constexpr std::int32_t kResultPlatformUnspecified = static_cast<std::int32_t>(0x80010100u);
constexpr std::int32_t kResultPlatformInvalidHandle = static_cast<std::int32_t>(0x80010101u);
constexpr std::int32_t kResultPlatformFileNotFound = static_cast<std::int32_t>(0x80010102u);
constexpr std::int32_t kResultPlatformPathNotFound = static_cast<std::int32_t>(0x80010103u);
constexpr std::int32_t kResultPlatformSharingViolation = static_cast<std::int32_t>(0x80010104u);
constexpr std::int32_t kResultPlatformAlreadyExists = static_cast<std::int32_t>(0x80010105u);
constexpr std::int32_t kResultPlatformWaitAbandoned = static_cast<std::int32_t>(0x80010106u);
constexpr std::int32_t kResultPlatformSymbolNotFound = static_cast<std::int32_t>(0x80010107u);
constexpr std::int32_t kResultPlatformSxsIncorrect = static_cast<std::int32_t>(0x80010108u);
constexpr std::int32_t kResultPlatformInvalidPathName = static_cast<std::int32_t>(0x80010109u);

inline bool Succeeded(std::int32_t code) {
    return code >= 0;
}
inline bool Failed(std::int32_t code) {
    return code < 0;
}

namespace detail {

struct ResultCodeEntry {
    std::int32_t code;
    const char16_t* text;
};

// The general codes below 0x80000180, looked up by position from 0x80000001. Numbers missing
// here are gaps of the framework's numbering and have no text.
constexpr ResultCodeEntry kGeneralResultTexts[] = {
    {kResultInterfaceNotSupported, u"Interface not supported"},
    {kResultUnexpected, u"Unexpected"},
    {kResultOutOfMemory, u"Out of memory"},
    {kResultNotSupported, u"Not supported"},
    {kResultNotImplemented, u"Not implemented"},
    {kResultBufferTooSmall, u"Buffer too small"},
    {kResultAccessDenied, u"Access denied"},
    {kResultInvalidArgument, u"Invalid argument"},
    {kResultNotMatched, u"Not matched"},
    {kResultUnspecifiedError, u"Unspecified error"},
    {kResultNotFound, u"Not found"},
    {kResultFound, u"Found"},
    {kResultLocked, u"Locked"},
    {kResultNotLocked, u"Not locked"},
    {kResultOperationCancelled, u"Operation cancelled"},
    {kResultMethodNotFound, u"Method not found"},
    {kResultStackIsEmpty, u"Stack is empty"},
    {kResultMediaError, u"Media error"},
    {kResultInvalidSignature, u"Invalid signature"},
    {kResultInvalidVersion, u"Invalid version"},
    {kResultInvalidSize, u"Invalid size"},
    {kResultInvalidType, u"Invalid type"},
    {kResultInvalidIndex, u"Invalid index"},
    {kResultOutOfSpace, u"Out of space"},
    {kResultNotReady, u"Not ready"},
    {kResultLessThan, u"Less than"},
    {kResultMoreThan, u"More than"},
    {kResultProhibited, u"Prohibited"},
    {kResultAlreadyDone, u"Already done"},
    {kResultNeedReboot, u"Need reboot"},
    {kResultBasesCorrupted, u"Bases corrupted"},
    {kResultInvalidState, u"Invalid state"},
    {kResultNotInitialized, u"Not initialized"},
    {kResultInsufficientResources, u"Insufficient resources"},
};

constexpr std::uint32_t kGeneralTableBase = 0x80000001u;
constexpr std::uint32_t kGeneralTableSize = 0x6C;
constexpr std::uint32_t kPlatformTableBase = 0x80010100u;
constexpr std::uint32_t kPlatformTableSize = 10;

struct GeneralTextTable {
    const char16_t* texts[kGeneralTableSize];
};

constexpr GeneralTextTable MakeGeneralTextTable() {
    GeneralTextTable table{};
    for (const ResultCodeEntry& entry : kGeneralResultTexts) {
        table.texts[static_cast<std::uint32_t>(entry.code) - kGeneralTableBase] = entry.text;
    }
    return table;
}

constexpr GeneralTextTable kGeneralTextTable = MakeGeneralTextTable();

constexpr const char16_t* kPlatformTextTable[kPlatformTableSize] = {
    u"Unspecified platform error", u"Invalid handle",    u"File not found", u"Path not found",
    u"Sharing violation",          u"Already exists",    u"Wait abandoned", u"Symbol not found",
    u"Sxs is incorrect",           u"Invalid path name",
};

constexpr const char16_t kUnknownResultCodeText[] = u"Unknown result code";
constexpr const char16_t kUnknownPlatformResultCodeText[] = u"Unknown platform result code";

}  // namespace detail

// The English text of any code: static, zero-terminated, never null. Platform-group codes are
// looked up in the platform table (a positive code in that group has no text there either),
// all others in the general table; a code without text gives "Unknown platform result code" or
// "Unknown result code".
inline const char16_t* ResultCodeText(std::int32_t code) {
    const auto bits = static_cast<std::uint32_t>(code);
    if ((bits & 0x7FFF0000u) == 0x00010000u) {
        // Unsigned arithmetic: a positive code of the group wraps far beyond the table.
        const std::uint32_t index = bits - detail::kPlatformTableBase;
        return index < detail::kPlatformTableSize ? detail::kPlatformTextTable[index]
                                                  : detail::kUnknownPlatformResultCodeText;
    }
    if (code > kResultPropertyNotFound) {
        if (code == kResultOperationTimeout) {
            return u"Operation timeout";
        }
        if (code == kResultOk) {
            return u"No error";
        }
        if (code == kResultFalse) {
            return u"False";
        }
        return detail::kUnknownResultCodeText;
    }
    if (code == kResultPropertyNotFound) {
        return u"Property not found";
    }
    // 0x80000000 wraps to the largest index and so falls outside the table.
    const std::uint32_t index = bits - detail::kGeneralTableBase;
    if (index < detail::kGeneralTableSize && detail::kGeneralTextTable.texts[index] != nullptr) {
        return detail::kGeneralTextTable.texts[index];
    }
    return detail::kUnknownResultCodeText;
}

}  // namespace ulo
