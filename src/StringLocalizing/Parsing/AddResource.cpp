#include "StringLocalizing/Parsing/AddResource.h"

#include "StringLocalizing/Parsing/DuplicateKeyException.h"

#include <iterator>
#include <utility>

namespace LocalizationManager::StringLocalizing::Parsing {

void AddResource(Model::ResourceDictionary& dictionary, const Model::KeyCaseFolder& keyCaseFolder,
                 const std::u16string& key, Model::Value&& value) {
    std::u16string buffer;
    std::u16string lowered(keyCaseFolder.Fold(key, buffer));
    // Files are often written in key order, as tools write them: a key after the last one
    // cannot be a duplicate and goes in at the end without a search.
    auto position = dictionary.end();
    if (!dictionary.empty() && !(std::prev(position)->first < lowered)) {
        position = dictionary.lower_bound(lowered);
        if (position != dictionary.end() && position->first == lowered) {
            throw DuplicateKeyException(lowered);
        }
    }
    dictionary.emplace_hint(position, std::move(lowered), std::move(value));
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
