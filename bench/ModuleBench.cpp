// The comparison workloads (see ComparisonSupport.h) on our module, reached as a host reaches
// it: loaded with dlopen and used only through its interfaces.
//
//   bench_module [--calls=N] [benchmark flags]
//
// The localization tree is built next to this program: culture "ru" with the scopes
// catalog10k (the first 10,000 catalog entries and files_loaded), catalog100k and a common
// scope of three entries.
//
// - W1_Lookup: ILocalizer::GetString into a framework string. With two threads each has its
//   own localizer; both come from one manager and serve the same scope. W1_LookupUtf8: the
//   same, the text then converted into a std::string by the host library, as a host that
//   works in UTF-8 does.
// - W2_PluralParameter: GetString of
//   files_loaded = 'Загружено ' + $n + ' ' + {$n: 'файл', 'файла', 'файлов'}
//   with a resolver that answers the decimal text of n; W2_PluralParameterUtf8 with the text
//   converted to UTF-8.
// - W3_FirstString: loading the module, a new manager, a new localizer, its first GetString.
// - W4_Release: releasing that localizer and manager, the last references to the scope.

#include "ComparisonSupport.h"
#include "localization_manager/ClassIds.h"
#include "localization_manager/ILocalizationManager.h"
#include "localization_manager/host/Host.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace bench = LocalizationManager::Benchmarks;
namespace host = localization_manager::host;
using localization_manager::ILocalizationManager;
using localization_manager::ILocalizer;

constexpr std::uint32_t kRussian = 26;  // "ru" in the language table
constexpr int kMaxThreads = 2;

// Answers every parameter with the decimal text of `value`. It lives as long as the
// localizers that hold it, so it does not count references.
class NumberResolver final : public localization_manager::IParamResolver {
  public:
    std::uint32_t AddRef() override { return 1; }
    std::uint32_t Release() override { return 1; }
    std::int32_t QueryInterface(ulo::InterfaceId, void** out) override {
        *out = nullptr;
        return ulo::kResultInterfaceNotSupported;
    }
    std::int32_t Resolve(const ulo::string16_t&, ulo::string16_t& result) override {
        char16_t digits[24];
        char16_t* const end = digits + sizeof(digits) / sizeof(digits[0]);
        char16_t* first = end;
        std::uint64_t rest = value;
        do {
            *--first = static_cast<char16_t>(u'0' + rest % 10);
            rest /= 10;
        } while (rest != 0);
        result.assign(first, static_cast<std::size_t>(end - first));
        return ulo::kResultOk;
    }

    std::uint64_t value = 0;
};

void Check(std::int32_t code, const char* what) {
    if (ulo::Failed(code)) {
        bench::Fail("cannot %s: 0x%08X", what, static_cast<unsigned>(code));
    }
}

// The loaded module and the services it is given.
class ModuleSession {
  public:
    ModuleSession() : locator_(host::ServiceLocator::Create(host::Tracer::Create())) {
        if (!loader_.Load(LM_BENCH_MODULE)) {
            bench::Fail("%s", loader_.Error().c_str());
        }
    }

    host::InterfacePtr<ILocalizationManager> NewManager() const {
        host::InterfacePtr<ILocalizationManager> manager;
        Check(loader_.CreateInstance(localization_manager::kLocalizationManagerClassId,
                                     locator_.Get(), manager),
              "create the manager");
        Check(
            manager->Construct(host::ToFrameworkString(LM_BENCH_DATA_DIR "/lt"), ulo::string16_t()),
            "construct the manager");
        return manager;
    }

  private:
    host::ModuleLoader loader_;
    host::InterfacePtr<host::ServiceLocator> locator_;
};

ModuleSession& Session() {
    static ModuleSession session;
    return session;
}

host::InterfacePtr<ILocalizer> NewLocalizer(ILocalizationManager& manager, int entries,
                                            localization_manager::IParamResolver* resolver) {
    localization_manager::Culture russian;
    russian.languageId = kRussian;
    const ulo::string16_t scope(entries == bench::kLargeCatalogSize ? u"catalog100k"
                                                                    : u"catalog10k");
    host::InterfacePtr<ILocalizer> localizer;
    Check(manager.GetLocalizer(scope, russian, resolver, localizer.Put()), "get the localizer");
    return localizer;
}

bench::Options options;

// W1's localizers, made once and kept for every run and repetition: a manager, one localizer
// per thread, the keys as framework strings and the lookup order.
struct LookupFixture {
    LookupFixture() : manager(Session().NewManager()) {
        for (int index = 0; index < bench::kLookupCatalogSize; ++index) {
            keys.push_back(host::ToFrameworkString(bench::KeyName(index)));
        }
        ulo::string16_t result;
        for (int thread = 0; thread < kMaxThreads; ++thread) {
            localizers[thread] = NewLocalizer(*manager, bench::kLookupCatalogSize, &resolver);
            // Every text has been asked for once before the timing starts.
            for (const auto& key : keys) {
                Check(localizers[thread]->GetString(key, result), "get a catalog string");
            }
        }
        order =
            bench::LookupOrder(static_cast<std::size_t>(options.calls), bench::kLookupCatalogSize);
    }

    host::InterfacePtr<ILocalizationManager> manager;
    NumberResolver resolver;
    host::InterfacePtr<ILocalizer> localizers[kMaxThreads];
    std::vector<ulo::string16_t> keys;
    std::vector<std::uint32_t> order;
};

