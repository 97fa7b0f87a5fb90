#pragma once

#include "localization_manager/Culture.h"

#include <cstdint>

namespace LocalizationManager::Testing {

// A culture of the language table with optional subtags ("en" + "US").
inline localization_manager::Culture MakeCulture(std::uint32_t languageId,
                                                 const char* firstSubtag = "",
                                                 const char* secondSubtag = "") {
    localization_manager::Culture culture;
    culture.languageId = languageId;
    culture.firstSubtag = firstSubtag;
    culture.secondSubtag = secondSubtag;
    return culture;
}

}  // namespace LocalizationManager::Testing
