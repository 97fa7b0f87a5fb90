#pragma once

#include "ulo/IObject.h"
#include "ulo/String.h"

#include <cstdint>

namespace localization_manager {

// Implemented by the caller of a localizer: supplies the values of external parameters
// ("$count") while a text is resolved. The localizer holds one reference for its own life.
//
// Threads: Resolve is called on the thread that asked for the text, within that request, and
// from several threads at once when they share a localizer: a resolver shared so must answer
// concurrent calls (the host library's Localization answers each request from its own values).
class IParamResolver : public ulo::IObject {
  public:
    // Slot 3: the value of parameter `in` (its name as written in the text, without "$") in
    // `result`; a failure code makes the whole string request fail.
    virtual std::int32_t Resolve(const ulo::string16_t& in, ulo::string16_t& result) = 0;

  protected:
    ~IParamResolver() = default;
};

}  // namespace localization_manager
