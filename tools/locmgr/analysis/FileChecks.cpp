#include "FileChecks.h"

#include "StringLocalizing/Parsing/DuplicateKeyException.h"
#include "StringLocalizing/Resolving/UnexpandedReferenceException.h"
#include "ValueWalk.h"
#include "ulo/rtl/TextConversion.h"

namespace locmgr::analysis {

std::vector<Finding> CheckLoading(const FileUse& use) {
    const LocFile& file = *use.file;
    std::vector<Finding> findings;
    if (!file.ReadError().empty()) {
        findings.push_back(FindingAt(FindingKind::kUnreadableFile, use, {0, 0, 0}, "",
                                     "cannot read the file: " + file.ReadError()));
        return findings;
    }
    for (const DuplicateDefinition& duplicate : file.Duplicates()) {
        // The runtime's own message, with the positions it does not give.
        findings.push_back(
            FindingAt(FindingKind::kDuplicateKey, use, duplicate.second,
                      ulo::WideToNarrowMessage(duplicate.writtenKey),
                      LocalizationManager::StringLocalizing::Parsing::DuplicateKeyException(
                          duplicate.lowerKey)
                              .Message() +
                          " (first defined at line " + std::to_string(duplicate.first.line) + ")"));
    }
    if (const auto& failure = file.ParseError()) {
        Finding finding =
            FindingAt(FindingKind::kParseError, use, failure->position, "", failure->expectation);
        finding.report = failure->report;
        findings.push_back(finding);
    }
    return findings;
}

std::vector<Finding> CheckReferencesInPlurals(const FileUse& use) {
    const LocFile& file = *use.file;
    std::vector<Finding> findings;
    if (!file.Dictionary()) {
        return findings;
    }
    for (const auto& [key, value] : *file.Dictionary()) {
        const LocFile::IndexedEntry* entry = file.FindEntry(key);
        // The engine records the references of an entry in text order, as the walk meets
        // them; the n-th reference inside braces there is the n-th one here.
        std::vector<const LocalizationManager::StringLocalizing::Parsing::IndexedReference*> inside;
        if (entry != nullptr) {
            for (const auto& reference : entry->references) {
                if (reference.pluralDepth > 0) {
                    inside.push_back(&reference);
                }
            }
        }
        std::size_t seen = 0;
        for (const ReferenceUse& reference : References(value)) {
            if (!reference.insidePlural) {
                continue;
            }
            const TextPosition position = seen < inside.size()
                                              ? file.PositionOf(inside[seen]->span.begin)
                                              : EntryPosition(file, key);
            ++seen;
            const std::string name = ulo::WideToNarrowMessage(reference.key);
            findings.push_back(FindingAt(
                FindingKind::kReferenceInPlural, use, position, WrittenKey(*use.file, key),
                "reference '" + name +
                    "' inside a plural invocation is never expanded: the text fails "
                    "whenever this form is chosen (" +
                    LocalizationManager::StringLocalizing::Resolving::UnexpandedReferenceException(
                        reference.key)
                        .what() +
                    ")"));
        }
    }
    return findings;
}

}  // namespace locmgr::analysis
