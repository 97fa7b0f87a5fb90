#include "StringLocalizing/Resolving/KeyIndex.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace LocalizationManager::StringLocalizing::Resolving {

namespace {

constexpr std::uint64_t kMultiplier = 0xBF58476D1CE4E5B9u;

std::uint64_t Mix(std::uint64_t state, std::uint64_t word) noexcept {
    state = (state ^ word) * kMultiplier;
    return state ^ (state >> 31);
}

std::uint32_t HighHalf(std::uint64_t hash) noexcept {
    return static_cast<std::uint32_t>(hash >> 32);
}

static_assert(sizeof(KeyIndex::Entry) == 64, "an entry fills one cache line");

}  // namespace

KeyIndex::Entry::Entry(const std::u16string& key, const Model::Value& value, std::uint32_t hashTag)
    : value_(&value), keyLength_(static_cast<std::uint32_t>(key.size())), hashTag_(hashTag) {
    if (key.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("key too long to index");
    }
    if (keyLength_ <= kInlineKeyUnits) {
        std::copy(key.begin(), key.end(), key_.inlined);
    } else {
        key_.external = key.data();
    }
    const std::u16string* text = Model::PlainText(value);
    // Longer texts, which no file holds, are resolved like any other value.
    if (text != nullptr && text->size() <= std::numeric_limits<std::uint32_t>::max()) {
        text_ = text->data();
        textLength_ = static_cast<std::uint32_t>(text->size());
    }
}

KeyIndex::KeyIndex(const Model::ResourceDictionary& dictionary) : size_(dictionary.size()) {
    // At most four fifths full: a bound of three quarters would double the table of a
    // 100,000-entry scope to 16 MiB.
    std::size_t capacity = 16;
    while (capacity / 5 * 4 < size_) {
        capacity *= 2;
    }
    table_.resize(capacity);
    mask_ = capacity - 1;

    // The keys come in order and land all over a table larger than the caches: each one's place
    // is asked for a few keys ahead, so that the misses overlap instead of following each other.
    constexpr std::size_t kAhead = 8;
    struct Pending {
        std::uint64_t hash;
        const Model::ResourceDictionary::value_type* entry;
    };
    std::vector<Pending> pending;
    pending.reserve(size_);
    for (const auto& entry : dictionary) {
        pending.push_back(Pending{Hash(entry.first), &entry});
    }
    for (std::size_t index = 0; index < pending.size(); ++index) {
        if (index + kAhead < pending.size()) {
            __builtin_prefetch(&table_[pending[index + kAhead].hash & mask_], 1);
        }
        const Pending& next = pending[index];
        std::size_t position = next.hash & mask_;
        while (!table_[position].IsEmpty()) {
            position = (position + 1) & mask_;
        }
        table_[position] = Entry(next.entry->first, next.entry->second, HighHalf(next.hash));
    }
}

const KeyIndex::Entry* KeyIndex::Find(std::u16string_view key) const noexcept {
    const std::uint64_t hash = Hash(key);
    const std::uint32_t tag = HighHalf(hash);
    for (std::size_t position = hash & mask_;; position = (position + 1) & mask_) {
        const Entry& entry = table_[position];
        if (entry.IsEmpty()) {
            return nullptr;
        }
        if (entry.hashTag_ != tag) {
            continue;
        }
        const std::u16string_view entryKey = entry.Key();
        // Bytes, not units: memcmp compares them many at a time.
        if (entryKey.size() == key.size() &&
            (key.empty() ||
             std::memcmp(entryKey.data(), key.data(), key.size() * sizeof(char16_t)) == 0)) {
            return &entry;
        }
    }
}

std::uint64_t KeyIndex::Hash(std::u16string_view key) noexcept {
    // Eight bytes at a time, the last eight overlapping the ones before: keys are short, and a
    // request hashes one every time.
    const auto* bytes = reinterpret_cast<const unsigned char*>(key.data());
    const std::size_t size = key.size() * sizeof(char16_t);
    std::uint64_t state = 0x9E3779B97F4A7C15u ^ size;
    std::uint64_t word = 0;
    if (size < sizeof word) {
        for (std::size_t index = 0; index < key.size(); ++index) {
            word |= static_cast<std::uint64_t>(key[index]) << (16 * index);
        }
        state = Mix(state, word);
    } else {
        for (std::size_t offset = 0; offset + sizeof word < size; offset += sizeof word) {
            std::memcpy(&word, bytes + offset, sizeof word);
            state = Mix(state, word);
        }
        std::memcpy(&word, bytes + size - sizeof word, sizeof word);
        state = Mix(state, word);
    }
    state *= 0x94D049BB133111EBu;
    return state ^ (state >> 32);
}

}  // namespace LocalizationManager::StringLocalizing::Resolving
