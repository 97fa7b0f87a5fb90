#include "PoCatalog.h"

#include "ulo/rtl/TextConversion.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

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

Sentence ParseBraceFormat(const std::string& text) {
    std::u16string wide;
    try {
        wide = ulo::Utf8ToWide(text);
    } catch (const std::out_of_range&) {
        throw std::invalid_argument("the text is not UTF-8");
    }
    Sentence sentence;
    std::u16string literal;
    const auto flush = [&] {
        if (!literal.empty()) {
            sentence.push_back({Piece::Kind::kText, literal});
            literal.clear();
        }
    };
    constexpr std::u16string_view kKeyPrefix = u"key.";
    for (std::size_t position = 0; position < wide.size(); ++position) {
        const char16_t character = wide[position];
        if (character == u'}') {
            if (position + 1 < wide.size() && wide[position + 1] == u'}') {
                literal += u'}';
                ++position;
                continue;
            }
            throw std::invalid_argument(
                "a '}' that closes no placeholder (write '}}' for a brace)");
        }
        if (character != u'{') {
            literal += character;
            continue;
        }
        if (position + 1 < wide.size() && wide[position + 1] == u'{') {
            literal += u'{';
            ++position;
            continue;
        }
        const std::size_t end = wide.find_first_of(u"{}", position + 1);
        if (end == std::u16string::npos || wide[end] != u'}') {
            throw std::invalid_argument("a '{' that opens no placeholder (write '{{' for a brace)");
        }
        std::u16string name = wide.substr(position + 1, end - position - 1);
        const bool reference = name.compare(0, kKeyPrefix.size(), kKeyPrefix) == 0;
        if (reference) {
            name.erase(0, kKeyPrefix.size());
        }
        if (name.empty()) {
            throw std::invalid_argument("an empty placeholder");
        }
        flush();
        sentence.push_back({reference ? Piece::Kind::kReference : Piece::Kind::kParameter, name});
        position = end;
    }
    flush();
    return sentence;
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
