#include "ReferenceCheck.h"

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
    const SourceMap& map = use.file->Map();
    for (const auto& [key, value] : *dictionary) {
        const SourceEntry* entry = map.FindEntry(key);
        std::vector<const SourceReference*> outside;
        if (entry != nullptr) {
            for (std::size_t index = entry->firstReference; index < entry->endReference; ++index) {
                if (map.References()[index].pluralDepth == 0) {
                    outside.push_back(&map.References()[index]);
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
            const TextPosition position = index < outside.size() ? outside[index]->position
                                          : entry != nullptr     ? entry->position
                                                                 : TextPosition{0, 0, 0};
            const std::string name = ulo::WideToNarrowMessage(reference.key);
            const bool isCommon = &common == use.file;
            findings.push_back(FindingAt(
                FindingKind::kMissingReference, use, position, WrittenKey(*use.file, key),
                "reference to '" + name + "', which " +
                    (isCommon ? std::string("common.lt does not define")
                              : "neither this file nor " + ulo::WideToNarrowMessage(common.Path()) +
                                    " defines") +
                    " (Key '" + name + "' not found)"));
        }
    }
    return findings;
}

}  // namespace locmgr::analysis
