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
    const SourceMap& map = use.file->Map();
    for (const SourceParameter& parameter : map.Parameters()) {
        const auto found = main.find(Lower(parameter.name));
        if (found == main.end() || parameter.name == found->second ||
            !reported.insert(parameter.name).second || own.count(found->first) == 0 ||
            own.at(found->first).count(parameter.name) == 0) {
            continue;
        }
        const std::string key = parameter.entry < map.Entries().size()
                                    ? ulo::WideToNarrowMessage(map.Entries()[parameter.entry].key)
                                    : std::string();
        findings.push_back(FindingAt(FindingKind::kParameterCase, use, parameter.position, key,
                                     "parameter '$" + ulo::WideToNarrowMessage(parameter.name) +
                                         "' is also written '$" +
                                         ulo::WideToNarrowMessage(found->second) +
                                         "': the application is asked for both names"));
    }
    return findings;
}

}  // namespace locmgr::analysis
