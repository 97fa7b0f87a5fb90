#pragma once

// Where the parts of a localization file stand in its text. The engine's dictionary keeps no
// positions, so the checks find them here: a single pass over the text that knows only what it
// needs to tell keys, references, parameters and plural invocations apart (strings with their
// escapes, comments). It accepts nothing and rejects nothing; whether a file is valid is the
// engine parser's decision alone, and the map is read only for files that parser has read.

#include "TextPosition.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace locmgr::analysis {

// Offsets and indexes are 32-bit: a file has millions of entries at most (the file layer
// reads no text of 2 GiB or more), and they are the bulk of a large file's map.
struct SourceEntry {
    std::u16string key;        // as written
    std::u16string lowerKey;   // as the dictionary stores it
    std::uint32_t offset = 0;  // of the key
    std::uint32_t end = 0;     // where the next entry begins, or the end of the text
    TextPosition position;
    // The parts of this entry's value: index ranges into the map's lists.
    std::uint32_t firstReference = 0, endReference = 0;
    std::uint32_t firstParameter = 0, endParameter = 0;
    std::uint32_t firstPlural = 0, endPlural = 0;
};

// A bare key inside an entry's value.
struct SourceReference {
    std::u16string lowerKey;
    std::size_t entry = 0;  // index into SourceMap::Entries
    int pluralDepth = 0;    // 0 outside plural invocations
    TextPosition position;
};

// "$name", either an external parameter or the discriminator of a plural invocation.
struct SourceParameter {
    std::u16string name;  // without "$", case kept
    std::size_t entry = 0;
    TextPosition position;  // of the "$"
};

// The "{" of a plural invocation. Within an entry they stand in the order in which a pre-order
// walk of the parsed value meets its PluralForm operands.
struct SourcePlural {
    std::size_t entry = 0;
    TextPosition position;
};

class SourceMap {
  public:
    // `text` is shorter than 2^32 units.
    explicit SourceMap(const std::u16string& text);

    const std::vector<SourceEntry>& Entries() const { return entries_; }
    const std::vector<SourceReference>& References() const { return references_; }
    const std::vector<SourceParameter>& Parameters() const { return parameters_; }
    const std::vector<SourcePlural>& Plurals() const { return plurals_; }

    // The first entry whose key is `lowerKey`, or nullptr.
    const SourceEntry* FindEntry(const std::u16string& lowerKey) const;

  private:
    void BeginEntry(SourceEntry entry);
    void IndexEntries();

    std::vector<SourceEntry> entries_;
    // An open-addressing hash table over entries_ by lower-cased key: each slot holds an index
    // into entries_ plus one, or 0 when empty; of equal keys only the first entry is in it. A
    // node-based map cost a million allocations for a million-key file, and more memory than
    // the entries themselves.
    std::vector<std::uint32_t> index_;
    std::vector<SourceReference> references_;
    std::vector<SourceParameter> parameters_;
    std::vector<SourcePlural> plurals_;
};

}  // namespace locmgr::analysis
