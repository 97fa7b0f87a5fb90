#pragma once

// What the comparison programs in C++ (bench_module, bench_gettext for GNU gettext, bench_icu
// for ICU, bench_boost_locale for Boost.Locale) share: the workloads' fixed parameters, the
// pseudo-random lookup order, the statistics they report and the child processes in which
// first-string and memory figures are taken. The fifth library, Fluent, runs on Node.js: its
// script fluent/bench_fluent.mjs does the same in JavaScript, with the same order and names.
//
// Each program measures the same workloads on the same texts under the same keys:
//
// - W1_Lookup: lookups of the keys of the 10,000-entry catalog in a fixed pseudo-random order
//   (--calls lookups per thread, 1,000,000 by default), the text copied out, on one thread and
//   on two threads with a reader each.
// - W2_PluralParameter: "Загружено <n> файл/файла/файлов" in Russian for n = 0..999, repeated
//   until --calls texts are made.
// - W3_FirstString/10k and /100k: starting the library (loading our module, setting the
//   locale, initialising ICU), opening a catalog and getting its first string, in a fresh
//   process each time, so that nothing a library caches per process helps it.
// - W4_Release/100k: releasing the 100,000-entry catalog after its first string, in a fresh
//   process, for the libraries that can release a catalog.
// - Memory_ReadEveryKey/100k: the peak resident set of a fresh process that opens the
//   100,000-entry catalog and reads every key once, next to that of a process that only
//   initialised the library.
// - Machine_SpinLoop: arithmetic alone on one and two threads, showing how much of a second
//   CPU the machine had to give W1 at the time.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace LocalizationManager::Benchmarks {

constexpr int kLookupCatalogSize = 10000;
constexpr int kLargeCatalogSize = 100000;
constexpr std::int64_t kDefaultCalls = 1000000;
constexpr std::uint64_t kPluralCycle = 1000;
// The key whose text is the first string of W3.
constexpr int kFirstStringIndex = 42;

struct Options {
    // Lookups per thread in W1 and texts in W2.
    std::int64_t calls = kDefaultCalls;
};

// "key_00042": the catalog's key of entry `index`, into a buffer that holds it.
using KeyBuffer = char[16];
const char* KeyName(int index, KeyBuffer& buffer);
std::string KeyName(int index);

// The W1 order: `count` entry indexes below `catalogSize` from a splitmix64 stream with a fixed
// seed, the same on every machine.
std::vector<std::uint32_t> LookupOrder(std::size_t count, std::uint32_t catalogSize);

// Adds "min" and "max" to the aggregates Google Benchmark reports over repetitions.
benchmark::internal::Benchmark* WithMinMax(benchmark::internal::Benchmark* benchmark);

// The one T that a program's workloads share, made on first use (the first W1 setup), so that
// no run times its making; a function-local static, released at exit in reverse order.
template <typename T>
T& Shared() {
    static T object;
    return object;
}

// A setup that makes the shared T.
template <typename T>
void MakeShared(const benchmark::State&) {
    Shared<T>();
}

// Registers W1_Lookup on one and two threads, after `prepare` (which makes what the threads
// share), and W2_PluralParameter: the two in-process workloads, as every program runs them.
using Workload = void (*)(benchmark::State&);
void RegisterLookupAndPlural(const Options& options, void (*prepare)(const benchmark::State&),
                             Workload lookup, Workload plural);

// Prints to standard error and ends the process: for setup that cannot go on.
[[noreturn]] void Fail(const char* format, ...) __attribute__((format(printf, 1, 2)));

// One compared library, as the shared main drives it.
struct Library {
    // Everything a process does before it opens its first catalog: loading the module,
    // setting the locale, initialising ICU. Timed in W3 only: a program pays it once.
    void (*initialise)();
    // Opens the catalog of `entries` entries (10,000 or 100,000) and copies out the text of
    // kFirstStringIndex: with initialise, the timed part of W3, in a process that has done
    // nothing else.
    void (*openAndGetFirst)(int entries);
    // Opens the 100,000-entry catalog and copies out the text of every key once.
    void (*readEveryKey)();
    // Registers the in-process workloads, W1 and W2.
    void (*registerBenchmarks)(const Options& options);
    // Releases everything the last openAndGetFirst made: the timed part of W4_Release, after
    // openAndGetFirst of the 100,000-entry catalog in a fresh process. Null for a library that
    // keeps its catalogs until the process ends.
    void (*releaseCatalog)() = nullptr;
};

// The main of a comparison program. Besides Google Benchmark's flags it takes --calls=N. The
// first-string and memory workloads run this same program again as a child with one of the
// internal flags --child=first-string ENTRIES, --child=release, --child=read-every-key,
// --child=baseline or --child=peak-rss MODE (which runs the child of MODE and reports its peak
// resident set).
int ComparisonMain(int argc, char** argv, const Library& library);

}  // namespace LocalizationManager::Benchmarks
