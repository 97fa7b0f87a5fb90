#include "ExplainOutput.h"

#include "ulo/rtl/TextConversion.h"

#include <nlohmann/json.hpp>

namespace locmgr::analysis {

namespace {

using Json = nlohmann::ordered_json;

std::string Narrow(const std::u16string& text) {
    return ulo::WideToNarrowMessage(text);
}

std::string Numbers(const std::vector<std::int64_t>& numbers, bool more) {
    std::string text;
    for (const std::int64_t number : numbers) {
        text += (text.empty() ? "" : ", ") + std::to_string(number);
    }
    return text + (more ? ", ..." : "");
}

void WriteProbes(std::ostream& out, const std::vector<Probe>& probes, const std::u16string& read) {
    for (const Probe& probe : probes) {
        out << "  " << (probe.alternative ? "alt  " : "root ") << Narrow(probe.path)
            << (probe.path == read ? "  <- read"
                : probe.exists     ? "  (exists, not reached)"
                                   : "")
            << '\n';
    }
}

const char* KindName(ExplainedOperand::Kind kind) {
    switch (kind) {
        case ExplainedOperand::Kind::kText:
            return "text";
        case ExplainedOperand::Kind::kReference:
            return "reference";
        case ExplainedOperand::Kind::kParameter:
            return "parameter";
        case ExplainedOperand::Kind::kPlural:
            return "plural";
    }
    return "text";
}

Json ProbesJson(const std::vector<Probe>& probes) {
    Json list = Json::array();
    for (const Probe& probe : probes) {
        list.push_back(Json{{"path", Narrow(probe.path)},
                            {"alternative", probe.alternative},
                            {"folder", probe.folder},
                            {"exists", probe.exists}});
    }
    return list;
}

Json OrNull(const std::u16string& text) {
    return text.empty() ? Json(nullptr) : Json(Narrow(text));
}

}  // namespace

void WriteExplanationText(std::ostream& out, const Explanation& explanation) {
    out << "culture " << explanation.culture << ": language " << explanation.language << " ("
        << explanation.languageId << ")";
    if (!explanation.firstSubtag.empty()) {
        out << ", subtags \"" << explanation.firstSubtag << "\"";
        if (!explanation.secondSubtag.empty()) {
            out << " and \"" << explanation.secondSubtag << "\"";
        }
    }
    out << "\n\ncommon texts, tried in this order:\n";
    WriteProbes(out, explanation.commonProbes, explanation.commonFile);
    out << "scope file, tried in this order:\n";
    WriteProbes(out, explanation.scopeProbes, explanation.scopeFile);

    const RuleInForce& rule = explanation.rule;
    out << "\nplural rule " << rule.idText << ": " << rule.Source();
    if (rule.file.empty()) {
        out << " (no rule file:";
        for (const std::u16string& candidate : rule.candidates) {
            out << ' ' << Narrow(candidate);
        }
        out << ')';
    }
    out << '\n';
    if (rule.Usable()) {
        out << "  " << rule.FormCount() << (rule.FormCount() == 1 ? " form" : " forms") << '\n';
        for (std::size_t form = 0; form < explanation.samples.numbersOfForm.size(); ++form) {
            const auto& numbers = explanation.samples.numbersOfForm[form];
            out << "  form " << form << ": "
                << (numbers.empty() ? "no number tried selects it" : Numbers(numbers, true))
                << '\n';
            if (form < rule.conditions.size()) {
                out << "    when " << rule.conditions[form] << '\n';
            }
        }
        if (!explanation.samples.withoutForm.empty()) {
            out << "  no form: " << Numbers(explanation.samples.withoutForm, false) << '\n';
        }
    }

    out << "\nkey " << explanation.key;
    if (explanation.definedIn.empty()) {
        out << ": not defined\n";
    } else {
        out << ": " << Narrow(explanation.definedIn);
        if (explanation.position.line > 0) {
            out << ':' << explanation.position.line;
        }
        out << "\n  " << explanation.definition << '\n';
        out << (explanation.compiled ? "operands after expanding references:\n"
                                     : "operands (references could not be expanded):\n");
        std::size_t number = 1;
        for (const ExplainedOperand& operand : explanation.operands) {
            out << "  " << number++ << ". " << KindName(operand.kind) << ' ';
            if (operand.kind == ExplainedOperand::Kind::kText) {
                out << Json(operand.text).dump(-1, ' ', false, Json::error_handler_t::replace);
            } else if (operand.kind == ExplainedOperand::Kind::kReference) {
                out << operand.text;
            } else {
                out << '$' << operand.text;
            }
            if (operand.kind == ExplainedOperand::Kind::kPlural) {
                out << ", " << operand.forms.size() << " forms:";
                for (std::size_t form = 0; form < operand.forms.size(); ++form) {
                    out << "\n       form " << form << ": " << operand.forms[form];
                }
            }
            out << '\n';
        }
        out << "parameters asked of the application: ";
        if (explanation.parameters.empty()) {
            out << "none";
        }
        for (std::size_t index = 0; index < explanation.parameters.size(); ++index) {
            out << (index == 0 ? "" : ", ") << explanation.parameters[index];
        }
        out << '\n';
    }
    if (!explanation.problems.empty()) {
        out << "\nthe request fails:\n";
        for (const std::string& problem : explanation.problems) {
            out << "  " << problem << '\n';
        }
    }
}

void WriteExplanationJson(std::ostream& out, const Explanation& explanation) {
    Json operands = Json::array();
    for (const ExplainedOperand& operand : explanation.operands) {
        Json json{{"kind", KindName(operand.kind)}};
        json[operand.kind == ExplainedOperand::Kind::kText ? "text" : "name"] = operand.text;
        if (operand.kind == ExplainedOperand::Kind::kPlural) {
            json["forms"] = operand.forms;
        }
        operands.push_back(json);
    }
    const RuleInForce& rule = explanation.rule;
    Json forms = Json::array();
    for (std::size_t form = 0; form < explanation.samples.numbersOfForm.size(); ++form) {
        forms.push_back(
            Json{{"condition",
                  form < rule.conditions.size() ? Json(rule.conditions[form]) : Json(nullptr)},
                 {"sampleNumbers", explanation.samples.numbersOfForm[form]}});
    }
    std::vector<std::string> candidates;
    for (const std::u16string& candidate : rule.candidates) {
        candidates.push_back(Narrow(candidate));
    }
    const Json json{
        {"schemaVersion", 1},
        {"culture",
         {{"name", explanation.culture},
          {"language", explanation.language},
          {"languageId", explanation.languageId},
          {"firstSubtag", explanation.firstSubtag},
          {"secondSubtag", explanation.secondSubtag}}},
        {"commonCandidates", ProbesJson(explanation.commonProbes)},
        {"commonFile", OrNull(explanation.commonFile)},
        {"scopeCandidates", ProbesJson(explanation.scopeProbes)},
        {"scopeFile", OrNull(explanation.scopeFile)},
        {"pluralRule",
         {{"id", rule.idText},
          {"ruleFileCandidates", candidates},
          {"file", OrNull(rule.file)},
          {"formCount", rule.Usable() ? Json(rule.FormCount()) : Json(nullptr)},
          {"forms", forms},
          {"numbersWithoutForm", explanation.samples.withoutForm}}},
        {"key", explanation.key},
        {"definedIn", OrNull(explanation.definedIn)},
        {"line", explanation.position.line > 0 ? Json(explanation.position.line) : Json(nullptr)},
        {"definition",
         explanation.definition.empty() ? Json(nullptr) : Json(explanation.definition)},
        {"compiled", explanation.compiled},
        {"operands", operands},
        {"parameters", explanation.parameters},
        {"problems", explanation.problems},
    };
    out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace locmgr::analysis
