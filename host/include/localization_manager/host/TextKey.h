#pragma once

// A key of a scope's texts as a constant that "locmgr keys" writes into a header, with the
// parameters its texts ask for in any culture, so that a misspelt key does not compile and a
// request that leaves out a parameter fails in every culture, not only in the one whose text
// needs it:
//
//   texts.Get(keys::download::summary, {{"count", 3}, {"folders", 2}});
//
// Constants are constexpr data: any thread may use them.

#include <cstddef>
#include <string_view>

namespace localization_manager::host {

struct TextKey {
    std::string_view name;
    const std::string_view* parameters = nullptr;  // the names, without "$"
    std::size_t parameterCount = 0;

    constexpr operator std::string_view() const noexcept { return name; }
};

}  // namespace localization_manager::host
