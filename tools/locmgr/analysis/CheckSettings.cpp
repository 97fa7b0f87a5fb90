#include "CheckSettings.h"

#include "RegularFile.h"
#include "StringLocalizing/Model/CultureNames.h"
#include "StringLocalizing/Model/KeyCase.h"
#include "StringLocalizing/Model/LanguageName.h"
#include "ulo/rtl/TextConversion.h"

#include <filesystem>
#include <nlohmann/json.hpp>

namespace locmgr::analysis {

namespace {

using Json = nlohmann::json;

bool IsKindId(const std::string& id) {
    for (const KindInfo& kind : FindingKinds()) {
        if (id == kind.id) {
            return true;
        }
    }
    return false;
}

class Reader {
  public:
    explicit Reader(std::string path) : path_(std::move(path)) {}

    CheckSettings Read(const Json& json) const {
        Expect(json.is_object(), "", "an object");
        CheckSettings settings;
        for (const auto& [name, value] : json.items()) {
            if (name == "neutralLanguage") {
                localization_manager::Culture culture;
                Expect(value.is_string() &&
                           LocalizationManager::StringLocalizing::Model::ConvertCultureName(
                               value.get<std::string>(), culture) == 0,
                       name, "a language name such as \"en\"");
                settings.neutralLanguage =
                    LocalizationManager::StringLocalizing::Model::LanguageName(culture.languageId);
            } else if (name == "cultures") {
                Expect(value.is_object(), name, "an object with a member per culture");
                for (const auto& [culture, cultureValue] : value.items()) {
                    const std::string where = name + "." + culture;
                    Expect(cultureValue.is_object(), where, "an object");
                    for (const auto& [member, memberValue] : cultureValue.items()) {
                        Expect(Member(member, memberValue, where, settings.cultures[culture]),
                               where + "." + member,
                               "absent: a culture has \"severity\" and \"sameAsReference\"");
                    }
                }
            } else if (!Member(name, value, "", settings.tree)) {
                Fail(name,
                     "absent: the settings are \"neutralLanguage\", \"severity\", "
                     "\"sameAsReference\" and \"cultures\"");
            }
        }
        return settings;
    }

  private:
    // Reads a member that both the tree and a culture may have; false for another name.
    bool Member(const std::string& name, const Json& value, const std::string& where,
                SeveritySettings& settings) const {
        const std::string at = where.empty() ? name : where + "." + name;
        if (name == "severity") {
            settings.severity = Levels(value, at);
            return true;
        }
        if (name == "sameAsReference") {
            Expect(value.is_array(), at, "a list of keys");
            for (const Json& key : value) {
                Expect(key.is_string(), at, "a list of keys");
                settings.sameAsReference.insert(
                    LocalizationManager::StringLocalizing::Model::LowerCaseKey(
                        ulo::Utf8ToWide(key.get<std::string>())));
            }
            return true;
        }
        return false;
    }

    std::map<std::string, Level> Levels(const Json& json, const std::string& where) const {
        Expect(json.is_object(), where,
               "an object from kind ids to \"error\", \"warning\" or \"off\"");
        std::map<std::string, Level> levels;
        for (const auto& [kind, value] : json.items()) {
            const std::string at = where + "." + kind;
            Expect(IsKindId(kind), at, "absent: no finding kind has that id");
            const std::string level = value.is_string() ? value.get<std::string>() : "";
            Expect(level == "error" || level == "warning" || level == "off", at,
                   "\"error\", \"warning\" or \"off\"");
            levels[kind] = level == "error"     ? Level::kError
                           : level == "warning" ? Level::kWarning
                                                : Level::kOff;
        }
        return levels;
    }

    void Expect(bool condition, const std::string& where, const std::string& what) const {
        if (!condition) {
            Fail(where, what);
        }
    }

    [[noreturn]] void Fail(const std::string& where, const std::string& what) const {
        throw SettingsError(path_ + ": " + (where.empty() ? "the settings" : "\"" + where + "\"") +
                            " should be " + what);
    }

    std::string path_;
};

// The level a culture (or, for "", the tree) gives a kind, if any.
std::optional<Level> LevelOf(const CheckSettings& settings, const std::string& culture,
                             const std::string& kind) {
    if (!culture.empty()) {
        const auto own = settings.cultures.find(culture);
        if (own != settings.cultures.end()) {
            const auto level = own->second.severity.find(kind);
            if (level != own->second.severity.end()) {
                return level->second;
            }
        }
    }
    const auto level = settings.tree.severity.find(kind);
    return level != settings.tree.severity.end() ? std::optional<Level>(level->second)
                                                 : std::nullopt;
}

}  // namespace

bool CheckSettings::MayEqualReference(const std::string& culture,
                                      const std::u16string& lowerKey) const {
    if (tree.sameAsReference.count(lowerKey) != 0) {
        return true;
    }
    const auto own = cultures.find(culture);
    return own != cultures.end() && own->second.sameAsReference.count(lowerKey) != 0;
}

CheckSettings ReadCheckSettings(const std::string& root) {
    const std::string path = (std::filesystem::path(root) / kSettingsFileName).string();
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
        return CheckSettings();
    }
    const std::optional<std::string> text = ReadRegularFile(path);
    if (!text) {
        throw SettingsError(path + ": cannot be read");
    }
    const Json json = Json::parse(*text, nullptr, false);
    if (json.is_discarded()) {
        throw SettingsError(path + ": not valid JSON");
    }
    return Reader(path).Read(json);
}

std::vector<Finding> ApplySettings(std::vector<Finding> findings, const CheckSettings& settings) {
    std::vector<Finding> kept;
    for (Finding& finding : findings) {
        const std::string kind = InfoOf(finding.kind).id;
        const Severity own = finding.GetSeverity();
        const auto severityOf = [own](std::optional<Level> level) {
            return !level ? own : *level == Level::kError ? Severity::kError : Severity::kWarning;
        };
        if (finding.cultures.empty()) {
            const std::optional<Level> level = LevelOf(settings, "", kind);
            if (level == Level::kOff) {
                continue;
            }
            finding.severity = severityOf(level);
            kept.push_back(std::move(finding));
            continue;
        }
        std::vector<std::string> cultures;
        std::optional<Severity> severity;
        for (const std::string& culture : finding.cultures) {
            const std::optional<Level> level = LevelOf(settings, culture, kind);
            if (level == Level::kOff) {
                continue;
            }
            cultures.push_back(culture);
            if (!severity || severityOf(level) == Severity::kError) {
                severity = severityOf(level);
            }
        }
        if (cultures.empty()) {
            continue;
        }
        finding.cultures = std::move(cultures);
        finding.severity = severity;
        kept.push_back(std::move(finding));
    }
    return kept;
}

}  // namespace locmgr::analysis
