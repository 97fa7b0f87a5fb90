// The comparison workloads (see ComparisonSupport.h) on Boost.Locale, used as a program uses it:
// a boost::locale::generator given the folder of the .mo files msgfmt made for gettext and one
// message domain per catalog (catalog10k, catalog100k) generates the locale "ru_RU.UTF-8".
// Boost.Locale reads the .mo files itself (its gnu_gettext catalogs), with its own evaluation of
// the catalog's Plural-Forms; the C library's gettext is not involved.
//
//   bench_boost_locale [--calls=N] [benchmark flags]
//
// The generator makes the message facet of char alone, as a program keeping its texts in
// std::string in UTF-8 does. By default it makes every facet for every character type, and then
// loads each catalog once per character type, converting it three times: about a second for the
// 100k catalog, none of which a UTF-8 program needs, and the collators and formatters it would
// add belong to what setlocale does for gettext, which no measurement here includes either.
//
// - W1_Lookup: boost::locale::gettext(key, locale), the std::string it returns (the library's
//   copy of the text) moved into the caller's. Both threads read the one locale: its facets are
//   immutable and shared by every copy of it anyway. This is the call programs make; fetching
//   the message facet once and copying what its get() answers into a kept string takes about
//   half the time, what gettext() adds being the facet's lookup in the locale on every call and
//   a new string.
// - W2_PluralParameter: boost::locale::ngettext("Loaded %d file", "Loaded %d files", n, locale),
//   three Russian forms, then snprintf of n into a caller's buffer, as for gettext.
// - W3_FirstString: a generator given the folder and the catalog's domain, the locale it
//   generates and its first translation.

#include "ComparisonSupport.h"

#include <boost/locale/generator.hpp>
#include <boost/locale/message.hpp>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <locale>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace bench = LocalizationManager::Benchmarks;

constexpr const char* kCatalogDirectory = LM_BENCH_DATA_DIR "/gettext";
constexpr const char* kLocaleName = "ru_RU.UTF-8";

const char* Domain(int entries) {
    return entries == bench::kLargeCatalogSize ? "catalog100k" : "catalog10k";
}

void MakeMessagesOnly(boost::locale::generator& generator) {
    generator.categories(boost::locale::message_facet);
    generator.characters(boost::locale::char_facet);
}

// The locale of a catalog's domain: a fresh generator, so that nothing is cached between calls.
std::locale CatalogLocale(int entries) {
    boost::locale::generator generator;
    MakeMessagesOnly(generator);
    generator.add_messages_path(kCatalogDirectory);
    generator.add_messages_domain(Domain(entries));
    return generator.generate(kLocaleName);
}

// Boost.Locale answers an unknown message with the message itself; a key never equals its text.
std::string Translate(const std::locale& locale, const char* key) {
    std::string text = boost::locale::gettext(key, locale);
    if (text == key) {
        bench::Fail("no translation of %s in %s", key, kCatalogDirectory);
    }
    return text;
}

bench::Options options;

// W1's locale, generated once, with every key looked up once before the timing starts.
struct LookupFixture {
    LookupFixture() : locale(CatalogLocale(bench::kLookupCatalogSize)) {
        for (int index = 0; index < bench::kLookupCatalogSize; ++index) {
            keys.push_back(bench::KeyName(index));
            Translate(locale, keys.back().c_str());
        }
        order =
            bench::LookupOrder(static_cast<std::size_t>(options.calls), bench::kLookupCatalogSize);
    }

    std::locale locale;
    std::vector<std::string> keys;
    std::vector<std::uint32_t> order;
};

LookupFixture& Fixture() {
    return bench::Shared<LookupFixture>();
}

void Lookup(benchmark::State& state) {
    const LookupFixture& fixture = Fixture();
    const std::locale& locale = fixture.locale;
    const auto& keys = fixture.keys;
    const auto& order = fixture.order;
    std::size_t next = order.size() / static_cast<std::size_t>(state.threads()) *
                       static_cast<std::size_t>(state.thread_index());
    std::string result;
    for (auto _ : state) {
        result = boost::locale::gettext(keys[order[next]].c_str(), locale);
        benchmark::DoNotOptimize(result.data());
        if (++next == order.size()) {
            next = 0;
        }
    }
}

void PluralParameter(benchmark::State& state) {
    const std::locale& locale = Fixture().locale;
    char buffer[128];
    for (const auto& [n, expected] : {std::pair<int, const char*>{1, "Загружено 1 файл"},
                                      {22, "Загружено 22 файла"},
                                      {111, "Загружено 111 файлов"}}) {
        std::snprintf(
            buffer, sizeof(buffer),
            boost::locale::ngettext("Loaded %d file", "Loaded %d files", n, locale).c_str(), n);
        if (std::strcmp(buffer, expected) != 0) {
            bench::Fail("the plural text for %d is \"%s\"", n, buffer);
        }
    }
    int n = 0;
    for (auto _ : state) {
        std::snprintf(
            buffer, sizeof(buffer),
            boost::locale::ngettext("Loaded %d file", "Loaded %d files", n, locale).c_str(), n);
        benchmark::DoNotOptimize(+buffer);
        if (++n == static_cast<int>(bench::kPluralCycle)) {
            n = 0;
        }
    }
}

void RegisterBenchmarks(const bench::Options& given) {
    options = given;
    bench::RegisterLookupAndPlural(options, bench::MakeShared<LookupFixture>, Lookup,
                                   PluralParameter);
}

// The backend (ICU, where Boost.Locale was built with it) made ready by a locale with no
// catalog: what a program has done before it loads its first one.
void Initialise() {
    boost::locale::generator generator;
    MakeMessagesOnly(generator);
    const std::locale ready = generator.generate(kLocaleName);
    benchmark::DoNotOptimize(&ready);
}

// The locales of W3 and of the memory workload live until the child process ends: releasing
// them is not among what those workloads measure.
// W3's locale, the one holder of its catalog, kept for W4 to destroy.
const std::locale* firstLocale = nullptr;

void OpenAndGetFirst(int entries) {
    const auto* locale = firstLocale = new std::locale(CatalogLocale(entries));
    bench::KeyBuffer name;
    const std::string text = Translate(*locale, bench::KeyName(bench::kFirstStringIndex, name));
    benchmark::DoNotOptimize(text.data());
}

void ReleaseCatalog() {
    delete firstLocale;
    firstLocale = nullptr;
}

void ReadEveryKey() {
    const auto* locale = new std::locale(CatalogLocale(bench::kLargeCatalogSize));
    bench::KeyBuffer name;
    std::string text;
    for (int index = 0; index < bench::kLargeCatalogSize; ++index) {
        text = Translate(*locale, bench::KeyName(index, name));
    }
    benchmark::DoNotOptimize(text.data());
}

}  // namespace

int main(int argc, char** argv) {
    return bench::ComparisonMain(
        argc, argv,
        {Initialise, OpenAndGetFirst, ReadEveryKey, RegisterBenchmarks, ReleaseCatalog});
}
