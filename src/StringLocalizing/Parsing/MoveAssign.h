#pragma once

#include <utility>

namespace LocalizationManager::StringLocalizing::Parsing {

// A semantic action of the grammars: moves what a rule synthesised into its parent's
// attribute instead of copying it (a plural form holds a tree of values, a rule chain a
// vector of conditions).
struct MoveAssign {
    using result_type = void;
    template <typename Target, typename Source>
    void operator()(Target& target, Source& source) const {
        target = std::move(source);
    }
};

}  // namespace LocalizationManager::StringLocalizing::Parsing
