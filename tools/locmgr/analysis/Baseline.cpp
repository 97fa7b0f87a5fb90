#include "Baseline.h"

#include "RegularFile.h"

#include <fstream>
#include <nlohmann/json.hpp>

namespace locmgr::analysis {

namespace {

using Json = nlohmann::ordered_json;

constexpr int kBaselineVersion = 1;
constexpr char kAlternativePrefix[] = "alternative:";

bool IsUnder(const std::string& file, const std::string& directory) {
    return !directory.empty() && file.compare(0, directory.size(), directory) == 0 &&
           (file.size() == directory.size() || file[directory.size()] == '/');
}

// The file relative to the directory it is in, so that the baseline holds when the tree moves.
std::string RelativeFile(const std::string& file, const TreeDirectories& tree) {
    // The longer directory first: one may hold the other.
    const bool alternativeFirst = tree.alternative.size() > tree.root.size();
    for (int pass = 0; pass < 2; ++pass) {
        const bool alternative = (pass == 0) == alternativeFirst;
        const std::string& directory = alternative ? tree.alternative : tree.root;
        if (IsUnder(file, directory)) {
            const std::string rest = file.substr(std::min(file.size(), directory.size() + 1));
            return alternative ? kAlternativePrefix + rest : rest;
        }
    }
    return file;
}

}  // namespace

Baseline::Entry Baseline::EntryOf(const Finding& finding, const TreeDirectories& tree) {
    return Entry{InfoOf(finding.kind).id, RelativeFile(finding.file, tree), finding.key,
                 finding.message};
}

Baseline Baseline::Read(const std::string& path, const TreeDirectories& tree) {
    const std::optional<std::string> text = ReadRegularFile(path);
    if (!text) {
        throw BaselineError("cannot read the baseline '" + path + "'");
    }
    const Json json = Json::parse(*text, nullptr, false);
    if (json.is_discarded() || !json.is_object() ||
        json.value("locmgrBaseline", 0) != kBaselineVersion || !json.contains("findings") ||
        !json["findings"].is_array()) {
        throw BaselineError("'" + path + "' is not a baseline written by locmgr check");
    }
    Baseline baseline;
    baseline.tree_ = tree;
    for (const Json& entry : json["findings"]) {
        const auto isText = [&entry](const char* name) {
            return entry.contains(name) && entry[name].is_string();
        };
        if (!entry.is_object() || !isText("kind") || !isText("file") || !isText("key") ||
            !isText("message")) {
            throw BaselineError("'" + path +
                                "': every finding needs \"kind\", \"file\", \"key\" and "
                                "\"message\" as strings");
        }
        baseline.entries_.emplace(entry["kind"].get<std::string>(),
                                  entry["file"].get<std::string>(), entry["key"].get<std::string>(),
                                  entry["message"].get<std::string>());
    }
    return baseline;
}

void Baseline::Write(const std::string& path, const std::vector<Finding>& findings,
                     const TreeDirectories& tree) {
    std::multiset<Entry> entries;
    for (const Finding& finding : findings) {
        entries.insert(EntryOf(finding, tree));
    }
    Json list = Json::array();
    for (const auto& [kind, file, key, message] : entries) {
        list.push_back(Json{{"kind", kind}, {"file", file}, {"key", key}, {"message", message}});
    }
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << Json{{"locmgrBaseline", kBaselineVersion}, {"findings", list}}.dump(
               2, ' ', false, Json::error_handler_t::replace)
        << '\n';
    if (!out.flush()) {
        throw BaselineError("cannot write the baseline '" + path + "'");
    }
}

std::size_t Baseline::Filter(std::vector<Finding>& findings) const {
    std::multiset<Entry> unused = entries_;
    std::vector<Finding> kept;
    for (Finding& finding : findings) {
        const auto accepted = unused.find(EntryOf(finding, tree_));
        if (accepted != unused.end()) {
            unused.erase(accepted);
        } else {
            kept.push_back(std::move(finding));
        }
    }
    const std::size_t removed = findings.size() - kept.size();
    findings = std::move(kept);
    return removed;
}

}  // namespace locmgr::analysis
