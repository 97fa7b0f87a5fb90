#include "ModuleSession.h"

#include "localization_manager/ClassIds.h"
#include "localization_manager/host/StringConversion.h"
#include "localization_manager/host/Tracer.h"
#include "ulo/ResultCode.h"

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <string_view>
#include <system_error>
#include <utility>

namespace locmgr {

namespace host = localization_manager::host;

namespace {

constexpr const char kModuleFileName[] = "localization_manager.so";

}  // namespace

// Shared with the tracer's sink: a component that outlives the session may still trace.
struct ModuleSession::LineLog {
    std::mutex mutex;
    std::vector<TraceLine> lines;
};

std::string DescribeResultCode(std::int32_t code) {
    char hex[16];
    std::snprintf(hex, sizeof hex, "0x%08X", static_cast<unsigned>(code));
    return std::string(hex) + " (" + host::Utf16ToUtf8(ulo::ResultCodeText(code)) + ")";
}

std::string DefaultModulePath() {
    std::error_code error;
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        throw ModuleUnavailable("cannot find this executable's folder (" + error.message() +
                                "); give the module with --module PATH");
    }
    const std::filesystem::path folder = executable.parent_path();
    const std::filesystem::path candidates[] = {
        folder / kModuleFileName,
        (folder / LM_MODULE_DIR_FROM_BINDIR / kModuleFileName).lexically_normal(),
    };
    for (const std::filesystem::path& candidate : candidates) {
        if (std::filesystem::is_regular_file(candidate, error)) {
            return candidate.string();
        }
    }
    throw ModuleUnavailable("no module found at '" + candidates[0].string() + "' or '" +
                            candidates[1].string() + "'; give its path with --module PATH");
}

ModuleSession::ModuleSession(const std::string& modulePath)
    : lineLog_(std::make_shared<LineLog>()) {
    if (!loader_.Load(modulePath.empty() ? DefaultModulePath() : modulePath)) {
        throw ModuleUnavailable(loader_.Error());
    }
    auto tracer = host::Tracer::Create([log = lineLog_](std::int32_t level, std::string_view line) {
        host::Tracer::WriteToStandardError(level, line);
        const std::lock_guard<std::mutex> lock(log->mutex);
        log->lines.push_back({level, std::string(line)});
    });
    services_ = host::ServiceLocator::Create(std::move(tracer));
}

ModuleSession::~ModuleSession() {
    manager_.Reset();
    converter_.Reset();
    services_.Reset();
    if (!loader_.Unload()) {
        std::cerr << "locmgr: warning: " << loader_.Error() << "\n";
    }
}

std::int32_t ModuleSession::ConvertCulture(const std::string& name,
                                           localization_manager::Culture& culture) {
    if (!converter_) {
        const std::int32_t code = loader_.CreateInstance(
            localization_manager::kCultureConverterClassId, services_.Get(), converter_);
        if (ulo::Failed(code) || !converter_) {
            throw ModuleUnavailable("module '" + loader_.Path() +
                                    "' gives no culture converter: " + DescribeResultCode(code));
        }
    }
    return converter_->ConvertCultureName(ulo::string8_t(name.data(), name.size()), &culture);
}

std::int32_t ModuleSession::OpenTree(const std::string& root, const std::string& alternative) {
    const std::int32_t code = loader_.CreateInstance(
        localization_manager::kLocalizationManagerClassId, services_.Get(), manager_);
    if (ulo::Failed(code) || !manager_) {
        throw ModuleUnavailable("module '" + loader_.Path() +
                                "' gives no localization manager: " + DescribeResultCode(code));
    }
    return manager_->Construct(host::ToFrameworkString(root), host::ToFrameworkString(alternative));
}

std::int32_t ModuleSession::GetLocalizer(
    const std::string& scope, const localization_manager::Culture& culture,
    localization_manager::IParamResolver* paramResolver,
    InterfacePtr<localization_manager::ILocalizer>& localizer) {
    localizer.Reset();
    if (!manager_) {
        return ulo::kResultInvalidState;
    }
    const std::int32_t code = manager_->GetLocalizer(host::ToFrameworkString(scope), culture,
                                                     paramResolver, localizer.Put());
    return ulo::Succeeded(code) && !localizer ? ulo::kResultUnexpected : code;
}

std::vector<TraceLine> ModuleSession::TakeLines() {
    const std::lock_guard<std::mutex> lock(lineLog_->mutex);
    return std::exchange(lineLog_->lines, {});
}

void ModuleSession::ReportFailure(const std::string& what, std::int32_t code) {
    if (TakeLines().empty()) {
        std::cerr << "locmgr: " << what << ": " << DescribeResultCode(code) << "\n";
    }
}

}  // namespace locmgr
