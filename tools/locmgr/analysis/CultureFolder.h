#pragma once

// Which culture reads a culture folder. The runtime never lists folders: it builds the folder
// names of a requested culture and probes them. So a folder is read by exactly the cultures
// whose most specific folder name it is (and, as a less specific folder, by the cultures
// below it), and a folder whose name the runtime never builds is never read.

#include "localization_manager/Culture.h"

#include <optional>
#include <string>

namespace locmgr::analysis {

constexpr char kNeutralFolder[] = "neutral";

// The culture whose most specific folder is `folderName`: a language name of the table
// ("de", "sr-Latn", "zh-Hans"), optionally followed by "-" and a first subtag, and then by
// "-" and a second one ("en-US", "sr-Latn-RS", "en-US-x-y" with the second subtag "x-y").
// Names are compared as the file system does, case-sensitively. Nothing for "neutral" and for
// any name no culture reaches.
std::optional<localization_manager::Culture> CultureOfFolder(const std::string& folderName);

// The most specific folder name of `culture`, which is also how the checks name a culture:
// "de", "en-US", "sr-Latn-RS". Throws std::range_error for a language outside the table.
std::string CultureName(const localization_manager::Culture& culture);

}  // namespace locmgr::analysis
