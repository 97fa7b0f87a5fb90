#pragma once

#include "ulo/ResultCode.h"
#include "ulo/rtl/TextConversion.h"

#include <cstdint>
#include <string>

namespace ulo {

// The text of a code as narrow message text, for exception messages. Kept out of
// ulo/ResultCode.h so that hosts including the codes do not pull in the conversion helpers.
inline std::string ResultCodeMessage(std::int32_t code) {
    return WideToNarrowMessage(ResultCodeText(code));
}

}  // namespace ulo
