#pragma once

// A text as a translator sees it: literal text with placeholders for the parameters and the
// references it holds, and one whole sentence for each choice of plural forms, so that no
// translator ever sees half a sentence.

#include "StringLocalizing/Model/Value.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct Piece {
    enum class Kind { kText, kParameter, kReference };
    Kind kind = Kind::kText;
    std::u16string text;  // the literal text, the parameter's name or the (lower-cased) key
};

inline bool operator==(const Piece& left, const Piece& right) {
    return left.kind == right.kind && left.text == right.text;
}

// Adjacent texts are one piece.
using Sentence = std::vector<Piece>;

// One unit of a translation catalog: a text to translate, in every form the culture has.
struct CatalogUnit {
    std::u16string key;  // as the reference's file writes it
    // The parameters whose forms the key's units enumerate: the catalog's plural first.
    std::vector<std::u16string> discriminators;
    std::string context;             // the key, and the forms of further discriminators
    std::vector<std::string> notes;  // what the reference's file says of the text
    std::string file;                // where the reference defines the key
    std::uint32_t line = 0;
    Sentence source;
    bool plural = false;
    Sentence sourcePlural;  // plural units: the reference's sentence for a plural number
    // One sentence, or one per form of the culture's plural rule; none when the culture has
    // no text of its own.
    std::vector<Sentence> targets;
};

// The texts of one scope for one culture, in the order of the reference's file.
struct Catalog {
    std::string scope;
    std::string language;        // the culture, as an application names it
    std::string sourceLanguage;  // the reference's language; empty when not known
    // The culture's plural rule: its conditions in rule file syntax, the first that holds
    // giving the form.
    std::vector<std::string> pluralConditions;
    std::string description;  // where the texts come from
    std::vector<CatalogUnit> units;
};

// Catalogs are UTF-8, which has no way to carry a UTF-16 surrogate outside a pair (an escape
// in a localization file can write one).
class UnwritableText : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// `text` in UTF-8. Throws UnwritableText for a lone surrogate.
std::string CatalogText(const std::u16string& text);

// The discriminators of the plural invocations of `value`, nested ones included, each once,
// in the order they first appear.
std::vector<std::u16string> Discriminators(
    const LocalizationManager::StringLocalizing::Model::Value& value);

// `value` with each plural invocation replaced by the form `formOf` gives its discriminator
// (form 0 when it gives none; the last form when the invocation has fewer).
Sentence Evaluate(const LocalizationManager::StringLocalizing::Model::Value& value,
                  const std::map<std::u16string, std::size_t>& formOf);

}  // namespace locmgr::analysis
