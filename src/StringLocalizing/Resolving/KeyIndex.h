#pragma once

#include "StringLocalizing/Model/ResourceDictionary.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace LocalizationManager::StringLocalizing::Resolving {

// A hash index over the entries of a dictionary, so that a lookup costs a hash and about two
// memory reads instead of the ordered map's string comparisons down its tree. It refers to the
// dictionary's values and texts where they are stored: the dictionary must outlive it and keep
// its entries and values in place meanwhile (a compiled dictionary does; compiling it again
// leaves every value untouched). Immutable once built; concurrent lookups are safe.
class KeyIndex {
  public:
    // What the index holds for one key.
    class Entry {
      public:
        const Model::Value& Value() const noexcept { return *value_; }

        // Whether the value is one literal text, which is then its resolved text as well.
        bool IsPlainText() const noexcept { return text_ != nullptr; }
        // That text; only for a plain-text entry.
        std::u16string_view PlainText() const noexcept { return {text_, textLength_}; }

      private:
        friend class KeyIndex;

        // Keys up to this length are kept in the entry itself, so that checking the key of a
        // lookup reads no other memory; an entry then fills one cache line.
        static constexpr std::size_t kInlineKeyUnits = 20;

        // Throws std::length_error for a key of 2^32 units or more.
        Entry(const std::u16string& key, const Model::Value& value);
        std::u16string_view Key() const noexcept {
            return {keyLength_ <= kInlineKeyUnits ? key_.inlined : key_.external, keyLength_};
        }

        const Model::Value* value_;
        const char16_t* text_ = nullptr;
        std::uint32_t textLength_ = 0;
        std::uint32_t keyLength_;
        union {
            const char16_t* external;
            char16_t inlined[kInlineKeyUnits];
        } key_;
    };

    explicit KeyIndex(const Model::ResourceDictionary& dictionary);

    KeyIndex(const KeyIndex&) = delete;
    KeyIndex& operator=(const KeyIndex&) = delete;

    // The entry of exactly `key` (already lower-cased), or null.
    const Entry* Find(std::u16string_view key) const noexcept;

    std::size_t Size() const noexcept { return entries_.size(); }

  private:
    // A slot holds the upper half of its key's hash and the entry's position plus one; zero is
    // an empty slot. The hash half spares reading the entries of most colliding keys.
    using Slot = std::uint64_t;

    static std::uint64_t Hash(std::u16string_view key) noexcept;

    std::vector<Entry> entries_;
    std::vector<Slot> slots_;
    std::size_t slotMask_ = 0;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
