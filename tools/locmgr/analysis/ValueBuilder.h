#pragma once

// The inverse of a catalog's sentences: the value of a key rebuilt from the whole sentence a
// translator wrote for every choice of plural forms, with the text that all forms of an
// invocation share moved out of it, so that "{count} файл в ..." and "{count} файла в ..."
// become $count + ' ' + {$count: 'файл', 'файла', ...} + ' в ...'. Only whole words and
// placeholders move out: a translator reading the file sees words, not their fragments.

#include "StringLocalizing/Model/Value.h"
#include "TranslationUnit.h"

#include <cstddef>
#include <string>
#include <vector>

namespace locmgr::analysis {

struct SentenceTable {
    // The catalog's plural first, then the parameters whose forms the units enumerate; empty
    // for a text without plural forms.
    std::vector<std::u16string> discriminators;
    std::size_t forms = 1;  // of the culture's plural rule
    // For each choice of forms, as the catalog's units list them: the first discriminator's
    // form counts fastest, then the last one's, and the second one's slowest (a text without
    // plural forms has one sentence).
    std::vector<Sentence> sentences;
};

// The value that gives `table.sentences[index]` for each choice of forms. Throws
// std::invalid_argument when the table does not hold a sentence for every choice.
LocalizationManager::StringLocalizing::Model::Value BuildValue(const SentenceTable& table);

// The sentence's pieces as operands; an empty sentence is one empty text.
LocalizationManager::StringLocalizing::Model::Value ValueOf(const Sentence& sentence);

}  // namespace locmgr::analysis
