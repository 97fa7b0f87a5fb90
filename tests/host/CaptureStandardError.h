#pragma once

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

namespace localization_manager::host::testing {

// Points file descriptor 2 at a temporary file for the object's life; Text() reads what was
// written so far. Works below the C++ streams, where the tracer writes.
class CaptureStandardError {
  public:
    CaptureStandardError() {
        char name[] = "/tmp/lm-host-stderr-XXXXXX";
        const int file = ::mkstemp(name);
        path_ = name;
        std::fflush(stderr);
        saved_ = ::dup(STDERR_FILENO);
        ::dup2(file, STDERR_FILENO);
        ::close(file);
    }

    CaptureStandardError(const CaptureStandardError&) = delete;
    CaptureStandardError& operator=(const CaptureStandardError&) = delete;

    ~CaptureStandardError() {
        ::dup2(saved_, STDERR_FILENO);
        ::close(saved_);
        ::unlink(path_.c_str());
    }

    std::string Text() const {
        std::ifstream file(path_, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }

  private:
    std::string path_;
    int saved_ = -1;
};

}  // namespace localization_manager::host::testing
