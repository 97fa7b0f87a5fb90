#include "PoCatalog.h"

#include "ulo/rtl/TextConversion.h"

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

std::string CatalogText(const std::u16string& text) {
    try {
        return ulo::WideToUtf8(text);
    } catch (const std::out_of_range&) {
        throw UnwritableText(
            "a text holds a UTF-16 surrogate outside a pair, which UTF-8 "
            "cannot carry");
    }
}

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

void WritePo(std::ostream& out, const PoHeader& header, const std::vector<PoUnit>& units) {
    for (const std::string& comment : header.comments) {
        out << "# " << comment << '\n';
    }
    Field(out, "msgid", "");
    out << "msgstr \"\"\n";
    for (const std::string& line :
         {"Project-Id-Version: " + header.project, std::string("PO-Revision-Date: "),
          std::string("Last-Translator: "), std::string("Language-Team: "),
          std::string("MIME-Version: 1.0"), std::string("Content-Type: text/plain; charset=UTF-8"),
          std::string("Content-Transfer-Encoding: 8bit"), "Language: " + header.language,
          "Plural-Forms: " + header.pluralForms}) {
        out << Quoted(line + "\n") << '\n';
    }
    for (const PoUnit& unit : units) {
        out << '\n';
        for (const std::string& note : unit.notes) {
            out << "#. " << note << '\n';
        }
        if (!unit.origin.empty()) {
            out << "#: " << unit.origin << '\n';
        }
        out << "#, python-brace-format\n";
        Field(out, "msgctxt", unit.context);
        Field(out, "msgid", unit.source);
        if (unit.sourcePlural.empty()) {
            Field(out, "msgstr", unit.targets.empty() ? std::string() : unit.targets.front());
            continue;
        }
        Field(out, "msgid_plural", unit.sourcePlural);
        for (std::size_t form = 0; form < unit.targets.size(); ++form) {
            Field(out, ("msgstr[" + std::to_string(form) + "]").c_str(), unit.targets[form]);
        }
    }
}

}  // namespace locmgr::analysis
