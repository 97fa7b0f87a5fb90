#include "RegularFile.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace locmgr {

std::optional<std::string> ReadRegularFile(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        return std::nullopt;
    }
    std::ifstream in(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (!in || in.bad()) {
        return std::nullopt;
    }
    return text;
}

}  // namespace locmgr
