#include "ReferenceCheck.h"

#include "StringLocalizing/Model/KeyNotFoundException.h"
#include "ValueWalk.h"
#include "ulo/rtl/TextConversion.h"

namespace locmgr::analysis {

std::vector<Finding> CheckMissingReferences(const FileUse& use, const LocFile& common) {
    std::vector<Finding> findings;
    const auto& dictionary = use.file->Dictionary();
    const auto& commonDictionary = common.Dictionary();
    if (!dictionary || !commonDictionary) {
        return findings;
    }
    for (const auto& [key, value] : *dictionary) {
        const LocFile::IndexedEntry* entry = use.file->FindEntry(key);
        // The engine records an entry's references in text order, as the walk meets them.
        std::vector<const LocalizationManager::StringLocalizing::Parsing::IndexedReference*>
            outside;
        if (entry != nullptr) {
            for (const auto& reference : entry->references) {
                if (reference.pluralDepth == 0) {
                    outside.push_back(&reference);
                }
            }
        }
        std::size_t seen = 0;
        for (const ReferenceUse& reference : References(value)) {
            if (reference.insidePlural) {
                continue;
            }
            const std::size_t index = seen++;
            if (dictionary->count(reference.key) != 0 ||
                commonDictionary->count(reference.key) != 0) {
                continue;
            }
            const TextPosition position = index < outside.size()
                                              ? use.file->PositionOf(outside[index]->span.begin)
                                              : EntryPosition(*use.file, key);
            const std::string name = ulo::WideToNarrowMessage(reference.key);
            const bool isCommon = &common == use.file;
            findings.push_back(FindingAt(
                FindingKind::kMissingReference, use, position, WrittenKey(*use.file, key),
                "reference to '" + name + "', which " +
                    (isCommon ? std::string("common.lt does not define")
                              : "neither this file nor " + ulo::WideToNarrowMessage(common.Path()) +
                                    " defines") +
                    " (" +
                    LocalizationManager::StringLocalizing::Model::KeyNotFoundException(
                        reference.key)
                        .Message() +
                    ")"));
        }
    }
    return findings;
}

}  // namespace locmgr::analysis
