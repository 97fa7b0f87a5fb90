#include "ErrorTrace.h"

#include "StringLocalizing/Model/CultureNames.h"
#include "StringLocalizing/Model/LanguageName.h"
#include "ulo/ResultCode.h"
#include "ulo/rtl/MessageError.h"

#include <stdexcept>

namespace localization_manager {

namespace {

// Error lines usually fit; longer ones grow, they are never cut.
constexpr std::uint32_t kRecordSize = 512;

}  // namespace

void WriteErrorLine(ulo::ITracer* tracer, std::string_view line) noexcept {
    if (tracer == nullptr) {
        return;
    }
    ulo::ITraceRecord* record = nullptr;
    if (tracer->BeginRecord(ulo::ITracer::kErrorLevel, kRecordSize, &record) != ulo::kResultOk ||
        record == nullptr) {
        return;
    }
    constexpr std::string_view kPrefix = "localization manager error: ";
    if (ulo::Failed(record->Append(kPrefix.data(), kPrefix.size())) ||
        ulo::Failed(record->Append(line.data(), line.size()))) {
        tracer->DiscardRecord(record);
        return;
    }
    tracer->CommitRecord(record);
}

std::string CurrentExceptionMessage() {
    try {
        throw;
    } catch (const std::exception& exception) {
        return std::string(ulo::FullMessage(exception));
    } catch (...) {
        return "(null)";
    }
}

std::string CultureTraceText(const Culture& culture) {
    std::string language;
    try {
        language = LocalizationManager::StringLocalizing::Model::LanguageName(culture.languageId);
    } catch (const std::range_error&) {
        language = "<" + std::to_string(culture.languageId) + ">";
    }
    return language + LocalizationManager::StringLocalizing::Model::SubtagsText(culture);
}

}  // namespace localization_manager
