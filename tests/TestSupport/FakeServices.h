#pragma once

// In-process stand-ins for the host's services, for tests of the object model and components
// without loading the module: they count what they hand out so that tests can see leaks, and
// each can be switched off to see how creation fails.

#include "ulo/IServiceLocator.h"
#include "ulo/ResultCode.h"

#include <cstdlib>
#include <mutex>
#include <string>
#include <vector>

namespace LocalizationManager::Testing {

// Counts references, never frees itself: the tests own these objects on the stack.
template <class Interface>
class CountedFake : public Interface {
  public:
    std::uint32_t AddRef() override { return ++references; }
    std::uint32_t Release() override { return --references; }
    std::int32_t QueryInterface(ulo::InterfaceId, void** out) override {
        *out = nullptr;
        return ulo::kResultInterfaceNotSupported;
    }

    std::uint32_t references = 0;
};

class FakeAllocator : public CountedFake<ulo::IAllocator> {
  public:
    void* Allocate(std::size_t bytes) override {
        if (exhausted) {
            return nullptr;
        }
        ++liveBlocks;
        return std::malloc(bytes);
    }
    void* Reallocate(void* block, std::size_t bytes) override { return std::realloc(block, bytes); }
    void Free(void* block) override {
        if (block != nullptr) {
            --liveBlocks;
            std::free(block);
        }
    }

    bool exhausted = false;
    int liveBlocks = 0;
};

// Keeps every committed line.
class RecordingTracer : public CountedFake<ulo::ITracer> {
  public:
    std::int32_t BeginRecord(std::int32_t level, std::uint32_t,
                             ulo::ITraceRecord** record) override {
        *record = new Record(level);
        return ulo::kResultOk;
    }
    std::int32_t CommitRecord(ulo::ITraceRecord* record) override {
        auto* owned = static_cast<Record*>(record);
        std::lock_guard<std::mutex> lock(mutex_);
        lines.push_back(owned->text);
        levels.push_back(owned->level);
        delete owned;
        return ulo::kResultOk;
    }
    void DiscardRecord(ulo::ITraceRecord* record) override { delete static_cast<Record*>(record); }

    std::vector<std::string> lines;
    std::vector<std::int32_t> levels;

  private:
    struct Record final : ulo::ITraceRecord {
        explicit Record(std::int32_t level) : level(level) {}
        std::int32_t Append(const char* appended, std::size_t length) override {
            text.append(appended, length);
            return ulo::kResultOk;
        }
        std::int32_t level;
        std::string text;
    };

    std::mutex mutex_;
};

class FakeServiceLocator : public CountedFake<ulo::IServiceLocator> {
  public:
    std::int32_t GetService(ulo::ServiceId serviceId, std::uint32_t, void** out) override {
        *out = nullptr;
        if (serviceId == ulo::IAllocator::kServiceId && offersAllocator) {
            allocator.AddRef();
            *out = static_cast<ulo::IAllocator*>(&allocator);
        } else if (serviceId == ulo::ITracer::kServiceId && offersTracer) {
            tracer.AddRef();
            *out = static_cast<ulo::ITracer*>(&tracer);
        } else {
            return ulo::kResultNotFound;
        }
        return ulo::kResultOk;
    }

    FakeAllocator allocator;
    RecordingTracer tracer;
    bool offersAllocator = true;
    bool offersTracer = true;
};

}  // namespace LocalizationManager::Testing
