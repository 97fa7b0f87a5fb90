#include "localization_manager/host/FunctionResolver.h"

#include "localization_manager/host/HostObject.h"
#include "localization_manager/host/StringConversion.h"
#include "ulo/ResultCode.h"

#include <new>
#include <utility>

namespace localization_manager::host {

namespace {

class FunctionResolver final : public CountedObject<IParamResolver> {
  public:
    explicit FunctionResolver(ResolverFunction function) : function_(std::move(function)) {}

    std::int32_t Resolve(const ulo::string16_t& in, ulo::string16_t& result) override {
        try {
            const std::optional<std::string> value = function_(ToUtf8(in));
            if (!value) {
                return ulo::kResultNotFound;
            }
            result = ToFrameworkString(*value);
            return ulo::kResultOk;
        } catch (const std::bad_alloc&) {
            return ulo::kResultOutOfMemory;
        } catch (...) {
            return ulo::kResultUnexpected;
        }
    }

  private:
    ~FunctionResolver() override = default;

    const ResolverFunction function_;
};

}  // namespace

InterfacePtr<IParamResolver> MakeResolver(ResolverFunction function) {
    return InterfacePtr<IParamResolver>::Adopt(new FunctionResolver(std::move(function)));
}

}  // namespace localization_manager::host
