#pragma once

// A parameter resolver made of a function, for hosts that call the module's interfaces
// directly (Localization answers parameters from each request and needs none):
//
//   auto resolver = host::MakeResolver([](std::string_view name) -> std::optional<std::string> {
//       if (name == "count") return "3";
//       return std::nullopt;
//   });
//   manager->GetLocalizer(scope, culture, resolver.Get(), localizer.Put());
//
// The function gets the parameter's name (without "$") and gives its value, or nothing to fail
// the request. It is called on the thread of each request, from several threads at once when
// they share the localizer; an exception it throws fails the request (0x80000040,
// "Unexpected") and does not cross into the module.

#include "localization_manager/IParamResolver.h"
#include "localization_manager/host/InterfacePtr.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace localization_manager::host {

using ResolverFunction = std::function<std::optional<std::string>(std::string_view name)>;

InterfacePtr<IParamResolver> MakeResolver(ResolverFunction function);

}  // namespace localization_manager::host
