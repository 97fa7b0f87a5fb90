#pragma once

// Writing GNU gettext PO catalogs, in the format msgfmt and the translation tools read.
//
// Placeholders follow Python's brace format, which PO editors protect and "msgfmt -c" checks
// when a unit carries the flag python-brace-format (every unit written here does): a parameter
// $name is "{name}", a reference to the key name is "{key.name}", and literal braces are doubled.

#include "TranslationUnit.h"

#include <ostream>
#include <string>
#include <vector>

namespace locmgr::analysis {

// A sentence in brace format, UTF-8. Throws UnwritableText.
std::string BraceFormat(const Sentence& sentence);

// The sentence a brace-format text writes. Throws std::invalid_argument for a brace that is
// neither doubled nor part of a placeholder, an empty placeholder, or text that is not UTF-8.
Sentence ParseBraceFormat(const std::string& text);

// The Plural-Forms header of a rule whose conditions, in rule file syntax (which is C's), are
// `conditions`: the first condition that holds picks the form; a number none accepts takes the
// last form. "nplurals=1; plural=0;" for a rule without conditions.
std::string PluralFormsHeader(const std::vector<std::string>& conditions);

// Throws UnwritableText, having written part of the catalog.
void WritePo(std::ostream& out, const Catalog& catalog);

}  // namespace locmgr::analysis
