#pragma once

// The operating system's error numbers in the framework's result codes. The platform layer
// (ulo/rtl/FileSystem.h, ulo/rtl/File.h) reports every failure through this mapping, so a
// failure reads the same whatever system call produced it.

#include "ulo/ResultCode.h"

#include <cerrno>
#include <cstdint>

namespace ulo {

// 0 for errno 0; otherwise the platform-group code of `error`, or the general "Access denied"
// and "Out of memory" codes for the errors that have no platform-group code of their own.
// Errors without a code of their own give "Unspecified platform error".
inline std::int32_t ResultCodeFromErrno(int error) noexcept {
    switch (error) {
        case 0:
            return kResultOk;
        case ENOENT:
            return kResultPlatformFileNotFound;
        case ENOTDIR:
            return kResultPlatformPathNotFound;
        case EACCES:
        case EPERM:
        case EISDIR:
            return kResultAccessDenied;
        case ENAMETOOLONG:
        case EINVAL:
        case EILSEQ:
            return kResultPlatformInvalidPathName;
        case EBADF:
            return kResultPlatformInvalidHandle;
        case EEXIST:
            return kResultPlatformAlreadyExists;
        case ENOMEM:
            return kResultOutOfMemory;
        default:
            return kResultPlatformUnspecified;
    }
}

}  // namespace ulo
