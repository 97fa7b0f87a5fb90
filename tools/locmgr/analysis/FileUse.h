#pragma once

// A localization file as one check sees it: the file, the scope it holds, and the cultures
// whose requests read it (as their scope file or as their common texts).

#include "Finding.h"
#include "LocFile.h"
#include "TextPosition.h"

#include <string>
#include <vector>

namespace locmgr::analysis {

struct FileUse {
    const LocFile* file = nullptr;
    std::string scope;
    std::vector<std::string> cultures;
};

// A finding about `use` at `position` (line 0: the file as a whole).
Finding FindingAt(FindingKind kind, const FileUse& use, const TextPosition& position,
                  const std::string& key, const std::string& message);

// The position of an entry's key in the file, or line 0 when the file does not define it.
TextPosition EntryPosition(const LocFile& file, const std::u16string& lowerKey);

// A key as the file writes it ("windowTitle"), for messages; the lower-cased key when the
// file does not define it.
std::string WrittenKey(const LocFile& file, const std::u16string& lowerKey);

}  // namespace locmgr::analysis
