#include "StringLocalizing/Parsing/EntrySink.h"

#include "StringLocalizing/Parsing/DuplicateKeyException.h"

#include <iterator>
#include <utility>

namespace LocalizationManager::StringLocalizing::Parsing {

void DictionarySink::Add(std::u16string_view lowerKey, Model::Value&& value) {
    std::u16string key(lowerKey);
    // Files are often written in key order, as tools write them: a key after the last one
    // cannot be a duplicate and goes in at the end without a search.
    auto position = dictionary_.end();
    if (!dictionary_.empty() && !(std::prev(position)->first < key)) {
        position = dictionary_.lower_bound(key);
        if (position != dictionary_.end() && position->first == key) {
            throw DuplicateKeyException(key);
        }
    }
    dictionary_.emplace_hint(position, std::move(key), std::move(value));
}

void DictionarySink::AddPlain(std::u16string_view lowerKey, std::u16string_view text) {
    Add(lowerKey, Model::Value{{std::u16string(text)}});
}

void CompactTextsSink::Add(std::u16string_view lowerKey, Model::Value&& value) {
    texts_.Add(lowerKey, std::move(value));
}

void CompactTextsSink::AddPlain(std::u16string_view lowerKey, std::u16string_view text) {
    texts_.AddPlain(lowerKey, text);
}

void CompactTextsSink::Finish() {
    std::u16string duplicate;
    if (!texts_.Seal(duplicate)) {
        throw DuplicateKeyException(duplicate);
    }
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
