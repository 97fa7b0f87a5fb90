#pragma once

#include "ulo/IObject.h"

namespace localization_manager {

// The classes whose factories uloGetObjectFactory hands out.
constexpr ulo::ClassId kLocalizationManagerClassId = 0x70B22AA2u;
constexpr ulo::ClassId kCultureConverterClassId = 0xBCE7112Au;

}  // namespace localization_manager
