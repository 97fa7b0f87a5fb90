#pragma once

// "locmgr unused": the reference's keys that no source file of the application uses, and the
// keys that sources ask for and the reference lacks. A key is used where a source names its
// constant from "locmgr keys" (download::summary, with any namespace before it) or writes it
// as a string literal (keys are matched without case, as the runtime matches them); a key is
// asked for where a literal is the first argument of Get, GetUtf16 or GetString. Headers that
// "locmgr keys" wrote are not sources: they name every key.

#include "TreeModel.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct KeyUseFinding {
    std::string file;  // the reference's file, or the source file
    std::size_t line = 0;
    std::string key;
    std::string message;
};

struct KeyUseResult {
    std::vector<KeyUseFinding> unused;   // by reference file and line
    std::vector<KeyUseFinding> unknown;  // by source file and line
    std::size_t sourceFiles = 0;
};

// A --source that does not exist or cannot be listed.
class SourceError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// `sources`: files, or folders searched for C and C++ files (.c, .cc, .cpp, .cxx, .h, .hh,
// .hpp, .hxx, .inl, .ipp, .m, .mm). Throws SourceError.
KeyUseResult FindKeyUses(const TreeModel& model, const std::string& reference,
                         const std::vector<std::string>& sources);

}  // namespace locmgr::analysis
