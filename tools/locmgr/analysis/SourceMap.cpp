#include "SourceMap.h"

#include "StringLocalizing/Model/KeyCase.h"

#include <functional>
#include <string_view>
#include <utility>

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;

bool IsKeyStart(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
}

bool IsKeyPart(char16_t unit) {
    return IsKeyStart(unit) || (unit >= u'0' && unit <= u'9');
}

bool IsBlank(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n' || unit == u'\v' ||
           unit == u'\f';
}

// The end of a quoted string that opens at `offset`: just past its closing apostrophe, or the
// end of the text. The escapes \\ and \' never close it.
std::size_t SkipString(const std::u16string& text, std::size_t offset) {
    std::size_t position = offset + 1;
    while (position < text.size()) {
        const char16_t unit = text[position];
        if (unit == u'\\' && position + 1 < text.size() &&
            (text[position + 1] == u'\\' || text[position + 1] == u'\'' ||
             text[position + 1] == u'n')) {
            position += 2;
        } else if (unit == u'\'') {
            return position + 1;
        } else {
            ++position;
        }
    }
    return position;
}

std::size_t SkipComment(const std::u16string& text, std::size_t offset) {
    std::size_t position = offset;
    while (position < text.size() && text[position] != u'\n' && text[position] != u'\r') {
        ++position;
    }
    return position;
}

// Fewer than 2^32: a list holds at most one element per unit of the text.
template <typename List>
std::uint32_t Count(const List& list) {
    return static_cast<std::uint32_t>(list.size());
}

std::size_t HashOf(const std::u16string& key) {
    return std::hash<std::u16string_view>()(key);
}

std::size_t SkipBlanks(const std::u16string& text, std::size_t offset) {
    while (offset < text.size() && IsBlank(text[offset])) {
        ++offset;
    }
    return offset;
}

}  // namespace

SourceMap::SourceMap(const std::u16string& text) {
    PositionCounter counter(text);
    int depth = 0;
    std::size_t offset = 0;
    const auto currentEntry = [this] { return entries_.empty() ? 0 : entries_.size() - 1; };
    while (offset < text.size()) {
        const char16_t unit = text[offset];
        if (unit == u'\'') {
            offset = SkipString(text, offset);
            continue;
        }
        if (unit == u';') {
            offset = SkipComment(text, offset);
            continue;
        }
        if (unit == u'{') {
            counter.AdvanceTo(offset);
            plurals_.push_back({currentEntry(), counter.Position()});
            ++depth;
            ++offset;
            continue;
        }
        if (unit == u'}') {
            depth = depth > 0 ? depth - 1 : 0;
            ++offset;
            continue;
        }
        const bool parameter = unit == u'$';
        const std::size_t start = parameter ? offset + 1 : offset;
        if (start >= text.size() || !IsKeyStart(text[start])) {
            ++offset;
            continue;
        }
        std::size_t end = start;
        while (end < text.size() && IsKeyPart(text[end])) {
            ++end;
        }
        counter.AdvanceTo(offset);
        const std::u16string name = text.substr(start, end - start);
        if (parameter) {
            parameters_.push_back({name, currentEntry(), counter.Position()});
        } else if (SkipBlanks(text, end) < text.size() && text[SkipBlanks(text, end)] == u'=') {
            // Only an entry's key is followed by "=": nothing inside a value is.
            SourceEntry entry;
            entry.key = name;
            entry.lowerKey = Model::LowerCaseKey(name);
            entry.offset = static_cast<std::uint32_t>(offset);
            entry.position = counter.Position();
            BeginEntry(std::move(entry));
            depth = 0;
        } else {
            references_.push_back(
                {Model::LowerCaseKey(name), currentEntry(), depth, counter.Position()});
        }
        offset = end;
    }
    if (!entries_.empty()) {
        SourceEntry& last = entries_.back();
        last.end = static_cast<std::uint32_t>(text.size());
        last.endReference = Count(references_);
        last.endParameter = Count(parameters_);
        last.endPlural = Count(plurals_);
    }
    IndexEntries();
}

void SourceMap::BeginEntry(SourceEntry entry) {
    if (!entries_.empty()) {
        SourceEntry& previous = entries_.back();
        previous.end = entry.offset;
        previous.endReference = Count(references_);
        previous.endParameter = Count(parameters_);
        previous.endPlural = Count(plurals_);
    }
    entry.firstReference = entry.endReference = Count(references_);
    entry.firstParameter = entry.endParameter = Count(parameters_);
    entry.firstPlural = entry.endPlural = Count(plurals_);
    entries_.push_back(std::move(entry));
}

void SourceMap::IndexEntries() {
    // At most half full, so that probe sequences stay short.
    std::size_t slots = 16;
    while (slots < 2 * entries_.size()) {
        slots *= 2;
    }
    index_.assign(slots, 0);
    const std::size_t mask = slots - 1;
    for (std::size_t entry = 0; entry < entries_.size(); ++entry) {
        const std::u16string& key = entries_[entry].lowerKey;
        std::size_t slot = HashOf(key) & mask;
        while (index_[slot] != 0 && entries_[index_[slot] - 1].lowerKey != key) {
            slot = (slot + 1) & mask;
        }
        if (index_[slot] == 0) {
            index_[slot] = static_cast<std::uint32_t>(entry + 1);
        }
    }
}

const SourceEntry* SourceMap::FindEntry(const std::u16string& lowerKey) const {
    const std::size_t mask = index_.size() - 1;
    for (std::size_t slot = HashOf(lowerKey) & mask; index_[slot] != 0; slot = (slot + 1) & mask) {
        const SourceEntry& entry = entries_[index_[slot] - 1];
        if (entry.lowerKey == lowerKey) {
            return &entry;
        }
    }
    return nullptr;
}

}  // namespace locmgr::analysis
