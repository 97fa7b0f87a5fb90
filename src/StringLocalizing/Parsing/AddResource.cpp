#include "StringLocalizing/Parsing/AddResource.h"

#include "StringLocalizing/Model/KeyCase.h"
#include "StringLocalizing/Parsing/DuplicateKeyException.h"

#include <utility>

namespace LocalizationManager::StringLocalizing::Parsing {

void AddResource(Model::ResourceDictionary& dictionary, const std::u16string& key,
                 Model::Value&& value) {
    std::u16string lowered = Model::LowerCaseKey(key);
    const auto position = dictionary.lower_bound(lowered);
    if (position != dictionary.end() && position->first == lowered) {
        throw DuplicateKeyException(lowered);
    }
    dictionary.emplace_hint(position, std::move(lowered), std::move(value));
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
