#include "FileUse.h"

#include "ulo/rtl/TextConversion.h"

namespace locmgr::analysis {

Finding FindingAt(FindingKind kind, const FileUse& use, const TextPosition& position,
                  const std::string& key, const std::string& message) {
    Finding finding;
    finding.kind = kind;
    finding.file = ulo::WideToNarrowMessage(use.file->Path());
    if (position.line > 0) {
        finding.line = position.line;
        finding.column = position.column;
        finding.unitColumn = position.unitColumn;
    }
    finding.scope = use.scope;
    finding.key = key;
    finding.message = message;
    finding.cultures = use.cultures;
    return finding;
}

TextPosition EntryPosition(const LocFile& file, const std::u16string& lowerKey) {
    const LocFile::IndexedEntry* entry = file.FindEntry(lowerKey);
    return entry != nullptr ? file.PositionOf(entry->keySpan.begin) : TextPosition{0, 0, 0};
}

}  // namespace locmgr::analysis

namespace locmgr::analysis {

std::string WrittenKey(const LocFile& file, const std::u16string& lowerKey) {
    const LocFile::IndexedEntry* entry = file.FindEntry(lowerKey);
    return ulo::WideToNarrowMessage(entry != nullptr ? entry->key : lowerKey);
}

}  // namespace locmgr::analysis
