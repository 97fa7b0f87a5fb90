#pragma once

// Writing GNU gettext PO catalogs, in the format msgfmt and the translation tools read.
//
// Placeholders follow Python's brace format, which PO editors protect and "msgfmt -c" checks
// when a unit carries the flag python-brace-format (every unit written here does): a parameter
// $name is "{name}", a reference to the key name is "{key.name}", and literal braces are doubled.

#include "TranslationUnit.h"

#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace locmgr::analysis {

// Catalogs are UTF-8, which has no way to carry a UTF-16 surrogate outside a pair (an escape
// in a localization file can write one).
class UnwritableText : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// `text` in UTF-8. Throws UnwritableText for a lone surrogate.
std::string CatalogText(const std::u16string& text);

// A sentence in brace format, UTF-8.
std::string BraceFormat(const Sentence& sentence);

// The Plural-Forms header of a rule whose conditions, in rule file syntax (which is C's), are
// `conditions`: the first condition that holds picks the form; a number none accepts takes the
// last form. "nplurals=1; plural=0;" for a rule without conditions.
std::string PluralFormsHeader(const std::vector<std::string>& conditions);

struct PoUnit {
    std::vector<std::string> notes;    // "#." lines: what the reference's file says of the text
    std::string origin;                // "#:": file:line of the reference's text
    std::string context;               // msgctxt
    std::string source;                // msgid
    std::string sourcePlural;          // msgid_plural; empty for a unit without plural forms
    std::vector<std::string> targets;  // msgstr, or msgstr[0..]; empty strings when untranslated
};

struct PoHeader {
    std::string project;      // the scope
    std::string language;     // "ru", "sr-Latn"
    std::string pluralForms;  // see PluralFormsHeader
    std::vector<std::string> comments;
};

void WritePo(std::ostream& out, const PoHeader& header, const std::vector<PoUnit>& units);

}  // namespace locmgr::analysis
