#pragma once

#include "StringLocalizing/Model/CompactTexts.h"
#include "StringLocalizing/Model/ResourceDictionary.h"
#include "StringLocalizing/Parsing/SourceIndex.h"

#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {

// Parses the whole decoded text of one localization file into `dictionary`, entry by entry in
// file order. `fileName` is used only in error reports.
//
// Throws ParsingException for a syntax error (with the positioned report) or a duplicate key
// (with the duplicate-key message); other exceptions, such as std::bad_alloc, pass through.
// After a failure the dictionary keeps the entries added before the failing one.
void ParseLocFile(const std::u16string& text, const std::u16string& fileName,
                  Model::ResourceDictionary& dictionary);

// The same parse into the runtime's compact store, which it seals: the same entries, the same
// exceptions. The store is of no use after a failure.
void ParseLocFile(const std::u16string& text, const std::u16string& fileName,
                  Model::CompactTexts& texts);

// The same parse with line and column tracked at every step: same entries, same exceptions,
// same reports, several times slower. ParseLocFile runs it only to build the report of a
// syntax error; tests and the fuzzer hold the two against each other.
void ParseLocFileWithPositions(const std::u16string& text, const std::u16string& fileName,
                               Model::ResourceDictionary& dictionary);

// The position-tracking parse for tools: also records in `index` where every entry and each
// of its references, parameters and plural invocations stands, and collects every key defined
// again in index.duplicates instead of stopping at the first (the dictionary keeps each key's
// first definition). Throws ParsingException for a syntax error, with the same report as
// ParseLocFile; the index then holds the entries before the failing one.
void ParseLocFileIndexed(const std::u16string& text, const std::u16string& fileName,
                         Model::ResourceDictionary& dictionary, SourceIndex& index);

}  // namespace LocalizationManager::StringLocalizing::Parsing
