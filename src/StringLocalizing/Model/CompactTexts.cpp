#include "StringLocalizing/Model/CompactTexts.h"

#include "Memory/HugePages.h"

#include <cstring>
#include <functional>
#include <stdexcept>
#include <utility>

namespace LocalizationManager::StringLocalizing::Model {

namespace {

constexpr std::uint64_t kMultiplier = 0xBF58476D1CE4E5B9u;
constexpr std::size_t kInitialSlots = 16;

std::uint64_t Mix(std::uint64_t state, std::uint64_t word) noexcept {
    state = (state ^ word) * kMultiplier;
    return state ^ (state >> 31);
}

std::uint32_t HighHalf(std::uint64_t hash) noexcept {
    return static_cast<std::uint32_t>(hash >> 32);
}

// Offsets and lengths stay below the bit that marks an offset in units_.
std::uint32_t Checked(std::size_t units) {
    if (units >= 0x80000000u) {
        throw std::length_error("localization texts too long to store (2 Gi units or more)");
    }
    return static_cast<std::uint32_t>(units);
}

}  // namespace

CompactTexts::CompactTexts(std::u16string source)
    : source_(std::move(source)), slots_(kInitialSlots), mask_(kInitialSlots - 1) {
    Checked(source_.size());
    // Room for an entry every 32 units, reserved and not written, so that the entries of an
    // ordinary file are not moved while it is parsed.
    added_.reserve(source_.size() / 32);
}

void CompactTexts::Add(std::u16string_view lowerKey, Value&& value) {
    if (const std::u16string* text = PlainText(value)) {
        AddPlain(lowerKey, *text);
        return;
    }
    Slot slot;
    slot.keyLength = Checked(lowerKey.size()) | Slot::kComposite;
    slot.keyOffset = Place(lowerKey);
    // A key added twice fails the whole store at Seal, so which of its values is kept does
    // not matter.
    const auto inserted = composites_.emplace(std::u16string(lowerKey), std::move(value));
    slot.textOffset = Checked(compositeValues_.size());
    compositeValues_.push_back(&inserted.first->second);
    added_.push_back(slot);
}

void CompactTexts::AddPlain(std::u16string_view lowerKey, std::u16string_view text) {
    Slot slot;
    slot.keyLength = Checked(lowerKey.size());
    slot.keyOffset = Place(lowerKey);
    slot.textLength = Checked(text.size());
    slot.textOffset = Place(text);
    added_.push_back(slot);
}

bool CompactTexts::Seal(std::u16string& duplicate) {
    // At most four fifths full, so that probe sequences stay short.
    std::size_t capacity = kInitialSlots;
    while (capacity / 5 * 4 < added_.size()) {
        capacity *= 2;
    }
    std::vector<Slot> slots;
    slots.reserve(capacity);
    Memory::AdviseHugePages(slots.data(), capacity * sizeof(Slot));
    slots.assign(capacity, Slot());
    slots_.swap(slots);
    mask_ = capacity - 1;

    // The keys land all over a table larger than the caches: each one's place is asked for a
    // few keys ahead, so that the misses overlap instead of following each other. The hashes
    // of those keys wait in a ring.
    constexpr std::size_t kAhead = 8;
    std::uint64_t ahead[kAhead];
    for (std::size_t index = 0; index < kAhead && index < added_.size(); ++index) {
        ahead[index] = Hash(KeyOf(added_[index]));
    }
    for (std::size_t index = 0; index < added_.size(); ++index) {
        const std::uint64_t hash = ahead[index % kAhead];
        if (index + kAhead < added_.size()) {
            const std::uint64_t later = Hash(KeyOf(added_[index + kAhead]));
            ahead[index % kAhead] = later;
            __builtin_prefetch(&slots_[later & mask_], 1);
        }
        Slot slot = added_[index];
        const std::u16string_view key = KeyOf(slot);
        const std::size_t position = SlotOf(key, hash);
        if (!slots_[position].IsFree()) {
            duplicate.assign(key);
            return false;
        }
        slot.hashTag = HighHalf(hash);
        slots_[position] = slot;
    }
    size_ = added_.size();
    std::vector<Slot>().swap(added_);
    return true;
}

bool CompactTexts::Find(std::u16string_view lowerKey, Entry& entry) const noexcept {
    const Slot& slot = slots_[SlotOf(lowerKey, Hash(lowerKey))];
    if (slot.IsFree()) {
        return false;
    }
    entry = EntryOf(slot);
    return true;
}

std::vector<CompactTexts::Entry> CompactTexts::Entries() const {
    std::vector<Entry> entries;
    entries.reserve(size_);
    for (const Slot& slot : slots_) {
        if (!slot.IsFree()) {
            entries.push_back(EntryOf(slot));
        }
    }
    return entries;
}

[[gnu::always_inline]] inline CompactTexts::Entry CompactTexts::EntryOf(
    const Slot& slot) const noexcept {
    Entry entry;
    entry.key = KeyOf(slot);
    if (slot.IsComposite()) {
        entry.value = compositeValues_[slot.textOffset];
    } else {
        entry.plainText = {UnitsAt(slot.textOffset), slot.textLength};
    }
    return entry;
}

[[gnu::always_inline]] inline std::u16string_view CompactTexts::KeyOf(
    const Slot& slot) const noexcept {
    return {UnitsAt(slot.keyOffset), slot.keyLength & ~Slot::kComposite};
}

[[gnu::always_inline]] inline const char16_t* CompactTexts::UnitsAt(
    std::uint32_t offset) const noexcept {
    return (offset & Slot::kInUnits) != 0 ? units_.data() + (offset & ~Slot::kInUnits)
                                          : source_.data() + offset;
}

[[gnu::always_inline]] inline std::size_t CompactTexts::SlotOf(std::u16string_view key,
                                                               std::uint64_t hash) const noexcept {
    const std::uint32_t tag = HighHalf(hash);
    // Open addressing with linear probing; the table always has a free place.
    for (std::size_t position = hash & mask_;; position = (position + 1) & mask_) {
        const Slot& slot = slots_[position];
        if (slot.IsFree()) {
            return position;
        }
        if (slot.hashTag != tag) {
            continue;
        }
        const std::u16string_view stored = KeyOf(slot);
        // Bytes, not units: memcmp compares them many at a time.
        if (stored.size() == key.size() &&
            (key.empty() ||
             std::memcmp(stored.data(), key.data(), key.size() * sizeof(char16_t)) == 0)) {
            return position;
        }
    }
}

std::uint32_t CompactTexts::Place(std::u16string_view units) {
    const std::less<const char16_t*> before;
    const char16_t* const sourceEnd = source_.data() + source_.size();
    if (!before(units.data(), source_.data()) && !before(sourceEnd, units.data() + units.size())) {
        return static_cast<std::uint32_t>(units.data() - source_.data());
    }
    const std::uint32_t offset = Checked(units_.size());
    Checked(units_.size() + units.size());
    units_.insert(units_.end(), units.begin(), units.end());
    return offset | Slot::kInUnits;
}

[[gnu::always_inline]] inline std::uint64_t CompactTexts::Hash(std::u16string_view key) noexcept {
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

}  // namespace LocalizationManager::StringLocalizing::Model
