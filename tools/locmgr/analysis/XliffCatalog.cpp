#include "XliffCatalog.h"

#include "PoCatalog.h"

#include <algorithm>
#include <libxml/xmlwriter.h>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace locmgr::analysis {

namespace {

const auto* Xml(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

// libxml2's text writer, with every call checked: a failed call means the writer ran out of
// memory or was used out of order, and the document would be broken. Elements that hold
// other elements go on lines of their own, indented; libxml2's own indenting is not used, as
// it would also put blanks inside the texts of elements that hold text and placeholders.
class XmlWriter {
  public:
    XmlWriter() : buffer_(xmlBufferCreate(), &xmlBufferFree) {
        if (!buffer_) {
            throw std::bad_alloc();
        }
        writer_.reset(xmlNewTextWriterMemory(buffer_.get(), 0));
        if (!writer_) {
            throw std::bad_alloc();
        }
        Check(xmlTextWriterStartDocument(writer_.get(), nullptr, "UTF-8", nullptr));
    }

    // An element on a line of its own.
    void Open(const char* element) {
        NewLine();
        Start(element);
        ++depth_;
    }
    void Close() {
        --depth_;
        // Within the element being closed, so even the document's element may take it.
        Text("\n" + std::string(2 * depth_, ' '));
        End();
    }
    // An element on a line of its own that holds text, and elements within it.
    void StartLine(const char* element) {
        NewLine();
        Start(element);
    }
    // An element within a line, such as a placeholder in a text.
    void Start(const char* element) {
        Check(xmlTextWriterStartElement(writer_.get(), Xml(element)));
    }
    void End() { Check(xmlTextWriterEndElement(writer_.get())); }
    void Attribute(const char* name, const std::string& value) {
        Check(xmlTextWriterWriteAttribute(writer_.get(), Xml(name), Xml(value.c_str())));
    }
    void Text(const std::string& text) {
        Check(xmlTextWriterWriteString(writer_.get(), Xml(text.c_str())));
    }
    // An element on a line of its own that holds only `text`.
    void Line(const char* element,
              const std::vector<std::pair<const char*, std::string>>& attributes,
              const std::string& text) {
        StartLine(element);
        for (const auto& [name, value] : attributes) {
            Attribute(name, value);
        }
        Text(text);
        End();
    }

    std::string Finish() {
        Check(xmlTextWriterEndDocument(writer_.get()));
        writer_.reset();
        return std::string(reinterpret_cast<const char*>(xmlBufferContent(buffer_.get())),
                           static_cast<std::size_t>(xmlBufferLength(buffer_.get())));
    }

  private:
    static void Check(int result) {
        if (result < 0) {
            throw std::runtime_error("the XML writer failed");
        }
    }

    // Nothing may stand outside the document's element, blanks included.
    void NewLine() {
        if (depth_ > 0) {
            Text("\n" + std::string(2 * depth_, ' '));
        }
    }

    std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> buffer_;
    std::unique_ptr<xmlTextWriter, decltype(&xmlFreeTextWriter)> writer_{nullptr,
                                                                         &xmlFreeTextWriter};
    std::size_t depth_ = 0;
};

// A sentence as the content of <source> or <target>: text, and a <ph> per placeholder.
void WriteSentence(XmlWriter& xml, const char* element, const Sentence& sentence,
                   const char* state) {
    xml.StartLine(element);
    if (state != nullptr) {
        xml.Attribute("state", state);
    }
    for (const Piece& piece : sentence) {
        if (piece.kind == Piece::Kind::kText) {
            xml.Text(CatalogText(piece.text));
            continue;
        }
        // The brace form, so that a tool that flattens placeholders to text sees what the PO
        // catalog has.
        const std::string placeholder = BraceFormat({piece});
        xml.Start("ph");
        xml.Attribute("id", placeholder.substr(1, placeholder.size() - 2));
        xml.Attribute("ctype", piece.kind == Piece::Kind::kParameter ? "x-parameter" : "x-key");
        xml.Text(placeholder);
        xml.End();
    }
    xml.End();
}

void WriteUnitInfo(XmlWriter& xml, const CatalogUnit& unit) {
    xml.Open("context-group");
    xml.Attribute("purpose", "location");
    xml.Line("context", {{"context-type", "sourcefile"}}, unit.file);
    xml.Line("context", {{"context-type", "linenumber"}}, std::to_string(unit.line));
    xml.Close();
    for (const std::string& note : unit.notes) {
        xml.Line("note", {{"from", "developer"}}, note);
    }
}

void WriteTransUnit(XmlWriter& xml, const std::string& id, const Sentence& source,
                    const Sentence* target) {
    xml.Open("trans-unit");
    xml.Attribute("id", id);
    xml.Attribute("resname", id);
    // The culture's own text is the one it ships, so tools count it translated, not to review.
    if (target != nullptr) {
        xml.Attribute("approved", "yes");
    }
    xml.Attribute("xml:space", "preserve");
    WriteSentence(xml, "source", source, nullptr);
    WriteSentence(xml, "target", target != nullptr ? *target : Sentence(),
                  target != nullptr ? "translated" : "needs-translation");
}

void WriteUnit(XmlWriter& xml, const CatalogUnit& unit, std::size_t forms) {
    const auto target = [&unit](std::size_t form) {
        return form < unit.targets.size() ? &unit.targets[form] : nullptr;
    };
    if (!unit.plural) {
        WriteTransUnit(xml, unit.context, unit.source, target(0));
        WriteUnitInfo(xml, unit);
        xml.Close();
        return;
    }
    xml.Open("group");
    xml.Attribute("id", unit.context);
    xml.Attribute("resname", unit.context);
    xml.Attribute("restype", "x-gettext-plurals");
    WriteUnitInfo(xml, unit);
    for (std::size_t form = 0; form < forms; ++form) {
        WriteTransUnit(xml, unit.context + "[" + std::to_string(form) + "]",
                       form == 0 ? unit.source : unit.sourcePlural, target(form));
        xml.Close();
    }
    xml.Close();
}

}  // namespace

std::string XliffDocument(const Catalog& catalog) {
    XmlWriter xml;
    xml.Open("xliff");
    xml.Attribute("version", "1.2");
    xml.Attribute("xmlns", "urn:oasis:names:tc:xliff:document:1.2");
    xml.Open("file");
    xml.Attribute("original", catalog.scope);
    xml.Attribute("datatype", "plaintext");
    // "und" is the language tag for texts of no stated language.
    xml.Attribute("source-language",
                  catalog.sourceLanguage.empty() ? "und" : catalog.sourceLanguage);
    xml.Attribute("target-language", catalog.language);
    xml.Open("header");
    xml.Line("note", {}, catalog.description);
    xml.Close();
    xml.Open("body");
    const std::size_t forms = std::max<std::size_t>(catalog.pluralConditions.size(), 1);
    for (const CatalogUnit& unit : catalog.units) {
        WriteUnit(xml, unit, forms);
    }
    xml.Close();
    xml.Close();
    xml.Close();
    return xml.Finish();
}

}  // namespace locmgr::analysis
