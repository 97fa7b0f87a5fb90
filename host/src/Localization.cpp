#include "localization_manager/host/Localization.h"

#include "localization_manager/ClassIds.h"
#include "localization_manager/ICultureConverter.h"
#include "localization_manager/ILocalizationManager.h"
#include "localization_manager/IParamResolver.h"
#include "localization_manager/host/HostObject.h"
#include "localization_manager/host/ModuleLoader.h"
#include "localization_manager/host/ServiceLocator.h"
#include "localization_manager/host/StringConversion.h"
#include "ulo/ResultCode.h"

#include <cstdio>
#include <utility>

namespace localization_manager::host {

namespace {

// One request in progress on this thread: the module asks the resolver for its parameters and
// traces its failure on the calling thread, within the request, so both reach the request
// through a thread-local pointer. Requests nest when a host's own code requests a text while
// answering another.
struct PendingRequest {
    const Parameter* parameters = nullptr;
    std::size_t count = 0;
    std::vector<std::pair<std::int32_t, std::string>> trace;
    std::u16string missingParameter;
    PendingRequest* outer = nullptr;
};

thread_local PendingRequest* currentRequest = nullptr;

class RequestScope {
  public:
    explicit RequestScope(PendingRequest& request) : request_(request) {
        request.outer = std::exchange(currentRequest, &request);
    }
    ~RequestScope() { currentRequest = request_.outer; }
    RequestScope(const RequestScope&) = delete;
    RequestScope& operator=(const RequestScope&) = delete;

  private:
    PendingRequest& request_;
};

// Answers each parameter from the request in progress on the calling thread, so that one
// localizer serves every thread with the parameters of each request.
class RequestResolver final : public CountedObject<IParamResolver> {
  public:
    static InterfacePtr<IParamResolver> Create() {
        return InterfacePtr<IParamResolver>::Adopt(new RequestResolver());
    }

    std::int32_t Resolve(const ulo::string16_t& in, ulo::string16_t& result) override {
        PendingRequest* request = currentRequest;
        if (request == nullptr) {
            return ulo::kResultNotFound;
        }
        const std::u16string_view name(in.c_str(), in.size());
        for (std::size_t index = 0; index < request->count; ++index) {
            const Parameter& parameter = request->parameters[index];
            if (parameter.Name() == name) {
                result.assign(parameter.Value().data(), parameter.Value().size());
                return ulo::kResultOk;
            }
        }
        request->missingParameter = name;
        return ulo::kResultNotFound;
    }

  private:
    RequestResolver() = default;
    ~RequestResolver() override = default;
};

std::string DescribeCode(std::int32_t code) {
    char hex[16];
    std::snprintf(hex, sizeof hex, "0x%08X", static_cast<unsigned>(code));
    return std::string(hex) + " (" + Utf16ToUtf8(ulo::ResultCodeText(code)) + ")";
}

Failure FailureOf(std::int32_t code, const std::string& what) {
    return Failure{code, DescribeCode(code) + ": " + what, {}};
}

// A failed request's failure, with the lines the module traced for it.
Failure FailureOf(std::int32_t code, const std::string& what, PendingRequest& request) {
    Failure failure = FailureOf(code, what);
    for (auto& [level, line] : request.trace) {
        failure.trace.push_back(std::move(line));
    }
    return failure;
}

void Deliver(const Tracer::Sink& sink, std::int32_t level, std::string_view line) {
    if (sink) {
        sink(level, line);
    } else {
        Tracer::WriteToStandardError(level, line);
    }
}

// A request that succeeded hands the lines traced for it (warnings) to the sink.
void Deliver(const Tracer::Sink& sink, const PendingRequest& request) {
    for (const auto& [level, line] : request.trace) {
        Deliver(sink, level, line);
    }
}

// The throwing form of a call that reports its failure in a Failure.
template <typename Call>
auto ValueOrThrow(Call&& call) {
    Failure failure;
    auto value = call(failure);
    if (failure) {
        throw LocalizationError(std::move(failure));
    }
    return value;
}

}  // namespace

Parameter::Parameter(std::string_view name, std::string_view value)
    : name_(Utf8ToUtf16(name)), value_(Utf8ToUtf16(value)) {}

std::string Failure::Describe() const {
    std::string text = message;
    for (const std::string& line : trace) {
        text += "\n" + line;
    }
    return text;
}

LocalizationError::LocalizationError(Failure failure)
    : std::runtime_error(failure.Describe()), failure_(std::move(failure)) {}

// What every object of one Localization shares. Components are released before the module is
// unloaded.
struct ScopeTexts::Session {
    ModuleLoader loader;
    Tracer::Sink sink;
    InterfacePtr<ServiceLocator> services;
    InterfacePtr<ICultureConverter> converter;
    InterfacePtr<ILocalizationManager> manager;
    InterfacePtr<IParamResolver> resolver;
    Failure failure;  // why the tree cannot be served, or empty

