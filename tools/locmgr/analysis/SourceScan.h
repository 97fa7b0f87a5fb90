#pragma once

// What an application's C and C++ sources say about text keys, for "locmgr unused": every
// string literal, every qualified name ("keys::download::title"), and which literals are the
// first argument of a text request (Get, GetUtf16, GetString). Comments are skipped, and
// literals are read as the compiler reads them as far as keys go: prefixes (u8, u, U, L), raw
// strings, simple escapes.

#include <cstddef>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct SourceLiteral {
    std::string text;  // the content, escapes other than \" \\ \' kept as written
    std::size_t line = 0;
    bool requested = false;  // the first argument of Get(, GetUtf16( or GetString(
};

struct SourceName {
    std::string name;  // "keys::download::title", as written without blanks
    std::size_t line = 0;
};

struct SourceScan {
    std::vector<SourceLiteral> literals;
    std::vector<SourceName> names;  // qualified names only
};

SourceScan ScanSource(const std::string& text);

}  // namespace locmgr::analysis
