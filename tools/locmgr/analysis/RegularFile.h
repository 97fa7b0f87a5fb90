#pragma once

#include <optional>
#include <string>

namespace locmgr {

// The whole content of the regular file at `path`, or nothing when there is none or it cannot
// be read. Anything but a regular file is refused unread: a pipe or a device could block or
// never end.
std::optional<std::string> ReadRegularFile(const std::string& path);

}  // namespace locmgr
