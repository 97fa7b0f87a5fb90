#include "ulo/rtl/PlatformError.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>

namespace {

TEST(PlatformErrorTest, MapsErrnoToResultCodes) {
    const struct {
        int error;
        std::uint32_t code;
    } cases[] = {
        {0, 0},
        {ENOENT, 0x80010102u},
        {ENOTDIR, 0x80010103u},
        {EACCES, 0x80000045u},
        {EPERM, 0x80000045u},
        {EISDIR, 0x80000045u},
        {ENAMETOOLONG, 0x80010109u},
        {EINVAL, 0x80010109u},
        {EILSEQ, 0x80010109u},
        {EBADF, 0x80010101u},
        {EEXIST, 0x80010105u},
        {ENOMEM, 0x80000041u},
        {EIO, 0x80010100u},
        {ELOOP, 0x80010100u},
        {EAGAIN, 0x80010100u},
        {-1, 0x80010100u},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(static_cast<std::int32_t>(test.code), ulo::ResultCodeFromErrno(test.error))
            << "errno " << test.error;
    }
}

}  // namespace
