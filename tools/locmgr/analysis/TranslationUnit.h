#pragma once

// A text as a translator sees it: literal text with placeholders for the parameters and the
// references it holds, and one whole sentence for each choice of plural forms, so that no
// translator ever sees half a sentence.

#include "StringLocalizing/Model/Value.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct Piece {
    enum class Kind { kText, kParameter, kReference };
    Kind kind = Kind::kText;
    std::u16string text;  // the literal text, the parameter's name or the (lower-cased) key
};

// Adjacent texts are one piece.
using Sentence = std::vector<Piece>;

// The discriminators of the plural invocations of `value`, nested ones included, each once,
// in the order they first appear.
std::vector<std::u16string> Discriminators(
    const LocalizationManager::StringLocalizing::Model::Value& value);

// `value` with each plural invocation replaced by the form `formOf` gives its discriminator
// (form 0 when it gives none; the last form when the invocation has fewer).
Sentence Evaluate(const LocalizationManager::StringLocalizing::Model::Value& value,
                  const std::map<std::u16string, std::size_t>& formOf);

}  // namespace locmgr::analysis
