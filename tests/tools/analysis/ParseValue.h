#pragma once

// The value the parser makes of `value` written after "k = ".

#include "StringLocalizing/Model/ResourceDictionary.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"

#include <string>

namespace locmgr::analysis {

inline LocalizationManager::StringLocalizing::Model::Value ParseValue(const std::u16string& value) {
    LocalizationManager::StringLocalizing::Model::ResourceDictionary dictionary;
    LocalizationManager::StringLocalizing::Parsing::ParseLocFile(u"k = " + value, u"t.lt",
                                                                 dictionary);
    return dictionary.at(u"k");
}

}  // namespace locmgr::analysis
