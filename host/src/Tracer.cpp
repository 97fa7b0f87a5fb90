#include "localization_manager/host/Tracer.h"

#include "ulo/ResultCode.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <utility>

namespace localization_manager::host {

namespace {

// A hint only sets the first allocation; a component asking for gigabytes up front must not
// get them before it has written a single byte.
constexpr std::uint32_t kMaxInitialReserve = 64 * 1024;

class TraceRecord final : public ulo::ITraceRecord {
  public:
    explicit TraceRecord(std::int32_t level) : level_(level) {}

    std::int32_t Append(const char* text, std::size_t length) override {
        if (length == 0) {
            return ulo::kResultOk;
        }
        if (text == nullptr) {
            return ulo::kResultInvalidArgument;
        }
        // std::string::append leaves the text untouched when it throws, which is exactly
        // "keeps the text appended so far".
        try {
            text_.append(text, length);
        } catch (const std::bad_alloc&) {
            return ulo::kResultOutOfMemory;
        } catch (const std::length_error&) {
            return ulo::kResultOutOfMemory;
        }
        return ulo::kResultOk;
    }

    void Reserve(std::uint32_t sizeHint) {
        try {
            text_.reserve(std::min(sizeHint, kMaxInitialReserve));
        } catch (const std::exception&) {
            // The record still works; it grows on demand.
        }
    }

    std::int32_t Level() const noexcept { return level_; }
    const std::string& Text() const noexcept { return text_; }

  private:
    const std::int32_t level_;
    std::string text_;
};

}  // namespace

InterfacePtr<Tracer> Tracer::Create(std::int32_t minimumLevel) {
    return Create(Sink(), minimumLevel);
}

InterfacePtr<Tracer> Tracer::Create(Sink sink, std::int32_t minimumLevel) {
    if (!sink) {
        sink = &Tracer::WriteToStandardError;
    }
    return InterfacePtr<Tracer>::Adopt(new Tracer(std::move(sink), minimumLevel));
}

void Tracer::WriteToStandardError(std::int32_t /*level*/, std::string_view line) {
    std::string buffer;
    buffer.reserve(line.size() + 1);
    buffer.append(line);
    buffer.push_back('\n');
    const char* next = buffer.data();
    std::size_t left = buffer.size();
    // A pipe may accept a long line in pieces; the remaining pieces follow at once.
    while (left != 0) {
        const ssize_t written = ::write(STDERR_FILENO, next, left);
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return;  // Nowhere left to report a failing standard error.
        }
        next += written;
        left -= static_cast<std::size_t>(written);
    }
}

Tracer::Tracer(Sink sink, std::int32_t minimumLevel)
    : sink_(std::move(sink)), minimumLevel_(minimumLevel) {}

Tracer::~Tracer() = default;

std::int32_t Tracer::BeginRecord(std::int32_t level, std::uint32_t sizeHint,
                                 ulo::ITraceRecord** record) {
    if (record == nullptr) {
        return ulo::kResultInvalidArgument;
    }
    *record = nullptr;
    if (level < minimumLevel_) {
        return ulo::kResultFalse;
    }
    auto* created = new (std::nothrow) TraceRecord(level);
    if (created == nullptr) {
        return ulo::kResultOutOfMemory;
    }
    created->Reserve(sizeHint);
    *record = created;
    return ulo::kResultOk;
}

std::int32_t Tracer::CommitRecord(ulo::ITraceRecord* record) {
    if (record == nullptr) {
        return ulo::kResultInvalidArgument;
    }
    const std::unique_ptr<TraceRecord> owned(static_cast<TraceRecord*>(record));
    try {
        const std::lock_guard<std::mutex> lock(sinkMutex_);
        sink_(owned->Level(), owned->Text());
    } catch (...) {
        // A host sink's exception must not unwind into the component that traced.
        return ulo::kResultUnexpected;
    }
    return ulo::kResultOk;
}

void Tracer::DiscardRecord(ulo::ITraceRecord* record) {
    delete static_cast<TraceRecord*>(record);
}

}  // namespace localization_manager::host
