#include "File/FileStream.h"

#include "Memory/HugePages.h"
#include "ulo/rtl/CodeContracts.h"
#include "ulo/rtl/File.h"
#include "ulo/rtl/Utf8Decoder.h"

#include <boost/numeric/conversion/cast.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <stdexcept>
namespace LocalizationManager::File {

namespace {

// The source and condition texts that failure reports have always named; log readers match on
// them, so they stay as they are although the code below reads differently.
const char kSourceFile[] = "file/FileStream";
const char kOpenCondition[] =
    "file.Create(ulo::text::Cast<ulo::string16_t>(filename).c_str(), ulo::file_flags::ReadAccess "
    "| ulo::file_flags::ShareRead, ulo::file_flags::OpenExisting, 0)";
const char kSizeCondition[] = "file.GetSize(size)";
const char kReadCondition[] = "file.Read(&buff[0], numeric_cast<uint32_t>(size), bytesRead)";

bool IsContinuationByte(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// Where the bytes [start, size) of a piece may be cut, so that decoding the part before and the
// part after apart gives what decoding them together gives: before a byte that no sequence
// begun earlier can take in. A sequence takes only continuation bytes after its first, at most
// three: so the cut goes before the last of the last three bytes that is no continuation byte,
// or at the end when all three are (a sequence begun before them ends with them at the latest).
std::size_t DecodableEnd(const char* piece, std::size_t start, std::size_t size) {
    const std::size_t earliest = size - std::min<std::size_t>(size - start, 3);
    for (std::size_t position = size; position > earliest; --position) {
        if (!IsContinuationByte(piece[position - 1])) {
            return position - 1;
        }
    }
    return size;
}

}  // namespace

std::u16string GetFileContent(const std::u16string& filename) {
    ulo::File file;
    CheckCall(file.Open(filename), ULO_CODE_CONTRACTS_LOCATION_AT(kOpenCondition, kSourceFile, 107),
              "Cannot open file");

    std::uint64_t size = 0;
    CheckCall(file.GetSize(size), ULO_CODE_CONTRACTS_LOCATION_AT(kSizeCondition, kSourceFile, 110),
              "Cannot get file size");
    if (size == 0) {
        return std::u16string();
    }

    // Both narrowings come before anything is allocated or read: a file too large to decode
    // fails with the same conversion error, without first reading gigabytes.
    const auto byteCount = boost::numeric_cast<std::uint32_t>(size);
    const auto decodeCapacity = boost::numeric_cast<std::int32_t>(size);

    // Sized by the byte count, an upper bound of the unit count, so that the text never moves;
    // the capacity that the units do not reach is never touched.
    std::u16string text;
    text.reserve(static_cast<std::size_t>(decodeCapacity));
    // A large text is written once, all of it: huge pages spare it thousands of page faults.
    Memory::AdviseHugePages(text.data(), text.capacity() * sizeof(char16_t));
    // Uninitialised on purpose: the reads fill them.
    const std::size_t pieceCapacity = std::min<std::size_t>(byteCount, kReadPieceBytes);
    const std::unique_ptr<char[]> piece(new char[pieceCapacity]);
    const std::unique_ptr<char16_t[]> units(new char16_t[pieceCapacity]);

    std::uint32_t toRead = byteCount;
    std::size_t held = 0;  // bytes at the start of the piece, carried from the one before
    bool first = true;
    bool shrunk = false;
    while (toRead > 0) {
        const auto count =
            static_cast<std::uint32_t>(std::min<std::size_t>(pieceCapacity - held, toRead));
        std::uint32_t bytesRead = 0;
        if (!shrunk) {
            CheckCall(file.Read(piece.get() + held, count, bytesRead),
                      ULO_CODE_CONTRACTS_LOCATION_AT(kReadCondition, kSourceFile, 121),
                      "Cannot read from file");
        }
        // The decoded length is the size, whatever the reads returned: a file that shrank
        // meanwhile decodes as if its lost tail were NULs, and those are trimmed below.
        if (bytesRead < count) {
            std::memset(piece.get() + held + bytesRead, 0, count - bytesRead);
            shrunk = true;
        }
        toRead -= count;
        const std::size_t filled = held + count;

        // Only a complete mark is skipped: one or two bytes EF BB are ordinary (malformed) text.
        std::size_t start = 0;
        if (first && filled >= 3 && piece[0] == '\xEF' && piece[1] == '\xBB' &&
            piece[2] == '\xBF') {
            start = 3;
        }
        first = false;
        const std::size_t end = toRead == 0 ? filled : DecodableEnd(piece.get(), start, filled);
        if (end > start) {
            const std::size_t decoded =
                ulo::DecodeUtf8(piece.get() + start, end - start, units.get(), pieceCapacity);
            text.append(units.get(), decoded);
        }
        held = filled - end;
        std::memmove(piece.get(), piece.get() + end, held);
    }
    // A file of just the mark leaves nothing to decode, and that fails like undecodable text.
    if (text.empty()) {
        throw std::runtime_error("MultiByteToWideChar conversion failed");
    }

    // Trailing NULs go, but a text of NULs alone keeps its full length, spare capacity
    // included: deliberate, established behaviour.
    const std::size_t last = text.find_last_not_of(u'\0');
    text.resize(last != std::u16string::npos ? last + 1 : static_cast<std::size_t>(decodeCapacity),
                u'\0');
    return text;
}

}  // namespace LocalizationManager::File
