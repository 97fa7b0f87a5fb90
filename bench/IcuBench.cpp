// The comparison workloads (see ComparisonSupport.h) on ICU4C, used as a program uses it: each
// catalog is a binary resource bundle "ru" (genrb made them next to this program from the same
// texts), opened from its folder without fallback, and strings are read by key.
//
//   bench_icu [--calls=N] [benchmark flags]
//
// - W1_Lookup: ures_getStringByKey, the text copied into an icu::UnicodeString. With two
//   threads each has its own bundle handle; ICU shares the loaded data between them.
// - W2_PluralParameter: an icu::MessageFormat in locale ru of the bundle's pattern
//   {n, plural, one{Загружено # файл} few{...} many{...} other{...}}, made once before the
//   timing (as a program keeps a format it uses often), formatting n into a UnicodeString.
// - W3_FirstString: opening the bundle and its first string.

#include "ComparisonSupport.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <unicode/fmtable.h>
#include <unicode/locid.h>
#include <unicode/msgfmt.h>
#include <unicode/uclean.h>
#include <unicode/unistr.h>
#include <unicode/ures.h>
#include <utility>
#include <vector>

namespace {

namespace bench = LocalizationManager::Benchmarks;

constexpr int kMaxThreads = 2;

const char* BundleFolder(int entries) {
    return entries == bench::kLargeCatalogSize ? LM_BENCH_DATA_DIR "/icu/catalog100k/"
                                               : LM_BENCH_DATA_DIR "/icu/catalog10k/";
}

UResourceBundle* OpenBundle(int entries) {
    UErrorCode status = U_ZERO_ERROR;
    UResourceBundle* bundle = ures_openDirect(BundleFolder(entries), "ru", &status);
    if (U_FAILURE(status)) {
        bench::Fail("cannot open the bundle in %s: %s", BundleFolder(entries), u_errorName(status));
    }
    return bundle;
}

void CopyString(UResourceBundle* bundle, const char* key, icu::UnicodeString& result) {
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = 0;
    const UChar* text = ures_getStringByKey(bundle, key, &length, &status);
    if (U_FAILURE(status)) {
        bench::Fail("no string %s: %s", key, u_errorName(status));
    }
    result.setTo(text, length);
}

bench::Options options;

// W1's bundles, opened once, with every key read once before the timing starts.
struct LookupFixture {
    LookupFixture() {
        for (int index = 0; index < bench::kLookupCatalogSize; ++index) {
            keys.push_back(bench::KeyName(index));
        }
        icu::UnicodeString result;
        for (auto& bundle : bundles) {
            bundle = OpenBundle(bench::kLookupCatalogSize);
            for (const auto& key : keys) {
                CopyString(bundle, key.c_str(), result);
            }
        }
        order =
            bench::LookupOrder(static_cast<std::size_t>(options.calls), bench::kLookupCatalogSize);
    }
    ~LookupFixture() {
        for (auto* bundle : bundles) {
            ures_close(bundle);
        }
    }

    UResourceBundle* bundles[kMaxThreads] = {};
    std::vector<std::string> keys;
    std::vector<std::uint32_t> order;
};

LookupFixture& Fixture() {
    return bench::Shared<LookupFixture>();
}

void Lookup(benchmark::State& state) {
    const LookupFixture& fixture = Fixture();
    UResourceBundle* const bundle = fixture.bundles[state.thread_index()];
    const auto& keys = fixture.keys;
    const auto& order = fixture.order;
    std::size_t next = order.size() / static_cast<std::size_t>(state.threads()) *
                       static_cast<std::size_t>(state.thread_index());
    icu::UnicodeString result;
    // A failed call leaves the status failed, and ICU then refuses every later call: checking
    // once after the loop catches any failure.
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = 0;
    for (auto _ : state) {
        const UChar* text =
            ures_getStringByKey(bundle, keys[order[next]].c_str(), &length, &status);
        result.setTo(text, length);
        benchmark::DoNotOptimize(result.getBuffer());
        if (++next == order.size()) {
            next = 0;
        }
    }
    if (U_FAILURE(status)) {
        state.SkipWithError(u_errorName(status));
    }
}

void PluralParameter(benchmark::State& state) {
    const LookupFixture& fixture = Fixture();
    icu::UnicodeString pattern;
    CopyString(fixture.bundles[0], "files_loaded", pattern);
    UErrorCode status = U_ZERO_ERROR;
    const icu::MessageFormat format(pattern, icu::Locale("ru"), status);
    if (U_FAILURE(status)) {
        bench::Fail("cannot make the plural format: %s", u_errorName(status));
    }
    const icu::UnicodeString name(u"n");
    icu::Formattable argument;
    icu::UnicodeString result;
    for (const auto& [n, expected] : {std::pair<int, const char16_t*>{1, u"Загружено 1 файл"},
                                      {22, u"Загружено 22 файла"},
                                      {111, u"Загружено 111 файлов"}}) {
        argument.setLong(n);
        result.remove();
        format.format(&name, &argument, 1, result, status);
        if (U_FAILURE(status) || result != icu::UnicodeString(expected)) {
            std::string text;
            bench::Fail("the plural text for %d is \"%s\" (%s)", n,
                        result.toUTF8String(text).c_str(), u_errorName(status));
        }
    }
    std::int32_t n = 0;
    for (auto _ : state) {
        argument.setLong(n);
        result.remove();
        format.format(&name, &argument, 1, result, status);
        benchmark::DoNotOptimize(result.getBuffer());
        if (++n == static_cast<std::int32_t>(bench::kPluralCycle)) {
            n = 0;
        }
    }
    if (U_FAILURE(status)) {
        state.SkipWithError(u_errorName(status));
    }
}

void RegisterBenchmarks(const bench::Options& given) {
    options = given;
    bench::RegisterLookupAndPlural(options, bench::MakeShared<LookupFixture>, Lookup,
                                   PluralParameter);
}

// What a program does once when it starts using ICU.
void Initialise() {
    UErrorCode status = U_ZERO_ERROR;
    u_init(&status);
    if (U_FAILURE(status)) {
        bench::Fail("u_init: %s", u_errorName(status));
    }
}

// The bundles of W3 and of the memory workload stay open until the child process ends:
// closing them is no part of what those workloads measure.
// W3's bundle, kept for W4 to close.
UResourceBundle* firstBundle = nullptr;

void OpenAndGetFirst(int entries) {
    UResourceBundle* bundle = firstBundle = OpenBundle(entries);
    bench::KeyBuffer name;
    icu::UnicodeString text;
    CopyString(bundle, bench::KeyName(bench::kFirstStringIndex, name), text);
    benchmark::DoNotOptimize(text.getBuffer());
}

void ReleaseCatalog() {
    ures_close(firstBundle);
    firstBundle = nullptr;
}

void ReadEveryKey() {
    UResourceBundle* bundle = OpenBundle(bench::kLargeCatalogSize);
    bench::KeyBuffer name;
    icu::UnicodeString text;
    for (int index = 0; index < bench::kLargeCatalogSize; ++index) {
        CopyString(bundle, bench::KeyName(index, name), text);
    }
    benchmark::DoNotOptimize(text.getBuffer());
}

}  // namespace

int main(int argc, char** argv) {
    return bench::ComparisonMain(
        argc, argv,
        {Initialise, OpenAndGetFirst, ReadEveryKey, RegisterBenchmarks, ReleaseCatalog});
}
