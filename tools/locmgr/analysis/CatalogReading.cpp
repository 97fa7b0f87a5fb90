#include "CatalogReading.h"

#include <algorithm>
#include <cctype>
#include <csetjmp>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <gettext-po.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>

// libgettextpo keeps a few small allocations for the life of the process (its charset names),
// which the leak checker of sanitized builds would report at every exit.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libgettextpo\n";
}

namespace locmgr::analysis {

namespace {

// --- PO, through libgettextpo ---------------------------------------------------------------

// The reader's first error. The library calls its error handler from C code and requires the
// handler not to return from a fatal error, so the handler leaves by longjmp to ReadPoFile,
// and nothing with a destructor lives in the frames it skips.
struct PoErrors {
    std::string first;
    std::jmp_buf fatal;
};
thread_local PoErrors* currentErrors = nullptr;

void RecordPoError(const char* file, std::size_t line, const char* text) {
    if (!currentErrors->first.empty()) {
        return;
    }
    std::string& first = currentErrors->first;
    if (file != nullptr) {
        first = file;
        if (line != static_cast<std::size_t>(-1)) {
            first += ":" + std::to_string(line);
        }
        first += ": ";
    }
    first += text != nullptr ? text : "unreadable catalog";
}

void OnPoError(int severity, po_message_t, const char* file, std::size_t line, std::size_t, int,
               const char* text) {
    if (severity >= PO_SEVERITY_ERROR) {
        RecordPoError(file, line, text);
    }
    if (severity == PO_SEVERITY_FATAL_ERROR) {
        std::longjmp(currentErrors->fatal, 1);
    }
}

void OnPoError2(int severity, po_message_t message, const char* file, std::size_t line,
                std::size_t column, int multiline, const char* text, po_message_t, const char*,
                std::size_t, std::size_t, int, const char*) {
    OnPoError(severity, message, file, line, column, multiline, text);
}

po_file_t ReadPoFile(const char* path, PoErrors& errors) {
    static const po_xerror_handler handler{&OnPoError, &OnPoError2};
    currentErrors = &errors;
    if (setjmp(errors.fatal) != 0) {
        return nullptr;
    }
    return po_file_read(path, &handler);
}

// A header field, or empty.
std::string HeaderField(po_file_t file, const char* name) {
    const char* header = po_file_domain_header(file, nullptr);
    if (header == nullptr) {
        return std::string();
    }
    std::unique_ptr<char, decltype(&std::free)> value(po_header_field(header, name), &std::free);
    return value ? std::string(value.get()) : std::string();
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return text;
}

ImportedCatalog ReadPo(const std::string& path) {
    PoErrors errors;
    po_file_t read = ReadPoFile(path.c_str(), errors);
    currentErrors = nullptr;
    std::unique_ptr<std::remove_pointer_t<po_file_t>, decltype(&po_file_free)> file(read,
                                                                                    &po_file_free);
    if (!file || !errors.first.empty()) {
        throw CatalogReadError(errors.first.empty() ? path + ": cannot be read" : errors.first);
    }
    const std::string contentType = Lower(HeaderField(file.get(), "Content-Type"));
    const std::size_t charset = contentType.find("charset=");
    if (charset != std::string::npos && contentType.compare(charset + 8, 5, "utf-8") != 0) {
        throw CatalogReadError(path + ": the catalog is in " + contentType.substr(charset + 8) +
                               "; only UTF-8 catalogs are read");
    }
    ImportedCatalog catalog;
    catalog.path = path;
    catalog.scope = HeaderField(file.get(), "Project-Id-Version");
    std::unique_ptr<std::remove_pointer_t<po_message_iterator_t>,
                    decltype(&po_message_iterator_free)>
        messages(po_message_iterator(file.get(), nullptr), &po_message_iterator_free);
    while (po_message_t message = po_next_message(messages.get())) {
        const char* context = po_message_msgctxt(message);
        if (po_message_is_obsolete(message) ||
            (context == nullptr && *po_message_msgid(message) == 0)) {
            continue;
        }
        ImportedUnit unit;
        unit.context = context != nullptr ? context : po_message_msgid(message);
        if (po_message_msgid_plural(message) != nullptr) {
            for (int form = 0; const char* text = po_message_msgstr_plural(message, form); ++form) {
                unit.targets.emplace_back(text);
            }
        } else {
            unit.targets.emplace_back(po_message_msgstr(message));
        }
        unit.translated = !po_message_is_fuzzy(message) &&
                          std::any_of(unit.targets.begin(), unit.targets.end(),
                                      [](const std::string& target) { return !target.empty(); });
        catalog.units.push_back(std::move(unit));
    }
    return catalog;
}

// --- XLIFF, through libxml2 -----------------------------------------------------------------

std::string Attribute(const xmlNode* node, const char* name) {
    std::unique_ptr<xmlChar, void (*)(void*)> value(
        xmlGetProp(node, reinterpret_cast<const xmlChar*>(name)), xmlFree);
    return value ? std::string(reinterpret_cast<const char*>(value.get())) : std::string();
}

bool Is(const xmlNode* node, const char* name) {
    return node->type == XML_ELEMENT_NODE &&
           std::strcmp(reinterpret_cast<const char*>(node->name), name) == 0;
}

// The text of a <target> in brace format: its text, and each placeholder as the text it holds
// (its brace form as exported), or as "{id}" when a tool emptied it. Inline markup that wraps text
// (<g>, <mrk>) gives its text.
void AppendContent(const xmlNode* node, bool inPlaceholder, std::string& text) {
    for (const xmlNode* child = node->children; child != nullptr; child = child->next) {
        if (child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE) {
            // Text is literal in XLIFF: its braces are doubled to read as brace format; a
            // placeholder holds its brace form.
            for (const char* character = reinterpret_cast<const char*>(child->content);
                 *character != 0; ++character) {
                text += *character;
                if (!inPlaceholder && (*character == '{' || *character == '}')) {
                    text += *character;
                }
            }
        } else if (Is(child, "ph") || Is(child, "x")) {
            std::string placeholder;
            AppendContent(child, true, placeholder);
            text += placeholder.empty() ? "{" + Attribute(child, "id") + "}" : placeholder;
        } else if (child->type == XML_ELEMENT_NODE) {
            AppendContent(child, inPlaceholder, text);
        }
    }
}

// A trans-unit's target, and whether it is a translation to take.
std::pair<std::string, bool> TargetOf(const xmlNode* transUnit) {
    for (const xmlNode* child = transUnit->children; child != nullptr; child = child->next) {
        if (Is(child, "target")) {
            std::string text;
            AppendContent(child, false, text);
            const std::string state = Attribute(child, "state");
            // An empty target is untranslated, as an empty msgstr is in PO.
            return {text, !text.empty() && state != "new" && state != "needs-translation"};
        }
    }
    return {std::string(), false};
}

std::string NameOf(const xmlNode* node) {
    const std::string resname = Attribute(node, "resname");
    return resname.empty() ? Attribute(node, "id") : resname;
}

void CollectUnits(const xmlNode* parent, ImportedCatalog& catalog) {
    for (const xmlNode* node = parent->children; node != nullptr; node = node->next) {
        if (Is(node, "group") && Attribute(node, "restype") == "x-gettext-plurals") {
            ImportedUnit unit;
            unit.context = NameOf(node);
            unit.translated = true;
            bool anyText = false;
            for (const xmlNode* form = node->children; form != nullptr; form = form->next) {
                if (Is(form, "trans-unit")) {
                    auto [text, translated] = TargetOf(form);
                    unit.translated = unit.translated && translated;
                    anyText = anyText || !text.empty();
                    unit.targets.push_back(std::move(text));
                }
            }
            unit.translated = unit.translated && anyText && !unit.targets.empty();
            catalog.units.push_back(std::move(unit));
        } else if (Is(node, "trans-unit")) {
            auto [text, translated] = TargetOf(node);
            catalog.units.push_back({NameOf(node), {std::move(text)}, translated});
        } else if (node->type == XML_ELEMENT_NODE) {
            CollectUnits(node, catalog);
        }
    }
}

ImportedCatalog ReadXliff(const std::string& path) {
    // No network, no external entities: a catalog is data, never a pointer to other files.
    std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlReadFile(path.c_str(), nullptr,
                    XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
        &xmlFreeDoc);
    if (!document) {
        const xmlError* error = xmlGetLastError();
        throw CatalogReadError(
            path + ": not well-formed XML" +
            (error != nullptr && error->message != nullptr
                 ? " (line " + std::to_string(error->line) + ": " +
                       std::string(error->message, strcspn(error->message, "\n")) + ")"
                 : std::string()));
    }
    const xmlNode* root = xmlDocGetRootElement(document.get());
    if (root == nullptr || !Is(root, "xliff")) {
        throw CatalogReadError(path + ": not an XLIFF document");
    }
    ImportedCatalog catalog;
    catalog.path = path;
    for (const xmlNode* file = root->children; file != nullptr; file = file->next) {
        if (Is(file, "file")) {
            if (!catalog.scope.empty()) {
                throw CatalogReadError(path +
                                       ": holds more than one <file>; export writes one per scope");
            }
            catalog.scope = Attribute(file, "original");
            CollectUnits(file, catalog);
        }
    }
    return catalog;
}

}  // namespace

ImportedCatalog ReadCatalog(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw CatalogReadError(path + ": cannot be opened");
    }
    std::string start(512, '\0');
    file.read(start.data(), static_cast<std::streamsize>(start.size()));
    start.resize(static_cast<std::size_t>(file.gcount()));
    return start.find("<xliff") != std::string::npos || start.find("<?xml") != std::string::npos
               ? ReadXliff(path)
               : ReadPo(path);
}

}  // namespace locmgr::analysis
