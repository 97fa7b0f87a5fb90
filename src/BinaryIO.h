#pragma once

#include "ulo/IIO.h"
#include "ulo/rtl/File.h"
#include "ulo/rtl/objbase.h"

#include <cstdint>
#include <string>

namespace localization_manager {

// A read-only stream over one binary resource file, handed out by Localizer::GetStream. The
// file stays open for as long as the caller holds the stream. No lock: one position is shared
// by all users of one stream, so concurrent reads and seeks interleave.
class BinaryIO : public ulo::ObjectRootEx<ulo::StoreServiceStrategy>, public ulo::IIO {
  public:
    explicit BinaryIO(ulo::IServiceLocator* serviceLocator);

    // Opens `filename` for reading; throws LocalizationManager::UloCallFailedException ("Cannot
    // open file, error: " and the system's reason) when it cannot.
    void Init(const std::u16string& filename);

    std::int32_t QueryInterface(ulo::InterfaceId interfaceId, void** out) override;

    // One read of up to `count` bytes; `*bytesRead` is 0 at the end and untouched on failure.
    std::int32_t Read(void* buffer, std::uint32_t count, std::uint32_t* bytesRead) override;
    std::int32_t Seek(std::uint32_t origin, std::int64_t offset,
                      std::uint64_t* newPosition) override;
    std::int32_t GetPosition(std::uint64_t* position) override;
    std::int32_t GetSize(std::uint64_t* size) override;

    // The stream is read-only: these return 0x80000042 ("Not supported") and change nothing.
    std::int32_t Write(const void* buffer, std::uint32_t count,
                       std::uint32_t* bytesWritten) override;
    std::int32_t SetSize(std::uint64_t size) override;
    std::int32_t Flush() override;

  protected:
    ~BinaryIO();

  private:
    ulo::File file_;
    bool opened_ = false;
};

}  // namespace localization_manager
