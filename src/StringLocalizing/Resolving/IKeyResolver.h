#pragma once

#include "StringLocalizing/Model/Value.h"
#include "StringLocalizing/Resolving/TextBuffer.h"

#include <string>
#include <string_view>

namespace LocalizationManager::StringLocalizing::Resolving {

// Turns a compiled value into its final text. A value of one literal text resolves to that
// text: providers answer such values without asking their resolver.
struct IKeyResolver {
    virtual std::u16string Resolve(const Model::Value& value) const = 0;

    virtual ~IKeyResolver() = default;

    // The text Resolve gives, copied only where it must be: a resolver may return a view of
    // text that `value` itself holds, or else it resolves into `buffer` (emptied first) and
    // returns a view of it. The view is valid while `value` and `buffer` are unchanged. By
    // default Resolve's text is kept in `buffer`.
    virtual std::u16string_view ResolveInto(const Model::Value& value, TextBuffer& buffer) const {
        return buffer.Assign(Resolve(value));
    }
};

}  // namespace LocalizationManager::StringLocalizing::Resolving
