#include "ParameterCaseCheck.h"

#include "ValueWalk.h"
#include "ulo/rtl/TextConversion.h"

#include <algorithm>
#include <set>

namespace locmgr::analysis {

namespace {

// Parameter names are ASCII keys; lower-casing them ASCII-wise is enough to group them.
std::u16string Lower(const std::u16string& name) {
    std::u16string lower = name;
    for (char16_t& unit : lower) {
        if (unit >= u'A' && unit <= u'Z') {
            unit = static_cast<char16_t>(unit - u'A' + u'a');
        }
    }
    return lower;
}

namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

// "$name" where the file writes it: an external parameter or the discriminator of a plural
// invocation.
struct NamedParameter {
    const std::u16string* name;
    const Parsing::SourceSpan* span;
    const Parsing::IndexedEntry* entry;
};

std::vector<NamedParameter> ParametersInTextOrder(const LocFile& file) {
    std::vector<NamedParameter> parameters;
    for (const Parsing::IndexedEntry& entry : file.Entries()) {
        const std::size_t first = parameters.size();
        for (const Parsing::IndexedParameter& parameter : entry.parameters) {
            parameters.push_back({&parameter.name, &parameter.span, &entry});
        }
        for (const Parsing::IndexedPlural& plural : entry.plurals) {
            parameters.push_back({&plural.parameter, &plural.parameterSpan, &entry});
        }
        std::sort(parameters.begin() + static_cast<std::ptrdiff_t>(first), parameters.end(),
                  [](const NamedParameter& left, const NamedParameter& right) {
                      return left.span->begin.offset < right.span->begin.offset;
                  });
    }
    return parameters;
}

}  // namespace

ParameterSpellings SpellingsOf(const LocFile& file) {
    ParameterSpellings spellings;
    if (!file.Dictionary()) {
        return spellings;
    }
    for (const auto& entry : *file.Dictionary()) {
        for (const std::u16string& name : ParameterNames(entry.second)) {
            ++spellings[Lower(name)][name];
        }
    }
    return spellings;
}

std::vector<Finding> CheckParameterCase(const FileUse& use,
                                        const ParameterSpellings& commonSpellings) {
    std::vector<Finding> findings;
    ParameterSpellings all = SpellingsOf(*use.file);
    if (all.empty()) {
        return findings;
    }
    const ParameterSpellings own = all;
    for (const auto& [lower, spellings] : commonSpellings) {
        for (const auto& [spelling, count] : spellings) {
            all[lower][spelling] += count;
        }
    }
    // The spelling to keep: the most frequent, the first in code-unit order on a tie.
    std::map<std::u16string, std::u16string> main;
    for (const auto& [lower, spellings] : all) {
        if (spellings.size() < 2) {
            continue;
        }
        const auto best = std::max_element(
            spellings.begin(), spellings.end(),
            [](const auto& left, const auto& right) { return left.second < right.second; });
        main[lower] = best->first;
    }
    if (main.empty()) {
        return findings;
    }
    std::set<std::u16string> reported;
    for (const NamedParameter& parameter : ParametersInTextOrder(*use.file)) {
        const auto found = main.find(Lower(*parameter.name));
        const std::u16string& name = *parameter.name;
        if (found == main.end() || name == found->second || !reported.insert(name).second ||
            own.count(found->first) == 0 || own.at(found->first).count(name) == 0) {
            continue;
        }
        const std::string key = ulo::WideToNarrowMessage(parameter.entry->key);
        findings.push_back(FindingAt(
            FindingKind::kParameterCase, use, use.file->PositionOf(parameter.span->begin), key,
            "parameter '$" + ulo::WideToNarrowMessage(name) + "' is also written '$" +
                ulo::WideToNarrowMessage(found->second) +
                "': the application is asked for both names"));
    }
    return findings;
}

}  // namespace locmgr::analysis
