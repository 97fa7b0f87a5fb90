#pragma once

// The two functions a module exports, as a host looks them up by name.

#include "ulo/IObject.h"
#include "ulo/IObjectFactory.h"

#include <cstdint>

namespace ulo {

// Stores the factory of class `classId` in `*factory` with one reference and returns 0, or
// stores null and returns 0x80000043 ("Not implemented"). `host` is not used.
using GetObjectFactoryFunction = std::int32_t (*)(IObject* host, ClassId classId,
                                                  IObjectFactory** factory);
// 0 when no object of the module is alive (it may be unloaded), 1 otherwise.
using CanUnloadModuleFunction = std::int32_t (*)();

constexpr const char kGetObjectFactorySymbol[] = "uloGetObjectFactory";
constexpr const char kCanUnloadModuleSymbol[] = "uloCanUnloadModule";

}  // namespace ulo
