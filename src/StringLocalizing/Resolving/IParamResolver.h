#pragma once

#include <string>

namespace LocalizationManager::StringLocalizing::Resolving {

// Supplies the values of external parameters at resolution time; implemented outside the
// engine (the localizer wraps the host's resolver). Its failures propagate to the caller of
// the resolution unchanged.
struct IParamResolver {
    // The current value of the parameter named `name` (a Param's name, or the discriminator
    // parameter of a plural form invocation, without "$", case as written).
    virtual std::u16string ResolveParam(const std::u16string& name) = 0;

    virtual ~IParamResolver() = default;
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
