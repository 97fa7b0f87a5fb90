#pragma once

#include <string>

namespace locmgr {

// The name that stands for standard input where a command reads a file ("locmgr parse -").
constexpr char kStandardInputName[] = "-";

// The whole of standard input decoded exactly as the module's file layer decodes a
// localization file (File::GetFileContent): with or without a byte-order mark, malformed UTF-8
// as U+FFFD, trailing NULs dropped, the same errors for a mark alone or 2 GiB and more. Unlike
// a named file, standard input may be a pipe or a terminal. Reads up to the end; call once.
// Throws std::system_error when standard input cannot be read, and what GetFileContent throws.
std::u16string ReadStandardInputText();

}  // namespace locmgr
