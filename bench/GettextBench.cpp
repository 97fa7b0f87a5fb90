// The comparison workloads (see ComparisonSupport.h) on GNU gettext as the C library provides
// it, used as a program uses it: the C.UTF-8 locale with LANGUAGE=ru, one text domain per
// catalog (catalog10k, catalog100k) bound to the .mo files msgfmt made next to this program.
//
//   bench_gettext [--calls=N] [benchmark flags]
//
// - W1_Lookup: dgettext of the key (the msgid is the key), copied into a std::string. Both
//   threads use the one domain: gettext has nothing like a per-thread localizer.
// - W2_PluralParameter: dngettext of "Loaded %d file"/"Loaded %d files" (three Russian forms
//   chosen by the catalog's Plural-Forms), then snprintf of n into a caller's buffer.
// - W3_FirstString: bindtextdomain and the first dgettext of a domain the process never used.

#include "ComparisonSupport.h"

#include <benchmark/benchmark.h>

#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <libintl.h>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace bench = LocalizationManager::Benchmarks;

constexpr const char* kCatalogDirectory = LM_BENCH_DATA_DIR "/gettext";
constexpr const char* kLookupDomain = "catalog10k";
constexpr const char* kLargeDomain = "catalog100k";

const char* Domain(int entries) {
    return entries == bench::kLargeCatalogSize ? kLargeDomain : kLookupDomain;
}

void Bind(const char* domain) {
    if (bindtextdomain(domain, kCatalogDirectory) == nullptr) {
        bench::Fail("bindtextdomain %s failed", domain);
    }
}

// gettext answers an unknown msgid with the msgid itself; a key never equals its text.
const char* Translate(const char* domain, const char* key) {
    const char* text = dgettext(domain, key);
    if (text == key) {
        bench::Fail("no translation of %s in domain %s", key, domain);
    }
    return text;
}

bench::Options options;

// W1's domain, bound once, with every key looked up once before the timing starts.
struct LookupFixture {
    LookupFixture() {
        Bind(kLookupDomain);
        for (int index = 0; index < bench::kLookupCatalogSize; ++index) {
            keys.push_back(bench::KeyName(index));
            Translate(kLookupDomain, keys.back().c_str());
        }
        order =
            bench::LookupOrder(static_cast<std::size_t>(options.calls), bench::kLookupCatalogSize);
    }

    std::vector<std::string> keys;
    std::vector<std::uint32_t> order;
};

LookupFixture& Fixture() {
    return bench::Shared<LookupFixture>();
}

void Lookup(benchmark::State& state) {
    const LookupFixture& fixture = Fixture();
    const auto& keys = fixture.keys;
    const auto& order = fixture.order;
    std::size_t next = order.size() / static_cast<std::size_t>(state.threads()) *
                       static_cast<std::size_t>(state.thread_index());
    std::string result;
    for (auto _ : state) {
        result.assign(dgettext(kLookupDomain, keys[order[next]].c_str()));
        benchmark::DoNotOptimize(result.data());
        if (++next == order.size()) {
            next = 0;
        }
    }
}

void PluralParameter(benchmark::State& state) {
    Fixture();
    char buffer[128];
    for (const auto& [n, expected] : {std::pair<int, const char*>{1, "Загружено 1 файл"},
                                      {22, "Загружено 22 файла"},
                                      {111, "Загружено 111 файлов"}}) {
        std::snprintf(buffer, sizeof(buffer),
                      dngettext(kLookupDomain, "Loaded %d file", "Loaded %d files",
                                static_cast<unsigned long>(n)),
                      n);
        if (std::strcmp(buffer, expected) != 0) {
            bench::Fail("the plural text for %d is \"%s\"", n, buffer);
        }
    }
    unsigned long n = 0;
    for (auto _ : state) {
        std::snprintf(buffer, sizeof(buffer),
                      dngettext(kLookupDomain, "Loaded %d file", "Loaded %d files", n),
                      static_cast<int>(n));
        benchmark::DoNotOptimize(+buffer);
        if (++n == bench::kPluralCycle) {
            n = 0;
        }
    }
}

void RegisterBenchmarks(const bench::Options& given) {
    options = given;
    bench::RegisterLookupAndPlural(options, bench::MakeShared<LookupFixture>, Lookup,
                                   PluralParameter);
}

// gettext ignores LANGUAGE in the "C" locale, but not in C.UTF-8, which is also the locale
// whose UTF-8 output needs no conversion of the UTF-8 catalogs.
void Initialise() {
    if (std::setlocale(LC_ALL, "C.UTF-8") == nullptr) {
        bench::Fail("the C.UTF-8 locale is missing");
    }
    ::setenv("LANGUAGE", "ru", 1);
}

void OpenAndGetFirst(int entries) {
    Bind(Domain(entries));
    bench::KeyBuffer name;
    const std::string text =
        Translate(Domain(entries), bench::KeyName(bench::kFirstStringIndex, name));
    benchmark::DoNotOptimize(text.data());
}

void ReadEveryKey() {
    Bind(kLargeDomain);
    bench::KeyBuffer name;
    std::string text;
    for (int index = 0; index < bench::kLargeCatalogSize; ++index) {
        text.assign(Translate(kLargeDomain, bench::KeyName(index, name)));
    }
    benchmark::DoNotOptimize(text.data());
}

}  // namespace

int main(int argc, char** argv) {
    return bench::ComparisonMain(argc, argv,
                                 {Initialise, OpenAndGetFirst, ReadEveryKey, RegisterBenchmarks});
}
