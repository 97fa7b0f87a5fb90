#include "PoCatalog.h"

#include <algorithm>

namespace locmgr::analysis {

namespace {

// A PO string literal: quoted, with the escapes the format defines.
std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char character : text) {
        switch (character) {
            case '"':
                quoted += "\\\"";
                break;
            case '\\':
                quoted += "\\\\";
                break;
            case '\n':
                quoted += "\\n";
                break;
            case '\r':
                quoted += "\\r";
                break;
            case '\t':
                quoted += "\\t";
                break;
            default:
                quoted += character;
        }
    }
    return quoted + "\"";
}

void Field(std::ostream& out, const char* name, const std::string& text) {
    out << name << ' ' << Quoted(text) << '\n';
}

}  // namespace

std::string BraceFormat(const Sentence& sentence) {
    std::string text;
    for (const Piece& piece : sentence) {
        const std::string utf8 = CatalogText(piece.text);
        switch (piece.kind) {
            case Piece::Kind::kText:
                for (const char character : utf8) {
                    text += character;
                    if (character == '{' || character == '}') {
                        text += character;
                    }
                }
                break;
            case Piece::Kind::kParameter:
                text += "{" + utf8 + "}";
                break;
            case Piece::Kind::kReference:
                text += "{key." + utf8 + "}";
                break;
        }
    }
    return text;
}

std::string PluralFormsHeader(const std::vector<std::string>& conditions) {
    if (conditions.size() <= 1) {
        return "nplurals=1; plural=0;";
    }
    std::string plural;
    for (std::size_t form = 0; form + 1 < conditions.size(); ++form) {
        plural += "(" + conditions[form] + ") ? " + std::to_string(form) + " : ";
    }
    plural += std::to_string(conditions.size() - 1);
    return "nplurals=" + std::to_string(conditions.size()) + "; plural=" + plural + ";";
}

void WritePo(std::ostream& out, const Catalog& catalog) {
    out << "# " << catalog.description << '\n';
    Field(out, "msgid", "");
    out << "msgstr \"\"\n";
    for (const std::string& line :
         {"Project-Id-Version: " + catalog.scope, std::string("PO-Revision-Date: "),
          std::string("Last-Translator: "), std::string("Language-Team: "),
          std::string("MIME-Version: 1.0"), std::string("Content-Type: text/plain; charset=UTF-8"),
          std::string("Content-Transfer-Encoding: 8bit"), "Language: " + catalog.language,
          "Plural-Forms: " + PluralFormsHeader(catalog.pluralConditions)}) {
        out << Quoted(line + "\n") << '\n';
    }
    for (const CatalogUnit& unit : catalog.units) {
        out << '\n';
        for (const std::string& note : unit.notes) {
            out << "#. " << note << '\n';
        }
        out << "#: " << unit.file << ':' << unit.line << '\n';
        out << "#, python-brace-format\n";
        Field(out, "msgctxt", unit.context);
        Field(out, "msgid", BraceFormat(unit.source));
        // An untranslated unit has empty translations, as PO tools expect.
        const auto target = [&unit](std::size_t form) {
            return form < unit.targets.size() ? BraceFormat(unit.targets[form]) : std::string();
        };
        if (!unit.plural) {
            Field(out, "msgstr", target(0));
            continue;
        }
        Field(out, "msgid_plural", BraceFormat(unit.sourcePlural));
        const std::size_t forms = std::max<std::size_t>(catalog.pluralConditions.size(), 1);
        for (std::size_t form = 0; form < forms; ++form) {
            Field(out, ("msgstr[" + std::to_string(form) + "]").c_str(), target(form));
        }
    }
}

}  // namespace locmgr::analysis
