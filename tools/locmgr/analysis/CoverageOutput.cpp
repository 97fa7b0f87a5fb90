#include "CoverageOutput.h"

#include "ulo/rtl/TextConversion.h"

#include <nlohmann/json.hpp>

namespace locmgr::analysis {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kKeysShown = 8;

std::string Narrow(const std::u16string& text) {
    return ulo::WideToNarrowMessage(text);
}

// "3 keys: a, b, c" with at most kKeysShown names.
std::string KeyList(const std::vector<std::string>& keys) {
    std::string text = std::to_string(keys.size()) + (keys.size() == 1 ? " key: " : " keys: ");
    for (std::size_t index = 0; index < keys.size() && index < kKeysShown; ++index) {
        text += (index == 0 ? "" : ", ") + keys[index];
    }
    if (keys.size() > kKeysShown) {
        text += ", ...";
    }
    return text;
}

std::string Joined(const std::vector<std::string>& items) {
    std::string joined;
    for (const std::string& item : items) {
        joined += (joined.empty() ? "" : ", ") + item;
    }
    return joined;
}

Json OrNull(const std::u16string& text) {
    return text.empty() ? Json(nullptr) : Json(Narrow(text));
}

}  // namespace

void WriteCoverageText(std::ostream& out, const CoverageReport& report) {
    out << "reference: " << report.reference << '\n';
    for (const CultureCoverage& culture : report.cultures) {
        out << "\nculture " << culture.culture << '\n';
        for (const ScopeCoverage& scope : culture.scopes) {
            out << "  " << scope.scope << ": ";
            if (scope.file.empty()) {
                out << "no file: requests for this scope fail\n";
                continue;
            }
            out << Narrow(scope.file) << (scope.fromAlternative ? " (alternative directory)" : "");
            if (scope.referenceFile) {
                out << ", the reference's own file\n";
            } else if (scope.missingKeys.empty() && scope.extraKeys.empty() &&
                       scope.problem.empty()) {
                out << ", complete\n";
            } else {
                out << '\n';
            }
            if (!scope.problem.empty()) {
                out << "    ! the file " << scope.problem << '\n';
            }
            if (!scope.missingKeys.empty()) {
                out << "    missing " << KeyList(scope.missingKeys) << '\n';
            }
            if (!scope.keysFromCommon.empty()) {
                out << "      of which common.lt answers " << KeyList(scope.keysFromCommon) << '\n';
            }
            if (!scope.extraKeys.empty()) {
                out << "    not in the reference: " << KeyList(scope.extraKeys) << '\n';
            }
            for (const HiddenFile& hidden : scope.hidden) {
                out << "    ! hides " << Narrow(hidden.path) << ": the module reads only "
                    << Narrow(scope.file)
                    << " for this scope and never takes keys from the file it hides; lost "
                    << KeyList(hidden.hiddenKeys) << '\n';
            }
        }
        std::vector<std::string> shared;
        for (const BinaryGap& gap : culture.binaries) {
            if (gap.servedFrom.empty()) {
                out << "  binary " << gap.scope << '/' << gap.key << ": not found\n";
            } else {
                shared.push_back(gap.scope + '/' + gap.key);
            }
        }
        if (!shared.empty()) {
            out << "  binary resources of the reference used as they are: " << Joined(shared)
                << '\n';
        }
    }
    if (!report.shadowed.empty()) {
        out << "\nroot files replaced by the alternative directory:\n";
        for (const ShadowedFile& file : report.shadowed) {
            out << "  " << Narrow(file.rootFile) << " <- " << Narrow(file.alternativeFile) << '\n';
        }
    }
}

void WriteCoverageJson(std::ostream& out, const CoverageReport& report, const std::string& root,
                       const std::string& alternative) {
    Json cultures = Json::array();
    for (const CultureCoverage& culture : report.cultures) {
        Json scopes = Json::array();
        for (const ScopeCoverage& scope : culture.scopes) {
            Json hidden = Json::array();
            for (const HiddenFile& file : scope.hidden) {
                hidden.push_back(
                    Json{{"file", Narrow(file.path)}, {"hiddenKeys", file.hiddenKeys}});
            }
            scopes.push_back(Json{
                {"scope", scope.scope},
                {"file", OrNull(scope.file)},
                {"alternative", scope.fromAlternative},
                {"referenceFile", scope.referenceFile},
                {"problem", scope.problem.empty() ? Json(nullptr) : Json(scope.problem)},
                {"missingKeys", scope.missingKeys},
                {"keysFromCommon", scope.keysFromCommon},
                {"extraKeys", scope.extraKeys},
                {"hiddenFiles", hidden},
            });
        }
        Json binaries = Json::array();
        for (const BinaryGap& gap : culture.binaries) {
            binaries.push_back(Json{
                {"scope", gap.scope}, {"key", gap.key}, {"servedFrom", OrNull(gap.servedFrom)}});
        }
        cultures.push_back(
            Json{{"culture", culture.culture}, {"scopes", scopes}, {"binaryGaps", binaries}});
    }
    Json shadowed = Json::array();
    for (const ShadowedFile& file : report.shadowed) {
        shadowed.push_back(Json{{"file", Narrow(file.rootFile)},
                                {"alternativeFile", Narrow(file.alternativeFile)}});
    }
    const Json json{
        {"schemaVersion", 1},
        {"root", root},
        {"alternative", alternative.empty() ? Json(nullptr) : Json(alternative)},
        {"reference", report.reference},
        {"cultures", cultures},
        {"shadowed", shadowed},
    };
    out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace locmgr::analysis
