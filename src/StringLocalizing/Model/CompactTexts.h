#pragma once

#include "StringLocalizing/Model/ResourceDictionary.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace LocalizationManager::StringLocalizing::Model {

// The texts of one localization file as the runtime keeps them: what a ResourceDictionary
// holds, stored for lookups and for a cheap release. Most values are one literal text; their
// keys and texts lie one after the other in a single block of units, each entry is a record of
// a few bytes, and a hash table of eight-byte slots finds the record of a key. Only the other
// values (references, parameters, plural forms) are kept as Values, in a dictionary of their
// own that the compiler expands in place.
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
    // when the keys and texts outgrow what a record can address (4 Gi units).
    bool Add(std::u16string_view lowerKey, Value&& value);

    // The values that are not one literal text, for the compiler to expand in place; their
    // entries see the compiled values.
    ResourceDictionary& Composites() noexcept { return composites_; }
    const ResourceDictionary& Composites() const noexcept { return composites_; }

    // The entry of exactly `lowerKey`; false when there is none.
    bool Find(std::u16string_view lowerKey, Entry& entry) const noexcept;

    std::size_t Size() const noexcept { return records_.size(); }
    bool Empty() const noexcept { return records_.empty(); }
    // The entries in the order they were added.
    Entry EntryAt(std::size_t position) const noexcept;

  private:
    static constexpr std::uint32_t kNoComposite = 0;

    // One entry: its key, then its text when it is a plain text, at `offset` in units_.
    struct Record {
        std::uint32_t offset;
        std::uint32_t keyLength;
        std::uint32_t textLength;
        std::uint32_t composite;  // kNoComposite, or the position in compositeValues_ plus one
    };

    // A place of the hash table: the upper half of the key's hash, which tells most other keys
    // apart without reading their record, and the record's position plus one (0 for a free
    // place).
    struct Slot {
        std::uint32_t hashTag;
        std::uint32_t record;
    };

    static std::uint64_t Hash(std::u16string_view key) noexcept;

    std::u16string_view KeyOf(const Record& record) const noexcept;
    // The slot that holds `key`, or the free slot where it would go.
    std::size_t SlotOf(std::u16string_view key, std::uint64_t hash) const noexcept;
    void GrowTable();
    std::uint32_t Append(std::u16string_view key, std::u16string_view text);

    std::vector<char16_t> units_;
    std::vector<Record> records_;
    std::vector<Slot> slots_;
    std::size_t mask_ = 0;
    ResourceDictionary composites_;
    std::vector<const Value*> compositeValues_;
};

}  // namespace LocalizationManager::StringLocalizing::Model
