#include "BinaryIO.h"

#include "ulo/ResultCode.h"
#include "ulo/rtl/CodeContracts.h"

namespace localization_manager {

namespace {

// Failures of Init name this source and the open call as the framework writes it, so that
// error lines read the same on every platform.
constexpr const char kSourceFile[] = "BinaryIO";
constexpr std::int32_t kOpenCheckLine = 26;
constexpr const char kOpenCondition[] =
    "file_.Create(ulo::text::Cast<ulo::string16_t>(filename).c_str(), "
    "ulo::file_flags::ReadAccess | ulo::file_flags::ShareRead, ulo::file_flags::OpenExisting, "
    "0)";

ulo::SeekOrigin ToSeekOrigin(std::uint32_t origin) {
    switch (origin) {
        case ulo::IIO::kFromCurrent:
            return ulo::SeekOrigin::Current;
        case ulo::IIO::kFromEnd:
            return ulo::SeekOrigin::End;
        default:
            return ulo::SeekOrigin::Begin;
    }
}

}  // namespace

BinaryIO::BinaryIO(ulo::IServiceLocator* serviceLocator) : ObjectRootEx(serviceLocator) {}

BinaryIO::~BinaryIO() {
    if (opened_) {
        file_.Close();
    }
}

void BinaryIO::Init(const std::u16string& filename) {
    ::LocalizationManager::CheckCall(
        file_.Open(filename),
        ULO_CODE_CONTRACTS_LOCATION_AT(kOpenCondition, kSourceFile, kOpenCheckLine),
        "Cannot open file");
    opened_ = true;
}

std::int32_t BinaryIO::QueryInterface(ulo::InterfaceId interfaceId, void** out) {
    return ulo::QueryInterfaceOf<ulo::IIO>(this, interfaceId, out);
}

std::int32_t BinaryIO::Read(void* buffer, std::uint32_t count, std::uint32_t* bytesRead) {
    if (bytesRead == nullptr || (buffer == nullptr && count != 0)) {
        return ulo::kResultInvalidArgument;
    }
    return file_.Read(buffer, count, *bytesRead);
}

std::int32_t BinaryIO::Seek(std::uint32_t origin, std::int64_t offset, std::uint64_t* newPosition) {
    return file_.Seek(offset, ToSeekOrigin(origin), newPosition);
}

std::int32_t BinaryIO::GetPosition(std::uint64_t* position) {
    if (position == nullptr) {
        return ulo::kResultInvalidArgument;
    }
    return file_.GetPosition(*position);
}

std::int32_t BinaryIO::GetSize(std::uint64_t* size) {
    if (size == nullptr) {
        return ulo::kResultInvalidArgument;
    }
    return file_.GetSize(*size);
}

std::int32_t BinaryIO::Write(const void*, std::uint32_t, std::uint32_t*) {
    return ulo::kResultNotSupported;
}

std::int32_t BinaryIO::SetSize(std::uint64_t) {
    return ulo::kResultNotSupported;
}

std::int32_t BinaryIO::Flush() {
    return ulo::kResultNotSupported;
}

}  // namespace localization_manager
