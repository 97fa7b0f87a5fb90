#pragma once

// UTF-8 (what a Linux host reads from files, the command line and the environment) to and
// from UTF-16 (what the framework string of component interfaces holds). Conversion never
// fails: every invalid or truncated UTF-8 sequence and every unpaired surrogate becomes
// U+FFFD, so a stray byte in a file name still gives a visible, usable string.
//
// The functions are pure and may be called from any thread at once. The overloads with an
// output string replace its content and reuse its buffer: a host that converts text after
// text into one string allocates only when a text is longer than any before it.

#include "ulo/String.h"

#include <string>
#include <string_view>

namespace localization_manager::host {

std::u16string Utf8ToUtf16(std::string_view utf8);
std::string Utf16ToUtf8(std::u16string_view utf16);
void Utf16ToUtf8(std::u16string_view utf16, std::string& out);

ulo::string16_t ToFrameworkString(std::string_view utf8);
std::string ToUtf8(const ulo::string16_t& text);
void ToUtf8(const ulo::string16_t& text, std::string& out);

}  // namespace localization_manager::host
