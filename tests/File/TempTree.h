#pragma once

// A real directory tree under the system's temporary folder, removed with the object. Tests
// build what they need in one expression:
//   TempTree tree;
//   tree.File("root/en-US/Locs/s.lt", "a = 'x'").Directory("alt");
// Paths given to the helpers are relative to the tree and use "/".

#include "ulo/rtl/TextConversion.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <system_error>

namespace LocalizationManager::Testing {

class TempTree {
  public:
    TempTree() {
        std::string pattern = (std::filesystem::temp_directory_path() / "lm-tree-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw std::system_error(errno, std::generic_category(), "mkdtemp");
        }
        root_ = pattern;
    }

    ~TempTree() {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    TempTree(const TempTree&) = delete;
    TempTree& operator=(const TempTree&) = delete;

    // A file with `content` (bytes as given), its folders created on the way.
    TempTree& File(const std::string& relative, const std::string& content = "") {
        const auto path = Native(relative);
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return *this;
    }

    TempTree& Directory(const std::string& relative) {
        std::filesystem::create_directories(Native(relative));
        return *this;
    }

    // A named pipe with no writer: opening it for reading would block.
    TempTree& Fifo(const std::string& relative) {
        const auto path = Native(relative);
        std::filesystem::create_directories(path.parent_path());
        if (::mkfifo(path.c_str(), 0600) != 0) {
            throw std::system_error(errno, std::generic_category(), "mkfifo");
        }
        return *this;
    }

    TempTree& Remove(const std::string& relative) {
        std::filesystem::remove_all(Native(relative));
        return *this;
    }

    // The full path as the engine takes it; "" gives the tree's own folder.
    std::u16string Path(const std::string& relative = "") const {
        return ulo::Utf8ToWide(relative.empty() ? root_.string() : Native(relative).string());
    }

  private:
    std::filesystem::path Native(const std::string& relative) const { return root_ / relative; }

    std::filesystem::path root_;
};

}  // namespace LocalizationManager::Testing
