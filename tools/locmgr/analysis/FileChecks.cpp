#include "FileChecks.h"

#include "ValueWalk.h"
#include "ulo/rtl/TextConversion.h"

namespace locmgr::analysis {

std::string Expectation(const std::string& report) {
    // The last line reads "   ^- expecting X here"; a report without position is one line.
    const std::size_t caret = report.rfind("^- ");
    return caret == std::string::npos ? report : report.substr(caret + 3);
}

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
        findings.push_back(FindingAt(FindingKind::kDuplicateKey, use, duplicate.second,
                                     ulo::WideToNarrowMessage(duplicate.writtenKey),
                                     "duplicate key found (keys are case insensitive): '" +
                                         ulo::WideToNarrowMessage(duplicate.lowerKey) +
                                         "' (first defined at line " +
                                         std::to_string(duplicate.first.line) + ")"));
    }
    if (const auto& failure = file.ParseError()) {
        Finding finding = FindingAt(FindingKind::kParseError, use, failure->position, "",
                                    Expectation(failure->report));
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
    const SourceMap& map = file.Map();
    for (const auto& [key, value] : *file.Dictionary()) {
        const SourceEntry* entry = map.FindEntry(key);
        // The map lists the references of an entry in text order, as the walk does; the
        // n-th reference inside braces there is the n-th one here.
        std::vector<const SourceReference*> inside;
        if (entry != nullptr) {
            for (std::size_t index = entry->firstReference; index < entry->endReference; ++index) {
                if (map.References()[index].pluralDepth > 0) {
                    inside.push_back(&map.References()[index]);
                }
            }
        }
        std::size_t seen = 0;
        for (const ReferenceUse& reference : References(value)) {
            if (!reference.insidePlural) {
                continue;
            }
            const TextPosition position = seen < inside.size() ? inside[seen]->position
                                          : entry != nullptr   ? entry->position
                                                               : TextPosition{0, 0, 0};
            ++seen;
            const std::string name = ulo::WideToNarrowMessage(reference.key);
            findings.push_back(FindingAt(
                FindingKind::kReferenceInPlural, use, position, WrittenKey(*use.file, key),
                "reference '" + name +
                    "' inside a plural invocation is never expanded: the text fails "
                    "whenever this form is chosen (Key reference found (" +
                    name + "). Run compiler first)"));
        }
    }
    return findings;
}

}  // namespace locmgr::analysis
