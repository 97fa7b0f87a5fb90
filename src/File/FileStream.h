#pragma once

#include <cstddef>
#include <string>

namespace LocalizationManager::File {

// Reads a whole UTF-8 text file (a localization or plural rule file), with or without a
// byte-order mark, and returns it decoded as UTF-16. Malformed UTF-8 is not an error: each bad
// sequence reads as U+FFFD. NUL characters at the end of the text are dropped, except that a
// text of NULs alone keeps all of them. An empty file gives the empty string.
//
// Throws:
// - UloCallFailedException when the file cannot be opened ("Cannot open file", also for a
//   directory, FIFO or device in its place), its size cannot be had ("Cannot get file size")
//   or it cannot be read ("Cannot read from file"); the code's text follows ", error: ".
// - boost::numeric::positive_overflow for a file of 2 GiB or more.
// - std::runtime_error("MultiByteToWideChar conversion failed") for a file that holds only a
//   byte-order mark.
// The file is closed before the call returns or throws. Stateless; safe to call concurrently.
//
// The file is read and decoded a piece of kReadPieceBytes at a time, so that the bytes of a
// large file are never held whole beside its text; the text is the same as decoding the whole.
std::u16string GetFileContent(const std::u16string& filename);

constexpr std::size_t kReadPieceBytes = 256 * 1024;

}  // namespace LocalizationManager::File
