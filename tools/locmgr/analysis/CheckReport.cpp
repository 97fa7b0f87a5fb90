#include "CheckReport.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace locmgr::analysis {

namespace {

using Json = nlohmann::ordered_json;

constexpr char kSarifSchema[] =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";

// Invalid UTF-8 (from a file name) must not end the output: it becomes U+FFFD.
std::string Dump(const Json& json, int indent) {
    return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

Json OrNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

std::string Plural(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string Joined(const std::vector<std::string>& items) {
    std::string joined;
    for (const std::string& item : items) {
        joined += (joined.empty() ? "" : ", ") + item;
    }
    return joined;
}

// A relative path stays a relative reference; an absolute one becomes a file URI.
std::string UriOf(const std::string& path) {
    std::string uri = !path.empty() && path.front() == '/' ? "file://" : "";
    for (const unsigned char character : path) {
        if (std::isalnum(character) ||
            std::string("-._~/!$&'()*+,;=:@").find(character) != std::string::npos) {
            uri += static_cast<char>(character);
        } else {
            char escaped[4];
            std::snprintf(escaped, sizeof escaped, "%%%02X", character);
            uri += escaped;
        }
    }
    return uri;
}

// "plural-form-count" -> "PluralFormCount".
std::string RuleName(const std::string& id) {
    std::string name;
    bool upper = true;
    for (const char character : id) {
        if (character == '-') {
            upper = true;
            continue;
        }
        name += upper ? static_cast<char>(std::toupper(static_cast<unsigned char>(character)))
                      : character;
        upper = false;
    }
    return name;
}

// Rounded down, so that only a complete culture shows 100%.
std::string Percent(std::size_t part, std::size_t whole) {
    return whole == 0 ? std::string("-") : std::to_string(part * 100 / whole) + "%";
}

Json CompletionJson(const std::vector<CultureCompletion>& completion) {
    Json cultures = Json::array();
    for (const CultureCompletion& culture : completion) {
        Json scopes = Json::array();
        for (const ScopeCompletion& scope : culture.scopes) {
            scopes.push_back(Json{
                {"scope", scope.scope}, {"translated", scope.translated}, {"keys", scope.total}});
        }
        cultures.push_back(Json{{"culture", culture.culture},
                                {"translated", culture.translated},
                                {"keys", culture.total},
                                {"scopes", scopes}});
    }
    return cultures;
}

}  // namespace

void WriteTextReport(std::ostream& out, const CheckResult& result) {
    for (const Finding& finding : result.findings) {
        out << finding.file;
        if (finding.line > 0) {
            out << ':' << finding.line << ':' << finding.column;
        }
        out << ": " << SeverityName(finding.GetSeverity()) << ": " << finding.message << " ["
            << InfoOf(finding.kind).id << "]\n";
        if (!finding.cultures.empty()) {
            out << "    cultures: " << Joined(finding.cultures) << '\n';
        }
        if (!finding.report.empty()) {
            std::size_t start = 0;
            while (start < finding.report.size()) {
                const std::size_t end = finding.report.find('\n', start);
                out << "    " << finding.report.substr(start, end - start) << '\n';
                if (end == std::string::npos) {
                    break;
                }
                start = end + 1;
            }
        }
    }
    if (!result.completion.empty()) {
        out << "completion against " << result.reference << ":";
        for (const CultureCompletion& culture : result.completion) {
            out << (&culture == &result.completion.front() ? " " : ", ") << culture.culture << ' '
                << Percent(culture.translated, culture.total) << " (" << culture.translated
                << " of " << culture.total << ")";
        }
        out << '\n';
    }
    if (result.baselined > 0) {
        out << Plural(result.baselined, "finding", "findings")
            << " accepted by the baseline not shown\n";
    }
    out << Plural(result.errors, "error", "errors") << ", "
        << Plural(result.warnings, "warning", "warnings") << " in "
        << Plural(result.textFiles, "text file", "text files") << " and "
        << Plural(result.ruleFiles, "rule file", "rule files") << "; cultures: "
        << (result.cultures.empty() ? std::string("none") : Joined(result.cultures)) << '\n';
}

void WriteJsonReport(std::ostream& out, const CheckResult& result, const ReportContext& context) {
    Json findings = Json::array();
    for (const Finding& finding : result.findings) {
        findings.push_back(Json{
            {"severity", SeverityName(finding.GetSeverity())},
            {"kind", InfoOf(finding.kind).id},
            {"file", finding.file},
            {"line", finding.line > 0 ? Json(finding.line) : Json(nullptr)},
            {"column", finding.line > 0 ? Json(finding.column) : Json(nullptr)},
            {"scope", OrNull(finding.scope)},
            {"key", OrNull(finding.key)},
            {"message", finding.message},
            {"report", OrNull(finding.report)},
            {"cultures", finding.cultures},
        });
    }
    const Json report{
        {"schemaVersion", kJsonSchemaVersion},
        {"root", context.root},
        {"alternative", OrNull(context.alternative)},
        {"cultures", result.cultures},
        {"summary",
         {{"errors", result.errors},
          {"warnings", result.warnings},
          {"textFiles", result.textFiles},
          {"ruleFiles", result.ruleFiles},
          {"baselined", result.baselined}}},
        {"reference", result.reference},
        {"completion", CompletionJson(result.completion)},
        {"findings", findings},
    };
    out << Dump(report, 2) << '\n';
}

void WriteSarifReport(std::ostream& out, const CheckResult& result, const ReportContext&) {
    Json rules = Json::array();
    for (const KindInfo& kind : FindingKinds()) {
        rules.push_back(Json{
            {"id", kind.id},
            {"name", RuleName(kind.id)},
            {"shortDescription", {{"text", kind.title}}},
            {"fullDescription", {{"text", kind.description}}},
            {"defaultConfiguration", {{"level", SeverityName(kind.severity)}}},
        });
    }
    Json results = Json::array();
    for (const Finding& finding : result.findings) {
        Json physical{{"artifactLocation", {{"uri", UriOf(finding.file)}}}};
        if (finding.line > 0) {
            physical["region"] =
                Json{{"startLine", finding.line}, {"startColumn", std::max(1, finding.unitColumn)}};
        }
        std::string text = finding.message;
        if (!finding.cultures.empty()) {
            text += " (cultures: " + Joined(finding.cultures) + ")";
        }
        if (!finding.report.empty()) {
            text += "\n" + finding.report;
        }
        Json properties{{"cultures", finding.cultures}};
        if (!finding.scope.empty()) {
            properties["scope"] = finding.scope;
        }
        if (!finding.key.empty()) {
            properties["key"] = finding.key;
        }
        results.push_back(Json{
            {"ruleId", InfoOf(finding.kind).id},
            {"ruleIndex", static_cast<int>(finding.kind)},
            {"level", SeverityName(finding.GetSeverity())},
            {"message", {{"text", text}}},
            {"locations", Json::array({Json{{"physicalLocation", physical}}})},
            {"properties", properties},
        });
    }
    const Json log{
        {"$schema", kSarifSchema},
        {"version", "2.1.0"},
        {"runs", Json::array({Json{
                     {"tool", {{"driver", {{"name", "locmgr"}, {"rules", rules}}}}},
                     {"columnKind", "utf16CodeUnits"},
                     {"results", results},
                 }})},
    };
    out << Dump(log, 2) << '\n';
}

}  // namespace locmgr::analysis
