#pragma once

// Where the parts of a localization file stand in its text, as the parser met them, for tools
// that point at a place in a file. The runtime never builds one.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Parsing {

// A place in the text of a file.
struct SourcePoint {
    std::size_t offset = 0;  // UTF-16 units from the start of the text
    std::uint32_t line = 0;
    // As parse error reports count: a tab advances to the next of columns 1, 5, 9, ...
    std::uint32_t column = 0;
};

// From `begin` up to, not including, `end`.
struct SourceSpan {
    SourcePoint begin;
    SourcePoint end;
};

// A bare key in a value.
struct IndexedReference {
    std::u16string lowerKey;
    SourceSpan span;
    int pluralDepth = 0;  // how many plural invocations enclose it
};

// "$name" standing for an external parameter (not the discriminator of a plural invocation).
struct IndexedParameter {
    std::u16string name;  // without "$", case kept
    SourceSpan span;      // from the "$"
    int pluralDepth = 0;
};

// "{$name: form, form...}".
struct IndexedPlural {
    std::u16string parameter;  // the discriminator, without "$"
    SourceSpan span;           // from "{" to after "}"
    SourceSpan parameterSpan;  // "$name"
    std::vector<SourceSpan> forms;
    int pluralDepth = 0;  // how many plural invocations enclose this one
};

struct IndexedEntry {
    std::u16string key;       // as written
    std::u16string lowerKey;  // as the dictionary stores it
    SourceSpan keySpan;
    SourceSpan span;  // from the key to the end of the value
    // Each in text order; plural invocations in the order of their "{", which is the order
    // in which a walk of the parsed value meets them, outer before inner.
    std::vector<IndexedReference> references;
    std::vector<IndexedParameter> parameters;
    std::vector<IndexedPlural> plurals;
};

// A key defined again; the dictionary keeps the first definition.
struct DuplicateDefinition {
    std::u16string lowerKey;
    std::u16string writtenKey;  // as the second definition writes it
    SourceSpan firstKey;
    SourceSpan secondKey;
};

struct SourceIndex {
    std::vector<IndexedEntry> entries;  // in file order, second definitions included
    std::vector<DuplicateDefinition> duplicates;
    // Each comment, from its ";" to the end of its line (the line break left out), in file
    // order. Comments stand only between entries, so each belongs to no entry's span.
    std::vector<SourceSpan> comments;
};

}  // namespace LocalizationManager::StringLocalizing::Parsing
