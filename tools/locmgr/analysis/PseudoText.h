#pragma once

// Pseudo-localization of texts: literal text is made to look translated while staying
// readable, so that texts an application never takes from the localization files (and texts
// cut short by the layout) stand out. Only literal text changes; references, parameters,
// plural invocations and their forms keep their structure.

#include "StringLocalizing/Model/Value.h"

#include <optional>
#include <string>

namespace locmgr::analysis {

enum class PseudoStyle {
    kAccents,  // "[Ðöŵñļöåð]": ASCII letters by accented look-alikes, bracketed
    kLong,     // accents, and each text made about 40 % longer, for layouts that must grow
    kRtl,      // wrapped in a right-to-left override, to see a layout mirrored
};

std::optional<PseudoStyle> PseudoStyleOf(const std::string& name);

// One literal text in the style (without the brackets of the whole value).
std::u16string PseudoText(const std::u16string& text, PseudoStyle style);

// The value with every literal text changed, in plural forms too, and, when the value itself
// holds literal text, marks at its start and end (brackets, or the override and its end).
LocalizationManager::StringLocalizing::Model::Value PseudoValue(
    const LocalizationManager::StringLocalizing::Model::Value& value, PseudoStyle style);

}  // namespace locmgr::analysis
