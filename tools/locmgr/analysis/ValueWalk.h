#pragma once

// The parts of a parsed value that the checks look at, in the order of the text: a pre-order
// walk that enters the forms of plural invocations.

#include "StringLocalizing/Model/Value.h"

#include <string>
#include <vector>

namespace locmgr::analysis {

// Every plural invocation, nested ones included, each before the invocations in its forms.
std::vector<const LocalizationManager::StringLocalizing::Model::PluralForm*> PluralInvocations(
    const LocalizationManager::StringLocalizing::Model::Value& value);

struct ReferenceUse {
    std::u16string key;  // lower case, as parsed
    bool insidePlural = false;
};

// Every key reference, in text order.
std::vector<ReferenceUse> References(
    const LocalizationManager::StringLocalizing::Model::Value& value);

// The name of every parameter the resolver is asked for: external parameters and the
// discriminators of plural invocations, in text order, repeated as often as they occur.
std::vector<std::u16string> ParameterNames(
    const LocalizationManager::StringLocalizing::Model::Value& value);

}  // namespace locmgr::analysis
