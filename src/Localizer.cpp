#include "Localizer.h"

#include "BinaryIO.h"
#include "ErrorTrace.h"
#include "ulo/ResultCode.h"
#include "ulo/rtl/CodeContracts.h"
#include "ulo/rtl/MessageError.h"
#include "ulo/rtl/TextConversion.h"

#include <stdexcept>
#include <string_view>

namespace localization_manager {

namespace {

// Contract failures of the localizer name the component's source as the framework writes
// it, with fixed lines, so that error lines read the same in every build.
constexpr const char kSourceFile[] = "LocalizationManager";
constexpr std::int32_t kResourceProviderCheckLine = 129;
constexpr std::int32_t kCommonDictionaryCheckLine = 130;
constexpr std::int32_t kSyncObjectCheckLine = 131;
constexpr std::int32_t kCreateBinaryIOCheckLine = 102;
constexpr std::int32_t kResolveCheckLine = 154;

constexpr const char16_t kCommonScope[] = u"common";

}  // namespace

Localizer::ParamResolverWrapper::ParamResolverWrapper(
    localization_manager::IParamResolver* paramResolver)
    : paramResolver_(paramResolver) {
    if (paramResolver_ != nullptr) {
        paramResolver_->AddRef();
    }
}

Localizer::ParamResolverWrapper::~ParamResolverWrapper() {
    if (paramResolver_ != nullptr) {
        paramResolver_->Release();
    }
}

std::u16string Localizer::ParamResolverWrapper::ResolveParam(const std::u16string& in) {
    if (paramResolver_ == nullptr) {
        throw ulo::MessageError("no parameter resolver was given for the parameter '" +
                                ulo::WideToNarrowMessage(in) + "'");
    }
    if (!scratchTaken_.exchange(true, std::memory_order_acquire)) {
        struct Release {
            std::atomic<bool>& taken;
            ~Release() { taken.store(false, std::memory_order_release); }
        } release{scratchTaken_};
        return Resolve(in, scratchName_, scratchResult_);
    }
    ulo::string16_t name;
    ulo::string16_t result;
    return Resolve(in, name, result);
}

std::u16string Localizer::ParamResolverWrapper::Resolve(const std::u16string& in,
                                                        ulo::string16_t& name,
                                                        ulo::string16_t& result) {
    name.assign(in.data(), in.size());
    // The caller's resolver is given an empty string, whatever the last call left in it.
    result.clear();
    ::LocalizationManager::CheckCall(
        paramResolver_->Resolve(name, result),
        ULO_CODE_CONTRACTS_LOCATION_AT("paramResolver_->Resolve(in, result)", kSourceFile,
                                       kResolveCheckLine),
        "external resolver cannot resolve key");
    return std::u16string(result.data(), result.size());
}

Localizer::Localizer(ulo::IServiceLocator* serviceLocator) : ObjectRootEx(serviceLocator) {}

Localizer::~Localizer() {
    delete pipeline_.load(std::memory_order_acquire);
}

void Localizer::Init(
    const boost::shared_ptr<IResourceProvider>& resourceProvider,
    const boost::shared_ptr<CommonTexts>& commonResourceDictionary,
    const boost::shared_ptr<ulo::CriticalSection>& commonResourceDictionarySyncObject,
    const ulo::string16_t& scope, const Culture& culture, IParamResolver* paramResolver) {
    ULO_INVARIANT_NOT_NULL_AT(resourceProvider, kSourceFile, kResourceProviderCheckLine);
    ULO_INVARIANT_NOT_NULL_AT(commonResourceDictionary, kSourceFile, kCommonDictionaryCheckLine);
    ULO_INVARIANT_NOT_NULL_AT(commonResourceDictionarySyncObject, kSourceFile,
                              kSyncObjectCheckLine);
    resourceProvider_ = resourceProvider;
    commonResourceDictionary_ = commonResourceDictionary;
    commonResourceDictionarySyncObject_ = commonResourceDictionarySyncObject;
    culture_ = std::make_unique<Culture>(culture);
    paramResolver_ =
        boost::shared_ptr<ParamResolverWrapper>(new ParamResolverWrapper(paramResolver));
    scope_ = scope.ToStdString();
}

std::int32_t Localizer::QueryInterface(ulo::InterfaceId interfaceId, void** out) {
    return ulo::QueryInterfaceOf<ILocalizer>(this, interfaceId, out);
}

Localizer::Pipeline& Localizer::GetPipeline() {
    if (Pipeline* pipeline = pipeline_.load(std::memory_order_acquire)) {
        return *pipeline;
    }
    if (!commonResourceDictionarySyncObject_) {
        throw std::logic_error("the localizer was not initialised");
    }
    ulo::CriticalSectionLock lock(*commonResourceDictionarySyncObject_);
    // Another request may have built it while this one waited for the lock.
    if (Pipeline* pipeline = pipeline_.load(std::memory_order_acquire)) {
        return *pipeline;
    }
    auto pipeline =
        std::make_unique<Pipeline>(resourceProvider_, paramResolver_, commonResourceDictionary_,
                                   *culture_, scope_, kCommonScope);
    pipeline_.store(pipeline.get(), std::memory_order_release);
    paramResolver_.reset();
    return *pipeline.release();
}

std::int32_t Localizer::GetString(const ulo::string16_t& key, ulo::string16_t& result) {
    Pipeline* pipeline = nullptr;
    try {
        pipeline = &GetPipeline();
    } catch (...) {
        TraceError(GetTracerService(), [&] {
            return "cannot create string localizer for scope " + ulo::WideToNarrowMessage(scope_) +
                   " culture " + (culture_ ? CultureTraceText(*culture_) : std::string()) +
                   ", error: " + CurrentExceptionMessage();
        });
        return ulo::kResultUnspecifiedError;
    }
    try {
        // Plain texts are copied once, from the dictionary straight into the caller's string.
        LocalizationManager::StringLocalizing::Resolving::TextBuffer buffer;
        const std::u16string_view text =
            pipeline->GetStringView(std::u16string_view(key.data(), key.size()), buffer);
        result.assign(text.data(), text.size());
        return ulo::kResultOk;
    } catch (...) {
        // No comma before "error:" here, unlike the other lines; readers of the logs match on
        // both forms.
        TraceError(GetTracerService(), [&] {
            return "cannot get string for key " + ulo::WideToNarrowMessage(key.ToStdString()) +
                   " error: " + CurrentExceptionMessage();
        });
        return ulo::kResultUnspecifiedError;
    }
}

std::int32_t Localizer::GetStream(const ulo::string16_t& key, ulo::IIO** stream) {
    if (stream == nullptr) {
        return ulo::kResultInvalidArgument;
    }
    *stream = nullptr;
    ulo::ObjectPtr<ulo::Object<BinaryIO>> binaryIO;
    try {
        ::LocalizationManager::CheckCall(
            ulo::Object<BinaryIO>::CreateInstance(GetServiceLocator(), binaryIO.Ref()),
            ULO_CODE_CONTRACTS_LOCATION_AT(
                "ulo::Object<BinaryIO>::CreateInstance(GetServiceLocator(), stream.Ref())",
                kSourceFile, kCreateBinaryIOCheckLine),
            "cannot create BinaryIO");
        if (!resourceProvider_ || !culture_) {
            throw std::logic_error("the localizer was not initialised");
        }
        binaryIO->Init(
            resourceProvider_->GetBinaryResourcePath(scope_, *culture_, key.ToStdString()));
        *stream = binaryIO.Detach();
        return ulo::kResultOk;
    } catch (...) {
        TraceError(GetTracerService(), [&] {
            return "cannot open binary resource file stream for key " +
                   ulo::WideToNarrowMessage(key.ToStdString()) +
                   " error: " + CurrentExceptionMessage();
        });
        return ulo::kResultUnspecifiedError;
    }
}

}  // namespace localization_manager
