#pragma once

#include "StringLocalizing/Model/ResourceDictionary.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace LocalizationManager::StringLocalizing::Model {

// The texts of one localization file as the runtime keeps them: what a ResourceDictionary
// holds, stored for lookups and for a cheap release. Most values are one literal text; their
// keys and texts lie one after the other in a single block of units, and a hash table of
// sixteen-byte slots finds a key's place in it: a lookup reads its slot, then the key with its
// text right after. Only the other values (references, parameters, plural forms) are kept as
// Values, in a dictionary of their own that the compiler expands in place.
//
// Use: Add every entry, then compile Composites(). Not thread-safe while being filled or
// compiled; immutable and safe for concurrent readers afterwards.
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

    // Reserves room for the keys and texts of a file of `sourceUnits` decoded units (they are
    // never longer than the file), so that filling the store does not move them.
    explicit CompactTexts(std::size_t sourceUnits = 0);

    CompactTexts(const CompactTexts&) = delete;
    CompactTexts& operator=(const CompactTexts&) = delete;

    // Adds an entry under `lowerKey` (already lower-cased), taking over `value`; false, with
    // nothing added and `value` as it was, when the key is present. Throws std::length_error
    // when the keys and texts outgrow what a slot can address (4 Gi units, keys 2 Gi).
    bool Add(std::u16string_view lowerKey, Value&& value);

    // The values that are not one literal text, for the compiler to expand in place; their
    // entries see the compiled values.
    ResourceDictionary& Composites() noexcept { return composites_; }
    const ResourceDictionary& Composites() const noexcept { return composites_; }

    // The entry of exactly `lowerKey`; false when there is none.
    bool Find(std::u16string_view lowerKey, Entry& entry) const noexcept;

    std::size_t Size() const noexcept { return size_; }
    bool Empty() const noexcept { return size_ == 0; }
    // Every entry, in no particular order.
    std::vector<Entry> Entries() const;

  private:
    // A place of the hash table. A used one tells where its key stands in units_ (its text
    // follows it when it is a plain text) and holds the upper half of the key's hash, which
    // tells most other keys apart without reading them.
    struct Slot {
        static constexpr std::uint32_t kFree = 0xFFFFFFFFu;
        static constexpr std::uint32_t kComposite = 0x80000000u;

        std::uint32_t hashTag = 0;
        std::uint32_t offset = kFree;
        std::uint32_t keyLength = 0;  // with kComposite set for a composite value
        // The text's length, or the composite value's position in compositeValues_.
        std::uint32_t textOrComposite = 0;

        bool IsFree() const noexcept { return offset == kFree; }
        bool IsComposite() const noexcept { return (keyLength & kComposite) != 0; }
    };

    static std::uint64_t Hash(std::u16string_view key) noexcept;

    std::u16string_view KeyOf(const Slot& slot) const noexcept;
    Entry EntryOf(const Slot& slot) const noexcept;
    // The slot that holds `key`, or the free slot where it would go.
    std::size_t SlotOf(std::u16string_view key, std::uint64_t hash) const noexcept;
    void GrowTable();
    std::uint32_t Append(std::u16string_view key, std::u16string_view text);

    std::vector<char16_t> units_;
    std::vector<Slot> slots_;
    std::size_t mask_ = 0;
    std::size_t size_ = 0;
    ResourceDictionary composites_;
    std::vector<const Value*> compositeValues_;
};

}  // namespace LocalizationManager::StringLocalizing::Model
