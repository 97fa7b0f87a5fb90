#pragma once

#include "localization_manager/host/HostObject.h"
#include "localization_manager/host/InterfacePtr.h"
#include "ulo/IServiceLocator.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <mutex>
#include <string_view>

namespace localization_manager::host {

// The tracer service. A record collects text until it is committed and is then handed to the
// sink as one line; records grow as far as memory allows, so a long line (a parse error report
// quoting a long source line) arrives whole. Any thread may trace: lines reach the sink one at
// a time, never interleaved.
class Tracer final : public CountedObject<ulo::ITracer> {
  public:
    // Receives each committed line without a line feed. Called with the tracer's lock held, so
    // it needs no locking of its own, but must not trace through the same tracer.
    using Sink = std::function<void(std::int32_t level, std::string_view line)>;

    static constexpr std::int32_t kAllLevels = std::numeric_limits<std::int32_t>::min();

    // Writes each line to standard error. Records below `minimumLevel` are refused at
    // BeginRecord, so components do not even format them.
    static InterfacePtr<Tracer> Create(std::int32_t minimumLevel = kAllLevels);
    // Hands each line to `sink`; an empty sink means standard error.
    static InterfacePtr<Tracer> Create(Sink sink, std::int32_t minimumLevel = kAllLevels);

    // The standard error sink: the line and a line feed in a single write, so that lines of
    // several tracers (or processes) sharing the stream do not mix either.
    static void WriteToStandardError(std::int32_t level, std::string_view line);

    std::int32_t MinimumLevel() const noexcept { return minimumLevel_; }

    std::int32_t BeginRecord(std::int32_t level, std::uint32_t sizeHint,
                             ulo::ITraceRecord** record) override;
    // Returns 0x80000046 ("Invalid argument") for a null record and 0x80000040 ("Unexpected")
    // when the sink throws; the record is freed either way.
    std::int32_t CommitRecord(ulo::ITraceRecord* record) override;
    void DiscardRecord(ulo::ITraceRecord* record) override;

  private:
    Tracer(Sink sink, std::int32_t minimumLevel);
    ~Tracer() override;

    const Sink sink_;
    const std::int32_t minimumLevel_;
    std::mutex sinkMutex_;
};

}  // namespace localization_manager::host
