#pragma once

#include "ulo/IIO.h"
#include "ulo/IObject.h"
#include "ulo/String.h"

#include <cstdint>

namespace localization_manager {

// The texts and binary resources of one scope in one culture.
//
// Threads: GetString and GetStream may be called from any number of threads at once. The
// first text request builds the scope's texts (the others wait for it); the parameter
// resolver is called on the requesting thread, from several threads at once when they share
// the localizer. Ownership: a stream from GetStream belongs to the caller and reads its file
// on its own, also after the localizer is released.
class ILocalizer : public ulo::IObject {
  public:
    static constexpr ulo::InterfaceId kInterfaceId = 0xD4AEF19Du;

    // Slot 3: the text of `key` (any case) in `result`. Returns 0, or 0x8000004B
    // ("Unspecified error") after writing the reason to the tracer.
    virtual std::int32_t GetString(const ulo::string16_t& key, ulo::string16_t& result) = 0;

    // Slot 4: a read-only stream over binary resource `key`, with one reference for the
    // caller. Returns 0; 0x80000046 ("Invalid argument") for a null `stream`; 0x8000004B
    // after writing the reason to the tracer.
    virtual std::int32_t GetStream(const ulo::string16_t& key, ulo::IIO** stream) = 0;

  protected:
    ~ILocalizer() = default;
};

}  // namespace localization_manager