    ~Session() {
        resolver.Reset();
        manager.Reset();
        converter.Reset();
        services.Reset();
        loader.Unload();
    }
};

Localization::Localization(const std::string& modulePath, const std::string& root,
                           const Options& options) {
    Failure failure;
    *this = Localization(modulePath, root, options, failure);
    if (failure) {
        throw LocalizationError(std::move(failure));
    }
}

Localization::Localization(const std::string& modulePath, const std::string& root,
                           const Options& options, Failure& failure) {
    auto session = std::make_shared<ScopeTexts::Session>();
    session->sink = options.sink;
    const auto fail = [&](Failure why) {
        session->failure = why;
        failure = std::move(why);
        session_ = session;
    };
    if (!session->loader.Load(modulePath)) {
        fail(FailureOf(ulo::kResultNotInitialized,
                       "cannot load the module: " + session->loader.Error()));
        return;
    }
    // Lines traced within a request go to that request; the sink gets the others.
    auto tracer = Tracer::Create([sink = options.sink](std::int32_t level, std::string_view line) {
        if (currentRequest != nullptr) {
            currentRequest->trace.emplace_back(level, std::string(line));
        } else {
            Deliver(sink, level, line);
        }
    });
    session->services = ServiceLocator::Create(std::move(tracer));
    std::int32_t code = session->loader.CreateInstance(kLocalizationManagerClassId,
                                                       session->services.Get(), session->manager);
    if (ulo::Succeeded(code)) {
        code = session->loader.CreateInstance(kCultureConverterClassId, session->services.Get(),
                                              session->converter);
    }
    if (ulo::Failed(code)) {
        fail(FailureOf(code, "the module " + modulePath + " gives no localization manager"));
        return;
    }
    PendingRequest request;
    {
        const RequestScope scope(request);
        code = session->manager->Construct(ToFrameworkString(root),
                                           ToFrameworkString(options.alternative));
    }
    if (ulo::Failed(code)) {
        fail(FailureOf(code, "cannot open the localization tree '" + root + "'", request));
        return;
    }
    session->resolver = RequestResolver::Create();
    session_ = std::move(session);
}

ScopeTexts Localization::Texts(std::string_view scope, std::string_view culture) const {
    return ValueOrThrow([&](Failure& failure) { return Texts(scope, culture, failure); });
}

ScopeTexts Localization::Texts(std::string_view scope, std::string_view culture,
                               Failure& failure) const {
    std::string description =
        "scope '" + std::string(scope) + "' in '" + std::string(culture) + "'";
    if (session_->failure) {
        failure = session_->failure;
        return ScopeTexts(session_, nullptr, std::move(description), failure);
    }
    Culture record{};
    PendingRequest request;
    std::int32_t code = ulo::kResultOk;
    InterfacePtr<ILocalizer> localizer;
    {
        const RequestScope requestScope(request);
        code = session_->converter->ConvertCultureName(
            ulo::string8_t(culture.data(), culture.size()), &record);
        if (ulo::Succeeded(code)) {
            code = session_->manager->GetLocalizer(ToFrameworkString(scope), record,
                                                   session_->resolver.Get(), localizer.Put());
        }
    }
    if (ulo::Failed(code) || !localizer) {
        failure = FailureOf(ulo::Failed(code) ? code : ulo::kResultUnexpected,
                            "no texts of " + description, request);
        return ScopeTexts(session_, nullptr, std::move(description), failure);
    }
    Deliver(session_->sink, request);
    return ScopeTexts(session_, std::move(localizer), std::move(description), Failure{});
}

ScopeTexts::ScopeTexts(std::shared_ptr<const Session> session, InterfacePtr<ILocalizer> localizer,
                       std::string description, Failure failure)
    : session_(std::move(session)),
      localizer_(std::move(localizer)),
      description_(std::move(description)),
      failure_(std::move(failure)) {}

ulo::string16_t ScopeTexts::Fetch(std::string_view key, const TextKey* typed,
                                  const Parameter* parameters, std::size_t count,
                                  Failure& failure) const {
    failure = Failure{};
    if (!localizer_) {
        failure = failure_;
        return {};
    }
    for (std::size_t index = 0; typed != nullptr && index < typed->parameterCount; ++index) {
        const std::u16string name = Utf8ToUtf16(typed->parameters[index]);
        bool given = false;
        for (std::size_t parameter = 0; parameter < count && !given; ++parameter) {
            given = parameters[parameter].Name() == name;
        }
        if (!given) {
            failure = FailureOf(ulo::kResultInvalidArgument,
                                "text '" + std::string(key) + "' of " + description_ +
                                    ": its texts ask for the parameter '" +
                                    std::string(typed->parameters[index]) +
                                    "', which the request does not give");
            return {};
        }
    }
    PendingRequest request;
    request.parameters = parameters;
    request.count = count;
    ulo::string16_t text;
    std::int32_t code = ulo::kResultOk;
    {
        const RequestScope scope(request);
        code = localizer_->GetString(ToFrameworkString(key), text);
    }
    if (ulo::Succeeded(code)) {
        Deliver(session_->sink, request);
        return text;
    }
    std::string what = "text '" + std::string(key) + "' of " + description_;
    if (!request.missingParameter.empty()) {
        what += ": no value was given for the parameter '" + Utf16ToUtf8(request.missingParameter) +
                "'";
    }
    failure = FailureOf(code, what, request);
    return {};
}

std::string ScopeTexts::Get(std::string_view key, std::initializer_list<Parameter> parameters,
                            Failure& failure) const {
    return ToUtf8(Fetch(key, nullptr, parameters.begin(), parameters.size(), failure));
}

std::string ScopeTexts::Get(std::string_view key, const std::vector<Parameter>& parameters,
                            Failure& failure) const {
    return ToUtf8(Fetch(key, nullptr, parameters.data(), parameters.size(), failure));
}

std::string ScopeTexts::Get(std::string_view key,
                            std::initializer_list<Parameter> parameters) const {
    return ValueOrThrow([&](Failure& failure) { return Get(key, parameters, failure); });
}

std::string ScopeTexts::Get(std::string_view key, const std::vector<Parameter>& parameters) const {
    return ValueOrThrow([&](Failure& failure) { return Get(key, parameters, failure); });
}

std::string ScopeTexts::Get(const TextKey& key, std::initializer_list<Parameter> parameters,
                            Failure& failure) const {
    return ToUtf8(Fetch(key.name, &key, parameters.begin(), parameters.size(), failure));
}

std::string ScopeTexts::Get(const TextKey& key, std::initializer_list<Parameter> parameters) const {
    return ValueOrThrow([&](Failure& failure) { return Get(key, parameters, failure); });
}

ulo::string16_t ScopeTexts::GetUtf16(std::string_view key, const std::vector<Parameter>& parameters,
                                     Failure& failure) const {
    return Fetch(key, nullptr, parameters.data(), parameters.size(), failure);
}

ulo::string16_t ScopeTexts::GetUtf16(std::string_view key,
                                     std::initializer_list<Parameter> parameters) const {
    return ValueOrThrow([&](Failure& failure) {
        return Fetch(key, nullptr, parameters.begin(), parameters.size(), failure);
    });
}

InterfacePtr<ulo::IIO> ScopeTexts::OpenResource(std::string_view key, Failure& failure) const {
    failure = Failure{};
    if (!localizer_) {
        failure = failure_;
        return nullptr;
    }
    PendingRequest request;
    InterfacePtr<ulo::IIO> stream;
    std::int32_t code = ulo::kResultOk;
    {
        const RequestScope scope(request);
        code = localizer_->GetStream(ToFrameworkString(key), stream.Put());
    }
    if (ulo::Failed(code) || !stream) {
        failure = FailureOf(ulo::Failed(code) ? code : ulo::kResultUnexpected,
                            "resource '" + std::string(key) + "' of " + description_, request);
        return nullptr;
    }
    return stream;
}

std::string ScopeTexts::ReadResource(std::string_view key, Failure& failure) const {
    InterfacePtr<ulo::IIO> stream = OpenResource(key, failure);
    std::string bytes;
    if (!stream) {
        return bytes;
    }
    char buffer[64 * 1024];
    for (;;) {
        std::uint32_t read = 0;
        const std::int32_t code = stream->Read(buffer, sizeof buffer, &read);
        if (ulo::Failed(code)) {
            failure = FailureOf(
                code, "cannot read resource '" + std::string(key) + "' of " + description_);
            return std::string();
        }
        if (read == 0) {
            return bytes;
        }
        bytes.append(buffer, read);
    }
}

std::string ScopeTexts::ReadResource(std::string_view key) const {
    return ValueOrThrow([&](Failure& failure) { return ReadResource(key, failure); });
}

}  // namespace localization_manager::host
