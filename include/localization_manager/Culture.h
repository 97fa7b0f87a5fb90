#pragma once

// A culture as hosts pass it to the manager: a language of the language table and up to two
// subtags ("en" + "US", "sr-Latn" + "RS" + ...). It crosses the module boundary, so its
// strings are framework strings.

#include "ulo/String.h"

#include <cstdint>

namespace localization_manager {

struct Culture {
    // Index into the language table ("ar" is 0, "vi" is 34).
    std::uint32_t languageId = 0;
    // Narrow ASCII subtags as the host wrote them; the second is used only with a first.
    ulo::types::basic_string_t<char> firstSubtag;
    ulo::types::basic_string_t<char> secondSubtag;
};

// Equal when all three fields are equal (subtags compared by length and bytes).
inline bool operator==(const Culture& left, const Culture& right) {
    return left.languageId == right.languageId && left.firstSubtag == right.firstSubtag &&
           left.secondSubtag == right.secondSubtag;
}

inline bool operator!=(const Culture& left, const Culture& right) {
    return !(left == right);
}

}  // namespace localization_manager
