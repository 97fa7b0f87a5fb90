#pragma once

// Questions about paths: does a path exist, is it a directory. Part of the platform layer, the
// only code that calls the operating system; paths are the engine's UTF-16 strings, handed to
// the system as UTF-8. Every call returns a result code (ulo/ResultCode.h) and never throws.
// Stateless and safe to call from any thread.

#include "ulo/ResultCode.h"
#include "ulo/rtl/PlatformError.h"
#include "ulo/rtl/TextConversion.h"

#include <cerrno>
#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>
#include <sys/stat.h>

namespace ulo::filesystem {

// Puts the system's form of `path` (UTF-8, zero-terminated) in `nativePath` and returns 0.
// A path that UTF-8 cannot carry gives kResultPlatformInvalidPathName: a lone surrogate, and a
// NUL unit, which would silently cut the path short. kResultOutOfMemory when the copy cannot be
// allocated. An empty path converts to the empty string.
inline std::int32_t ToNativePath(const std::u16string& path, std::string& nativePath) noexcept {
    if (path.find(u'\0') != std::u16string::npos) {
        return kResultPlatformInvalidPathName;
    }
    // The converter reports a lone surrogate by exception; here it is an ordinary bad path.
    try {
        nativePath = WideToUtf8(path);
    } catch (const std::out_of_range&) {
        return kResultPlatformInvalidPathName;
    } catch (const std::bad_alloc&) {
        return kResultOutOfMemory;
    }
    return kResultOk;
}

namespace detail {

// stat() on `path`: 0 with `status` filled, or the mapped error. An empty path fails as a
// missing file, as a null path does on other systems.
inline std::int32_t Stat(const std::u16string& path, struct stat& status) noexcept {
    if (path.empty()) {
        return kResultPlatformFileNotFound;
    }
    std::string nativePath;
    if (const std::int32_t code = ToNativePath(path, nativePath); code != kResultOk) {
        return code;
    }
    if (::stat(nativePath.c_str(), &status) != 0) {
        return ResultCodeFromErrno(errno);
    }
    return kResultOk;
}

}  // namespace detail

// 0 when the path can be queried (it exists and every folder on the way can be searched),
// else the mapped error: kResultPlatformFileNotFound for a missing path,
// kResultPlatformPathNotFound when a component on the way is not a directory,
// kResultAccessDenied, kResultPlatformInvalidPathName. Symbolic links are followed.
inline std::int32_t QueryPath(const std::u16string& path) noexcept {
    struct stat status {};
    return detail::Stat(path, status);
}

// Whether QueryPath succeeds. Anything that exists counts, directories included: callers that
// look for a file take a directory of that name as found and fail later, when reading it.
inline bool Exists(const std::u16string& path) noexcept {
    return QueryPath(path) == kResultOk;
}

// The error of QueryPath when it fails; otherwise 0 (kResultOk) for a directory and 1
// (kResultFalse) for anything else. An existing plain file therefore gives a success code:
// callers check this with CheckCall to refuse unreachable paths, and a file passes on purpose.
inline std::int32_t IsDirectory(const std::u16string& path) noexcept {
    struct stat status {};
    if (const std::int32_t code = detail::Stat(path, status); code != kResultOk) {
        return code;
    }
    return S_ISDIR(status.st_mode) ? kResultOk : kResultFalse;
}

}  // namespace ulo::filesystem
