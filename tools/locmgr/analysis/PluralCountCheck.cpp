#include "PluralCountCheck.h"

#include "StringLocalizing/Resolving/PluralFormCountException.h"
#include "ValueWalk.h"
#include "ulo/rtl/TextConversion.h"

#include <map>

namespace locmgr::analysis {

namespace Resolving = LocalizationManager::StringLocalizing::Resolving;

namespace {

std::string Forms(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " form" : " forms");
}

}  // namespace

// "the plural rule ru (ru/Plural.rule) has", "the plural rules cs, sr-Latn (built-in) have".
std::string RulesText(const std::vector<const RuleInForce*>& rules) {
    std::map<std::string, std::vector<std::string>> idsBySource;
    for (const RuleInForce* rule : rules) {
        idsBySource[rule->Source()].push_back(rule->idText);
    }
    std::string text;
    for (const auto& [source, ids] : idsBySource) {
        std::string joined;
        for (const std::string& id : ids) {
            joined += (joined.empty() ? "" : ", ") + id;
        }
        text += (text.empty() ? "" : "; ") + joined + " (" + source + ")";
    }
    return (rules.size() == 1 ? "the plural rule " : "the plural rules ") + text +
           (rules.size() == 1 ? " has " : " have ");
}

std::vector<Finding> CheckPluralFormCounts(const FileUse& use,
                                           const std::vector<const RuleInForce*>& rules) {
    std::vector<Finding> findings;
    if (!use.file->Dictionary() || rules.empty()) {
        return findings;
    }
    const std::size_t expected = rules.front()->FormCount();
    const std::string rulesText = RulesText(rules);
    for (const auto& [key, value] : *use.file->Dictionary()) {
        const auto plurals = PluralInvocations(value);
        const LocFile::IndexedEntry* entry = use.file->FindEntry(key);
        for (std::size_t index = 0; index < plurals.size(); ++index) {
            const std::size_t got = plurals[index]->forms.size();
            if (got == expected) {
                continue;
            }
            // The n-th "{" of the entry is the n-th invocation of the pre-order walk.
            const TextPosition position =
                entry != nullptr && index < entry->plurals.size()
                    ? use.file->PositionOf(entry->plurals[index].span.begin)
                    : EntryPosition(*use.file, key);
            const std::string discriminator = ulo::WideToNarrowMessage(plurals[index]->param);
            findings.push_back(FindingAt(
                FindingKind::kPluralFormCount, use, position, WrittenKey(*use.file, key),
                "plural invocation on $" + discriminator + " has " + Forms(got) + ", " + rulesText +
                    Forms(expected) + " (" +
                    Resolving::PluralFormCountException(static_cast<std::uint16_t>(expected),
                                                        static_cast<std::uint16_t>(got),
                                                        plurals[index]->param)
                        .what() +
                    ")"));
        }
    }
    return findings;
}

}  // namespace locmgr::analysis
