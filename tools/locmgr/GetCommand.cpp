#include "CommandSupport.h"
#include "Commands.h"
#include "ModuleSession.h"
#include "ParamResolver.h"
#include "localization_manager/host/StringConversion.h"
#include "ulo/ResultCode.h"

#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace locmgr {

namespace {

namespace host = localization_manager::host;

const OptionDefinition kParamOption =
    Valued("--param", "NAME=VALUE", "the value of parameter $NAME; the last one given wins")
        .Repeatable();
const OptionDefinition kNoResolverOption =
    Flag("--no-resolver", "give the module no parameter resolver at all");

std::vector<std::pair<std::string, std::string>> ParseParams(const Options& options) {
    std::vector<std::pair<std::string, std::string>> params;
    for (const std::string& param : options.Values(kParamOption.name)) {
        const std::size_t equals = param.find('=');
        if (equals == std::string::npos || equals == 0) {
            throw UsageError("--param needs NAME=VALUE, got '" + param + "'");
        }
        params.emplace_back(param.substr(0, equals), param.substr(equals + 1));
    }
    if (!params.empty() && options.Has(kNoResolverOption.name)) {
        throw UsageError("--param has no effect with --no-resolver");
    }
    return params;
}

int Run(const Options& options) {
    const std::string scope = options.Value(kScopeOption.name);
    const std::string cultureName = options.Value(kCultureOption.name);
    const std::vector<std::string>& keys = options.Operands();
    if (keys.empty()) {
        throw UsageError("no KEY given");
    }
    const auto params = ParseParams(options);

    ModuleSession session(options.Value(kModuleOption.name));
    localization_manager::Culture culture;
    if (!ConvertCultureOrReport(session, cultureName, culture) ||
        !OpenTreeOrReport(session, options)) {
        return kExitFailed;
    }
    InterfacePtr<ParamResolver> resolver;
    if (!options.Has(kNoResolverOption.name)) {
        resolver = ParamResolver::Create();
        for (const auto& [name, value] : params) {
            resolver->Set(name, value);
        }
    }
    InterfacePtr<localization_manager::ILocalizer> localizer;
    const std::int32_t code = session.GetLocalizer(scope, culture, resolver.Get(), localizer);
    if (ulo::Failed(code)) {
        session.ReportFailure("cannot get a localizer for scope '" + scope + "'", code);
        return kExitFailed;
    }

    int status = kExitOk;
    for (const std::string& key : keys) {
        session.TakeLines();
        ulo::string16_t text;
        const std::int32_t keyCode = localizer->GetString(host::ToFrameworkString(key), text);
        if (ulo::Succeeded(keyCode)) {
            std::cout << host::ToUtf8(text) << '\n';
        } else {
            // What came before must be out before the error line appears on the terminal.
            std::cout.flush();
            session.ReportFailure("cannot get key '" + key + "'", keyCode);
            status = kExitFailed;
        }
    }
    return status;
}

}  // namespace

const Command kGetCommand{
    "get",
    "print the texts of keys",
    "KEY...",
    R"(Prints the text of each KEY (any case) of one scope in one culture, one text and a line feed
per key, in the order given. A key that fails prints nothing on standard output; the
module's error line appears on standard error and the exit status is 1.
)",
    {kRootOption, kAltOption, kScopeOption, kCultureOption, kParamOption, kNoResolverOption,
     kModuleOption},
    R"(  locmgr get --root examples/localization --scope download --culture ru \
      --param count=3 --param folders=2 status summary
)",
    &Run,
};

}  // namespace locmgr
