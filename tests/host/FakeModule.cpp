// A stand-in module for the loader tests: it exports the two entry points, has one class
// (id 1) whose objects count themselves, and says it may be unloaded only while none is
// alive. Each object traces one line through the host's tracer when it is created, so a test
// also sees the services make the trip through a real dlopen.

#include "ulo/IObjectFactory.h"
#include "ulo/IServiceLocator.h"
#include "ulo/ModuleEntry.h"
#include "ulo/ResultCode.h"

#include <atomic>
#include <cstring>

namespace {

std::atomic<int> liveObjects{0};

constexpr ulo::ClassId kCountedClassId = 1;

class Counted final : public ulo::IObject {
  public:
    Counted() { ++liveObjects; }

    std::uint32_t AddRef() override { return ++references_; }
    std::uint32_t Release() override {
        const std::uint32_t count = --references_;
        if (count == 0) {
            delete this;
        }
        return count;
    }
    std::int32_t QueryInterface(ulo::InterfaceId interfaceId, void** out) override {
        if (interfaceId != ulo::IObject::kInterfaceId) {
            *out = nullptr;
            return ulo::kResultInterfaceNotSupported;
        }
        AddRef();
        *out = static_cast<ulo::IObject*>(this);
        return ulo::kResultOk;
    }

  private:
    ~Counted() { --liveObjects; }

    std::atomic<std::uint32_t> references_{1};
};

void TraceCreation(ulo::IServiceLocator* services) {
    void* service = nullptr;
    if (services == nullptr ||
        ulo::Failed(services->GetService(ulo::ITracer::kServiceId, 0, &service))) {
        return;
    }
    auto* tracer = static_cast<ulo::ITracer*>(service);
    ulo::ITraceRecord* record = nullptr;
    if (tracer->BeginRecord(ulo::ITracer::kErrorLevel, 4, &record) == ulo::kResultOk) {
        const char text[] = "fake module: object created";
        record->Append(text, std::strlen(text));
        tracer->CommitRecord(record);
    }
    tracer->Release();
}

class Factory final : public ulo::IObjectFactory {
  public:
    std::uint32_t AddRef() override { return 0; }
    std::uint32_t Release() override { return 0; }
    std::int32_t QueryInterface(ulo::InterfaceId, void** out) override {
        *out = nullptr;
        return ulo::kResultInterfaceNotSupported;
    }
    std::int32_t CreateInstance(ulo::IServiceLocator* services, ulo::InterfaceId interfaceId,
                                void** out) override {
        auto* object = new Counted();
        const std::int32_t code = object->QueryInterface(interfaceId, out);
        object->Release();
        if (ulo::Succeeded(code)) {
            TraceCreation(services);
        }
        return code;
    }
};

Factory factory;

}  // namespace

extern "C" std::int32_t uloGetObjectFactory(ulo::IObject*, ulo::ClassId classId,
                                            ulo::IObjectFactory** out) {
    if (classId != kCountedClassId) {
        *out = nullptr;
        return ulo::kResultNotImplemented;
    }
    *out = &factory;
    return ulo::kResultOk;
}

extern "C" std::int32_t uloCanUnloadModule() {
    return liveObjects.load() == 0 ? 0 : 1;
}
