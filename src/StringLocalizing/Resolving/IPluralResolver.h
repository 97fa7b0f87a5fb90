#pragma once

#include "StringLocalizing/Model/Value.h"

#include <cstdint>

namespace LocalizationManager::StringLocalizing::Resolving {

// Chooses the form of a plural form invocation under one plural rule.
struct IPluralResolver {
    // The index of the form that the invocation's discriminator selects.
    virtual std::uint16_t GetPluralFormIndex(const Model::PluralForm& invocation) const = 0;

    // How many forms the rule has: every invocation must provide exactly that many.
    virtual std::uint16_t GetPluralFormCount() const = 0;

    virtual ~IPluralResolver() = default;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
