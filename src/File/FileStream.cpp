#include "File/FileStream.h"

#include "ulo/rtl/CodeContracts.h"
#include "ulo/rtl/File.h"
#include "ulo/rtl/Utf8Decoder.h"

#include <boost/numeric/conversion/cast.hpp>

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

    // Uninitialised on purpose: the read fills it, and zeroing megabytes first costs time.
    const std::unique_ptr<char[]> buff(new char[byteCount]);
    std::uint32_t bytesRead = 0;
    CheckCall(file.Read(&buff[0], byteCount, bytesRead),
              ULO_CODE_CONTRACTS_LOCATION_AT(kReadCondition, kSourceFile, 121),
              "Cannot read from file");

    // The decoded length is the size, whatever the read returned: a file that shrank meanwhile
    // decodes as if its lost tail were NULs, and those are trimmed below.
    if (bytesRead < byteCount) {
        std::memset(buff.get() + bytesRead, 0, byteCount - bytesRead);
    }

    // Only a complete mark is skipped: one or two bytes EF BB are ordinary (malformed) text.
    std::size_t skip = 0;
    if (byteCount >= 3 && buff[0] == '\xEF' && buff[1] == '\xBB' && buff[2] == '\xBF') {
        skip = 3;
    }

    // Sized by the byte count, an upper bound of the unit count, so that one pass suffices.
    std::u16string text(static_cast<std::size_t>(decodeCapacity), u'\0');
    const std::size_t decoded =
        ulo::DecodeUtf8(buff.get() + skip, byteCount - skip, &text[0], text.size());
    // A file of just the mark leaves nothing to decode, and that fails like undecodable text.
    if (decoded == 0) {
        throw std::runtime_error("MultiByteToWideChar conversion failed");
    }

    // Trailing NULs go with the spare capacity, but a text of NULs alone keeps its full
    // length, spare capacity included: deliberate, established behaviour.
    const std::size_t last = text.find_last_not_of(u'\0', decoded - 1);
    if (last != std::u16string::npos) {
        text.resize(last + 1);
    }
    return text;
}

}  // namespace LocalizationManager::File
