#pragma once

// Everything a host needs to load the localization manager module and hand it its services.

#include "localization_manager/host/FunctionResolver.h"
#include "localization_manager/host/HostObject.h"
#include "localization_manager/host/InterfacePtr.h"
#include "localization_manager/host/Localization.h"
#include "localization_manager/host/MallocAllocator.h"
#include "localization_manager/host/ModuleLoader.h"
#include "localization_manager/host/ReferenceCount.h"
#include "localization_manager/host/ServiceLocator.h"
#include "localization_manager/host/StringConversion.h"
#include "localization_manager/host/TextKey.h"
#include "localization_manager/host/Tracer.h"
