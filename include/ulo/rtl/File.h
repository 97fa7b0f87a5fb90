#pragma once

// A file opened for reading. Part of the platform layer, the only code that calls the operating
// system.

#include "ulo/ResultCode.h"
#include "ulo/rtl/FileSystem.h"
#include "ulo/rtl/PlatformError.h"

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>
#include <utility>

namespace ulo {

// Where Seek counts from.
enum class SeekOrigin { Begin, Current, End };

// An open, read-only regular file, or nothing (closed). Owns its descriptor: the destructor
// closes it; movable, not copyable. Every call returns 0 or a result code mapped from the
// system's error (ulo/rtl/PlatformError.h) and never throws; calls on a closed File return
// kResultPlatformInvalidHandle. Not thread-safe: one position is shared by all reads of one File.
class File {
  public:
    File() noexcept = default;
    ~File() { Close(); }

    File(File&& other) noexcept : descriptor_(std::exchange(other.descriptor_, kClosed)) {}
    File& operator=(File&& other) noexcept {
        if (this != &other) {
            Close();
            descriptor_ = std::exchange(other.descriptor_, kClosed);
        }
        return *this;
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool IsOpen() const noexcept { return descriptor_ != kClosed; }

    // Opens an existing file for reading, at position 0; first closes the file held before, if
    // any. Only regular files open: a directory, FIFO, device or socket gives
    // kResultAccessDenied and is not kept open. Never blocks, not even on a FIFO without a
    // writer. Errors: those of filesystem::QueryPath (an empty path gives
    // kResultPlatformFileNotFound), kResultAccessDenied, kResultOutOfMemory, and the mapped
    // error of any other failing call.
    std::int32_t Open(const std::u16string& path) noexcept {
        Close();
        if (path.empty()) {
            return kResultPlatformFileNotFound;
        }
        std::string nativePath;
        if (const std::int32_t code = filesystem::ToNativePath(path, nativePath);
            code != kResultOk) {
            return code;
        }
        // O_NONBLOCK keeps open() from waiting for a FIFO's writer; O_NOCTTY keeps a terminal
        // from becoming the host's controlling terminal. Both before the type is known.
        int descriptor;
        do {
            descriptor = ::open(nativePath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
        } while (descriptor == -1 && errno == EINTR);
        if (descriptor == -1) {
            return ResultCodeFromErrno(errno);
        }
        File opened(descriptor);
        struct stat status {};
        if (::fstat(descriptor, &status) != 0) {
            return ResultCodeFromErrno(errno);
        }
        if (!S_ISREG(status.st_mode)) {
            return kResultAccessDenied;
        }
        // Back to ordinary blocking reads, so that Read never sees EAGAIN.
        const int flags = ::fcntl(descriptor, F_GETFL);
        if (flags == -1 || ::fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK) == -1) {
            return ResultCodeFromErrno(errno);
        }
        *this = std::move(opened);
        return kResultOk;
    }

    // The file's size in bytes.
    std::int32_t GetSize(std::uint64_t& size) noexcept {
        if (!IsOpen()) {
            return kResultPlatformInvalidHandle;
        }
        struct stat status {};
        if (::fstat(descriptor_, &status) != 0) {
            return ResultCodeFromErrno(errno);
        }
        size = static_cast<std::uint64_t>(status.st_size);
        return kResultOk;
    }

    // Reads up to `count` bytes at the current position into `buffer` and advances the position.
    // Stops early only at the end of the file: on success `bytesRead` is `count`, or less when
    // the end came first (0 at the end). On failure `bytesRead` is left unchanged and the
    // position is unspecified.
    std::int32_t Read(void* buffer, std::uint32_t count, std::uint32_t& bytesRead) noexcept {
        if (!IsOpen()) {
            return kResultPlatformInvalidHandle;
        }
        auto* const bytes = static_cast<unsigned char*>(buffer);
        std::uint32_t total = 0;
        // The system may return fewer bytes than asked (signals, its own per-call limit).
        while (total < count) {
            const ssize_t result = ::read(descriptor_, bytes + total, count - total);
            if (result > 0) {
                total += static_cast<std::uint32_t>(result);
            } else if (result == 0) {
                break;
            } else if (errno != EINTR) {
                return ResultCodeFromErrno(errno);
            }
        }
        bytesRead = total;
        return kResultOk;
    }

    // Moves the position by `offset` from `origin` (any value other than Current and End counts
    // as Begin). On success stores the new position in `*newPosition` unless it is null. Moving
    // before the start fails (kResultPlatformInvalidPathName, the mapping of EINVAL); moving
    // beyond the end is allowed, and reads there return 0 bytes.
    std::int32_t Seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* newPosition) noexcept {
        if (!IsOpen()) {
            return kResultPlatformInvalidHandle;
        }
        const int whence = origin == SeekOrigin::Current ? SEEK_CUR
                           : origin == SeekOrigin::End   ? SEEK_END
                                                         : SEEK_SET;
        static_assert(sizeof(off_t) == sizeof(std::int64_t), "64-bit file offsets");
        const off_t position = ::lseek(descriptor_, static_cast<off_t>(offset), whence);
        if (position == -1) {
            return ResultCodeFromErrno(errno);
        }
        if (newPosition != nullptr) {
            *newPosition = static_cast<std::uint64_t>(position);
        }
        return kResultOk;
    }

    // The current position in bytes from the start.
    std::int32_t GetPosition(std::uint64_t& position) noexcept {
        return Seek(0, SeekOrigin::Current, &position);
    }

    // Closes the file if it is open; a failure to close is ignored, since nothing was written
    // that could be lost. The File is closed afterwards in any case.
    void Close() noexcept {
        if (IsOpen()) {
            // No retry on EINTR: the descriptor is released even then, and a retry could close
            // a descriptor that another thread has opened meanwhile.
            ::close(std::exchange(descriptor_, kClosed));
        }
    }

  private:
    static constexpr int kClosed = -1;

    explicit File(int descriptor) noexcept : descriptor_(descriptor) {}

    int descriptor_ = kClosed;
};

}  // namespace ulo
