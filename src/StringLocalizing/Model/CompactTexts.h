#pragma once

#include "StringLocalizing/Model/ResourceDictionary.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace LocalizationManager::StringLocalizing::Model {

// The texts of one localization file as the runtime keeps them: what a ResourceDictionary
// holds, stored for lookups and for a cheap release. The store keeps the decoded file itself,
// and most keys and texts are where the file has them: a key written in lower case, a text
// that the parser's rule for plain entries takes (no escapes). Other keys and texts are
// copied, into a second block. A hash table of twenty-byte slots finds where a key and its text
// stand: a lookup reads its slot, then the key with its text a few units after it. Only the values
// that are not one literal text (references, parameters, plural forms) are kept as Values, in
// a dictionary of their own that the compiler expands in place.
//
// Use: Add every entry, Seal, then compile Composites(). The table is built once, when every
// key is known: sized at once and filled with its reads overlapped, instead of grown and
// rehashed while the file is parsed. Not thread-safe while being filled or compiled; immutable
// and safe for concurrent readers afterwards.
class CompactTexts {
  public:
    // What a key holds: its text, when the value was parsed as one literal text (then also its
    // resolved text), otherwise the value, which may compile to one literal text too. Views
    // into the store, valid while it is.
    struct Entry {
        std::u16string_view key;
        std::u16string_view plainText;
        const Value* value = nullptr;  // null for a plain text

        bool IsPlainText() const noexcept { return value == nullptr; }
    };

    // A store over the decoded text of a file, which it keeps: parse Source() into it.
    explicit CompactTexts(std::u16string source = {});

    CompactTexts(const CompactTexts&) = delete;
    CompactTexts& operator=(const CompactTexts&) = delete;

    const std::u16string& Source() const noexcept { return source_; }

    // Adds an entry under `lowerKey` (already lower-cased), taking over `value`; a key found in
    // Source() is not copied. Throws std::length_error when a key or text lies beyond what a
    // slot addresses (2 Gi units). A key added twice is found by Seal.
    void Add(std::u16string_view lowerKey, Value&& value);

    // Add for a value of one literal text: `text` is not copied when it lies in Source().
    void AddPlain(std::u16string_view lowerKey, std::u16string_view text);

    // Ends the filling and builds the table of the keys. False when a key was added twice:
    // `duplicate` is then the first key, in the order added, that was added before, and the
    // store must not be used further.
    bool Seal(std::u16string& duplicate);

    // The values that are not one literal text, for the compiler to expand in place; their
    // entries see the compiled values.
    ResourceDictionary& Composites() noexcept { return composites_; }
    const ResourceDictionary& Composites() const noexcept { return composites_; }

    // The entry of exactly `lowerKey`; false when there is none or the store is not sealed.
    bool Find(std::u16string_view lowerKey, Entry& entry) const noexcept;

    std::size_t Size() const noexcept { return size_; }
    bool Empty() const noexcept { return size_ == 0; }
    // Every entry, in no particular order.
    std::vector<Entry> Entries() const;

  private:
    // A place of the hash table. A used one tells where its key and its text stand and holds
    // the upper half of the key's hash, which tells most other keys apart without reading them.
    // An offset is in source_, or in units_ with kInUnits set.
    struct Slot {
        static constexpr std::uint32_t kFree = 0xFFFFFFFFu;  // as keyOffset
        static constexpr std::uint32_t kComposite = 0x80000000u;
        static constexpr std::uint32_t kInUnits = 0x80000000u;

        std::uint32_t hashTag = 0;
        std::uint32_t keyOffset = kFree;
        std::uint32_t keyLength = 0;  // with kComposite set for a composite value
        // The text's offset, or the composite value's position in compositeValues_.
        std::uint32_t textOffset = 0;
        std::uint32_t textLength = 0;

        bool IsFree() const noexcept { return keyOffset == kFree; }
        bool IsComposite() const noexcept { return (keyLength & kComposite) != 0; }
    };

    static std::uint64_t Hash(std::u16string_view key) noexcept;

    const char16_t* UnitsAt(std::uint32_t offset) const noexcept;
    std::u16string_view KeyOf(const Slot& slot) const noexcept;
    Entry EntryOf(const Slot& slot) const noexcept;
    // The slot that holds `key`, or the free slot where it would go.
    std::size_t SlotOf(std::u16string_view key, std::uint64_t hash) const noexcept;
    // The offset of `units`: where they stand in source_, else where they are copied to.
    std::uint32_t Place(std::u16string_view units);

    const std::u16string source_;
    std::vector<char16_t> units_;
    // The entries in the order added, until Seal moves them into the table.
    std::vector<Slot> added_;
    std::vector<Slot> slots_;
    std::size_t mask_ = 0;
    std::size_t size_ = 0;
    ResourceDictionary composites_;
    std::vector<const Value*> compositeValues_;
};

}  // namespace LocalizationManager::StringLocalizing::Model
