#include "MergeRecord.h"

#include "RegularFile.h"

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

namespace locmgr::analysis {

namespace {

using Json = nlohmann::ordered_json;

constexpr int kRecordVersion = 1;

std::string Text(const Json& object, const char* name, const std::string& path) {
    const auto found = object.find(name);
    if (found == object.end() || !found->is_string()) {
        throw MergeRecordError("'" + path + "' is not a merge record: \"" + name +
                               "\" must be a string");
    }
    return found->get<std::string>();
}

const Json& Object(const Json& json, const std::string& path) {
    if (!json.is_object()) {
        throw MergeRecordError("'" + path + "' is not a merge record: " + json.dump() +
                               " is not an object");
    }
    return json;
}

}  // namespace

MergeRecord MergeRecord::Read(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
        return {};
    }
    const std::optional<std::string> text = ReadRegularFile(path);
    if (!text) {
        throw MergeRecordError("cannot read the merge record '" + path + "'");
    }
    const Json json = Json::parse(*text, nullptr, false);
    if (json.is_discarded() || !json.is_object() ||
        json.value("locmgrMerge", 0) != kRecordVersion) {
        throw MergeRecordError("'" + path + "' is not a merge record written by locmgr merge");
    }
    MergeRecord record;
    const Json cultures = json.value("cultures", Json::object());
    for (const auto& [cultureName, culture] : Object(cultures, path).items()) {
        CultureRecord& cultureRecord = record.cultures[cultureName];
        cultureRecord.reference = Text(Object(culture, path), "reference", path);
        const Json scopes = culture.value("scopes", Json::object());
        for (const auto& [scopeName, scope] : Object(scopes, path).items()) {
            ScopeRecord& scopeRecord = cultureRecord.scopes[scopeName];
            for (const auto& [key, entry] : Object(scope, path).items()) {
                KeyRecord& keyRecord = scopeRecord[key];
                keyRecord.reference = Text(Object(entry, path), "reference", path);
                if (entry.contains("review")) {
                    const Json& review = Object(entry["review"], path);
                    keyRecord.review =
                        PendingReview{Text(review, "was", path), Text(review, "translation", path)};
                }
            }
        }
    }
    return record;
}

void MergeRecord::Write(const std::string& path) const {
    Json json{{"locmgrMerge", kRecordVersion}, {"cultures", Json::object()}};
    for (const auto& [cultureName, culture] : cultures) {
        Json scopes = Json::object();
        for (const auto& [scopeName, scope] : culture.scopes) {
            Json keys = Json::object();
            for (const auto& [key, entry] : scope) {
                Json keyJson{{"reference", entry.reference}};
                if (entry.review) {
                    keyJson["review"] = Json{{"was", entry.review->was},
                                             {"translation", entry.review->translation}};
                }
                keys[key] = std::move(keyJson);
            }
            scopes[scopeName] = std::move(keys);
        }
        json["cultures"][cultureName] =
            Json{{"reference", culture.reference}, {"scopes", std::move(scopes)}};
    }
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    if (!out.flush()) {
        throw MergeRecordError("cannot write the merge record '" + path + "'");
    }
}

}  // namespace locmgr::analysis
