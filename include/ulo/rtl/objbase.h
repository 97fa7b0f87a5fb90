#pragma once

// The framework's object model as this module compiles it in: owning interface pointers, the
// module lock count, the object root with its services, counted objects and class factories.

#include "ulo/IObject.h"
#include "ulo/IObjectFactory.h"
#include "ulo/IServiceLocator.h"
#include "ulo/rtl/ModuleLock.h"
#include "ulo/rtl/Object.h"
#include "ulo/rtl/ObjectPtr.h"
#include "ulo/rtl/ObjectRoot.h"
