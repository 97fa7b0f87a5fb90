#pragma once

#include "localization_manager/Culture.h"
#include "ulo/IObject.h"
#include "ulo/String.h"

#include <cstdint>

namespace localization_manager {

// Turns a culture name as people write it ("ru", "EN-us", "sr-Latn-RS", grouped names such as
// "anz" or "la") into the Culture record that GetLocalizer takes. Create it through the
// factory of class kCultureConverterClassId. It keeps no state: any thread may use it, several
// at once.
class ICultureConverter : public ulo::IObject {
  public:
    static constexpr ulo::InterfaceId kInterfaceId = 0x465EBE3Fu;

    // Slot 3: fills `*culture` and returns 0, or returns 0x8000004B ("Unspecified error") and
    // leaves it unchanged for a name that matches no entry; 0x80000046 for a null `culture`.
    virtual std::int32_t ConvertCultureName(const ulo::string8_t& name, Culture* culture) = 0;

  protected:
    ~ICultureConverter() = default;
};

}  // namespace localization_manager
