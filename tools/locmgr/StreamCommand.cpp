#include "CommandSupport.h"
#include "Commands.h"
#include "ModuleSession.h"
#include "localization_manager/host/StringConversion.h"
#include "ulo/IIO.h"
#include "ulo/ResultCode.h"

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace locmgr {

namespace {

namespace host = localization_manager::host;

constexpr std::uint32_t kChunkSize = 64 * 1024;

int Run(const Options& options) {
    const std::string scope = options.Value(kScopeOption.name);
    const std::string cultureName = options.Value(kCultureOption.name);
    if (options.Operands().size() != 1) {
        throw UsageError("give exactly one KEY");
    }
    const std::string& key = options.Operands().front();

    ModuleSession session(options.Value(kModuleOption.name));
    localization_manager::Culture culture;
    if (!ConvertCultureOrReport(session, cultureName, culture) ||
        !OpenTreeOrReport(session, options)) {
        return kExitFailed;
    }
    InterfacePtr<localization_manager::ILocalizer> localizer;
    std::int32_t code = session.GetLocalizer(scope, culture, nullptr, localizer);
    if (ulo::Failed(code)) {
        session.ReportFailure("cannot get a localizer for scope '" + scope + "'", code);
        return kExitFailed;
    }
    InterfacePtr<ulo::IIO> stream;
    code = localizer->GetStream(host::ToFrameworkString(key), stream.Put());
    if (ulo::Failed(code) || !stream) {
        session.ReportFailure("cannot open binary resource '" + key + "'", code);
        return kExitFailed;
    }

    std::vector<char> buffer(kChunkSize);
    for (;;) {
        std::uint32_t bytesRead = 0;
        code = stream->Read(buffer.data(), kChunkSize, &bytesRead);
        if (ulo::Failed(code)) {
            std::fflush(stdout);
            session.ReportFailure("cannot read binary resource '" + key + "'", code);
            return kExitFailed;
        }
        if (bytesRead == 0) {
            break;
        }
        // A stream claiming more than it was asked for would make us print foreign memory.
        if (bytesRead > kChunkSize) {
            std::cerr << "locmgr: the stream of '" << key << "' read more bytes than asked\n";
            return kExitFailed;
        }
        if (std::fwrite(buffer.data(), 1, bytesRead, stdout) != bytesRead) {
            std::cerr << "locmgr: cannot write to standard output\n";
            return kExitFailed;
        }
    }
    if (std::fflush(stdout) != 0) {
        std::cerr << "locmgr: cannot write to standard output\n";
        return kExitFailed;
    }
    return kExitOk;
}

}  // namespace

const Command kStreamCommand{
    "stream",
    "write a binary resource to standard output",
    "KEY",
    R"(Writes the bytes of binary resource KEY (a file name such as icon.svg), as the module finds
it for the scope and culture, to standard output through the module's stream interface.
)",
    {kRootOption, kAltOption,
     kScopeOption.Describe("the scope asking for the resource (its folder is tried first)"),
     kCultureOption, kModuleOption},
    "  locmgr stream --root examples/localization --scope download --culture en icon.svg\n",
    &Run,
};

}  // namespace locmgr
