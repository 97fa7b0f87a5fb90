#pragma once

// What every end-to-end test starts from: the module loaded as an application loads it, a
// service locator whose tracer keeps each line, and short ways to the manager, localizers and
// texts. Nothing of the engine is linked in: every call below crosses the module boundary.
//
// Each test must give back every object it got: the fixture checks, once the test's own
// objects are gone, that the module lets itself be unloaded, so a reference leaked by the
// module (or by the test) fails the test that caused it.

#include "TestSupport/Cultures.h"
#include "localization_manager/ClassIds.h"
#include "localization_manager/Culture.h"
#include "localization_manager/ILocalizationManager.h"
#include "localization_manager/ILocalizer.h"
#include "localization_manager/IParamResolver.h"
#include "localization_manager/host/Host.h"
#include "ulo/ResultCode.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <mutex>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace localization_manager::e2e {

using host::InterfacePtr;

// Indices into the language table.
constexpr std::uint32_t kEnglish = 7;
constexpr std::uint32_t kGerman = 12;
constexpr std::uint32_t kRussian = 26;
constexpr std::uint32_t kSerbianLatin = 30;

using LocalizationManager::Testing::MakeCulture;

inline ulo::string16_t U16(std::string_view utf8) {
    return host::ToFrameworkString(utf8);
}

// The caller's side of external parameters: answers from a fixed table, or fails every
// request with one code. Read-only once made, so localizers may use it from any thread.
class ParamResolver final : public host::CountedObject<IParamResolver> {
  public:
    static InterfacePtr<ParamResolver> Create(std::map<std::string, std::string> values,
                                              std::int32_t failure = ulo::kResultOk) {
        return InterfacePtr<ParamResolver>::Adopt(new ParamResolver(std::move(values), failure));
    }

    std::int32_t Resolve(const ulo::string16_t& in, ulo::string16_t& result) override {
        const auto value = values_.find(host::ToUtf8(in));
        if (failure_ != ulo::kResultOk || value == values_.end()) {
            return failure_ != ulo::kResultOk ? failure_ : ulo::kResultNotFound;
        }
        result = U16(value->second);
        return ulo::kResultOk;
    }

  private:
    ParamResolver(std::map<std::string, std::string> values, std::int32_t failure)
        : values_(std::move(values)), failure_(failure) {}
    ~ParamResolver() override = default;

    const std::map<std::string, std::string> values_;
    const std::int32_t failure_;
};

struct TracedLine {
    std::int32_t level;
    std::string text;
};

// A text request's whole outcome, so that a table row or one EXPECT_EQ states it.
struct TextResult {
    std::int32_t code;
    std::string text;

    friend bool operator==(const TextResult& left, const TextResult& right) {
        return left.code == right.code && left.text == right.text;
    }
    friend std::ostream& operator<<(std::ostream& out, const TextResult& result) {
        return out << "code 0x" << std::hex << static_cast<std::uint32_t>(result.code) << std::dec
                   << " text '" << result.text << "'";
    }
};

inline TextResult Ok(std::string text) {
    return {ulo::kResultOk, std::move(text)};
}

inline TextResult GetText(ILocalizer& localizer, std::string_view key) {
    ulo::string16_t text;
    const std::int32_t code = localizer.GetString(U16(key), text);
    return {code, host::ToUtf8(text)};
}

class ModuleHostTest : public ::testing::Test {
  protected:
    ModuleHostTest() {
        if (!module_.Load(LM_MODULE_PATH)) {
            ADD_FAILURE() << module_.Error();
        }
    }

    ~ModuleHostTest() override {
        services_.Reset();
        EXPECT_TRUE(module_.Unload()) << module_.Error();
    }

    // A constructed manager over `root` (and `alternative`); null after a failed assertion.
    InterfacePtr<ILocalizationManager> Manager(const std::u16string& root,
                                               const std::u16string& alternative = u"") {
        InterfacePtr<ILocalizationManager> manager;
        EXPECT_EQ(ulo::kResultOk,
                  module_.CreateInstance(kLocalizationManagerClassId, services_.Get(), manager));
        if (manager) {
            EXPECT_EQ(ulo::kResultOk,
                      manager->Construct(ulo::string16_t(root), ulo::string16_t(alternative)));
        }
        return manager;
    }

    InterfacePtr<ILocalizer> Localizer(ILocalizationManager& manager, std::string_view scope,
                                       const Culture& culture, IParamResolver* resolver = nullptr) {
        InterfacePtr<ILocalizer> localizer;
        EXPECT_EQ(ulo::kResultOk,
                  manager.GetLocalizer(U16(scope), culture, resolver, localizer.Put()));
        return localizer;
    }

    // Every line traced so far, each checked to be an error line, and forgets them.
    std::vector<std::string> TakeLines() {
        std::lock_guard<std::mutex> lock(linesMutex_);
        std::vector<std::string> texts;
        for (TracedLine& line : lines_) {
            EXPECT_EQ(ulo::ITracer::kErrorLevel, line.level) << line.text;
            texts.push_back(std::move(line.text));
        }
        lines_.clear();
        return texts;
    }

    // The one line the last failure traced, without the prefix every error line has.
    std::string TakeErrorLine() {
        std::vector<std::string> lines = TakeLines();
        if (lines.size() != 1) {
            ADD_FAILURE() << "expected one traced line, got " << lines.size();
            return {};
        }
        constexpr std::string_view kPrefix = "localization manager error: ";
        if (lines[0].compare(0, kPrefix.size(), kPrefix) != 0) {
            ADD_FAILURE() << "line without the error prefix: " << lines[0];
            return lines[0];
        }
        return lines[0].substr(kPrefix.size());
    }

    host::ModuleLoader module_;
    std::mutex linesMutex_;
    std::vector<TracedLine> lines_;
    // Last, so that it goes first: components keep the tracer, whose sink writes to lines_.
    InterfacePtr<host::ServiceLocator> services_ = host::ServiceLocator::Create(
        host::Tracer::Create([this](std::int32_t level, std::string_view line) {
            std::lock_guard<std::mutex> lock(linesMutex_);
            lines_.push_back({level, std::string(line)});
        }));
};

}  // namespace localization_manager::e2e
