#pragma once

// Writing XLIFF 1.2 catalogs, the version translation tools and platforms read.
//
// A unit is a trans-unit whose id and resname are the unit's context (the key). Parameters
// and references are <ph> elements holding the brace form of the PO catalogs ("{name}",
// "{key.name}"), which tools show as protected placeholders. A plural unit is a group of
// restype "x-gettext-plurals" with a trans-unit per form of the culture, the first with the
// singular source and the others with the plural one, as tools that convert between PO and
// XLIFF lay them out. A translated unit is approved; an untranslated one has an empty target in
// state "needs-translation".

#include "TranslationUnit.h"

#include <string>

namespace locmgr::analysis {

// The catalog as an XML document, UTF-8. Throws UnwritableText, and std::runtime_error when
// the XML writer fails.
std::string XliffDocument(const Catalog& catalog);

}  // namespace locmgr::analysis