// Shared, made after the session (its constructor asks for one), so released before the module
// goes.
LookupFixture& Fixture() {
    return bench::Shared<LookupFixture>();
}

// Hands the text to the host: as it is, or converted into a UTF-8 string the host keeps.
struct Utf16Copy {
    void operator()(const ulo::string16_t& text) { benchmark::DoNotOptimize(text.c_str()); }
};
struct Utf8Copy {
    void operator()(const ulo::string16_t& text) {
        host::ToUtf8(text, utf8);
        benchmark::DoNotOptimize(utf8.data());
    }
    std::string utf8;
};

template <typename Copy>
void Lookup(benchmark::State& state) {
    const LookupFixture& fixture = Fixture();
    ILocalizer& localizer = *fixture.localizers[state.thread_index()];
    const auto& keys = fixture.keys;
    const auto& order = fixture.order;
    // The threads walk the same order from different places.
    std::size_t next = order.size() / static_cast<std::size_t>(state.threads()) *
                       static_cast<std::size_t>(state.thread_index());
    ulo::string16_t result;
    Copy copy;
    std::int64_t failures = 0;
    for (auto _ : state) {
        failures += ulo::Failed(localizer.GetString(keys[order[next]], result));
        copy(result);
        if (++next == order.size()) {
            next = 0;
        }
    }
    if (failures != 0) {
        state.SkipWithError("GetString failed");
    }
}

template <typename Copy>
void PluralParameter(benchmark::State& state) {
    static const auto manager = Session().NewManager();
    static NumberResolver resolver;
    static const auto localizer = NewLocalizer(*manager, bench::kLookupCatalogSize, &resolver);
    const ulo::string16_t key(u"files_loaded");
    ulo::string16_t result;
    for (const auto& [n, expected] : {std::pair<int, const char*>{1, "Загружено 1 файл"},
                                      {22, "Загружено 22 файла"},
                                      {111, "Загружено 111 файлов"}}) {
        resolver.value = static_cast<std::uint64_t>(n);
        Check(localizer->GetString(key, result), "get the plural string");
        if (host::ToUtf8(result) != expected) {
            bench::Fail("files_loaded for %d is \"%s\"", n, host::ToUtf8(result).c_str());
        }
    }
    std::uint64_t n = 0;
    Copy copy;
    std::int64_t failures = 0;
    for (auto _ : state) {
        resolver.value = n;
        failures += ulo::Failed(localizer->GetString(key, result));
        copy(result);
        if (++n == bench::kPluralCycle) {
            n = 0;
        }
    }
    if (failures != 0) {
        state.SkipWithError("GetString failed");
    }
}

void RegisterBenchmarks(const bench::Options& given) {
    options = given;
    bench::RegisterLookupAndPlural(options, bench::MakeShared<LookupFixture>, Lookup<Utf16Copy>,
                                   PluralParameter<Utf16Copy>);
    bench::WithMinMax(benchmark::RegisterBenchmark("W1_LookupUtf8", Lookup<Utf8Copy>))
        ->Setup(bench::MakeShared<LookupFixture>)
        ->Iterations(options.calls)
        ->UseRealTime();
    bench::WithMinMax(
        benchmark::RegisterBenchmark("W2_PluralParameterUtf8", PluralParameter<Utf8Copy>))
        ->Iterations(options.calls);
}

void Initialise() {
    Session();
}

// The objects of W3 and of the memory workload stay alive until the child process ends, unless
// W4 releases them: releasing them is no part of what W3 and the memory workload measure.
NumberResolver childResolver;

// W3's manager and localizer, kept for W4 to release. Made after the session, so released
// before the module goes.
struct FirstStringObjects {
    host::InterfacePtr<ILocalizationManager> manager;
    host::InterfacePtr<ILocalizer> localizer;
};

FirstStringObjects& FirstString() {
    static FirstStringObjects objects;
    return objects;
}

void OpenAndGetFirst(int entries) {
    auto& [manager, localizer] = FirstString();
    manager = Session().NewManager();
    localizer = NewLocalizer(*manager, entries, &childResolver);
    ulo::string16_t result;
    Check(localizer->GetString(host::ToFrameworkString(bench::KeyName(bench::kFirstStringIndex)),
                               result),
          "get the first string");
}

// The last references to the scope: it goes with them.
void ReleaseCatalog() {
    FirstString().localizer.Reset();
    FirstString().manager.Reset();
}

void ReadEveryKey() {
    static host::InterfacePtr<ILocalizationManager> manager;
    static host::InterfacePtr<ILocalizer> localizer;
    manager = Session().NewManager();
    localizer = NewLocalizer(*manager, bench::kLargeCatalogSize, &childResolver);
    ulo::string16_t result;
    bench::KeyBuffer name;
    for (int index = 0; index < bench::kLargeCatalogSize; ++index) {
        Check(localizer->GetString(host::ToFrameworkString(bench::KeyName(index, name)), result),
              "get a catalog string");
    }
}

}  // namespace

int main(int argc, char** argv) {
    return bench::ComparisonMain(
        argc, argv,
        {Initialise, OpenAndGetFirst, ReadEveryKey, RegisterBenchmarks, ReleaseCatalog});
}
