#include "StandardInput.h"

#include "File/FileStream.h"
#include "ulo/rtl/TextConversion.h"

#include <cerrno>
#include <cstdint>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace locmgr {

namespace {

class Descriptor {
  public:
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { ::close(descriptor_); }
    int Get() const { return descriptor_; }

  private:
    const int descriptor_;
};

[[noreturn]] void ThrowErrno(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

void WriteAll(int descriptor, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = ::write(descriptor, bytes, count);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written < 0) {
            ThrowErrno("cannot buffer standard input");
        }
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
}

}  // namespace

std::u16string ReadStandardInputText() {
    // The file layer decodes only files it opens itself. Standard input copied into an
    // anonymous in-memory file goes through that very code, so that a byte-order mark, NULs
    // and malformed UTF-8 cannot read differently from a file, and no second copy of those
    // rules exists to drift apart.
    const int memory = ::memfd_create("locmgr-stdin", MFD_CLOEXEC);
    if (memory < 0) {
        ThrowErrno("cannot buffer standard input");
    }
    const Descriptor buffer(memory);
    // One byte more than the file layer accepts is enough for its own size error; an endless
    // input must not fill the memory first.
    constexpr std::uint64_t kEnough = (std::uint64_t{1} << 31) + 1;
    std::uint64_t total = 0;
    std::vector<char> chunk(64 * 1024);
    while (total < kEnough) {
        const ssize_t got = ::read(STDIN_FILENO, chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            ThrowErrno("cannot read standard input");
        }
        if (got == 0) {
            break;
        }
        WriteAll(buffer.Get(), chunk.data(), static_cast<std::size_t>(got));
        total += static_cast<std::uint64_t>(got);
    }
    const std::string path = "/proc/self/fd/" + std::to_string(buffer.Get());
    return LocalizationManager::File::GetFileContent(ulo::Utf8ToWide(path));
}

}  // namespace locmgr
