#include "ComparisonSupport.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <set>
#include <string_view>
#include <sys/resource.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace LocalizationManager::Benchmarks {

namespace {

constexpr std::uint64_t kLookupOrderSeed = 0x5745524B4C4F4144;  // fixed: same order every run

std::uint64_t SplitMix64(std::uint64_t& state) {
    state += 0x9E3779B97F4A7C15;
    std::uint64_t z = state;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return z ^ (z >> 31);
}

double Minimum(const std::vector<double>& values) {
    return values.empty() ? 0.0 : *std::min_element(values.begin(), values.end());
}

double Maximum(const std::vector<double>& values) {
    return values.empty() ? 0.0 : *std::max_element(values.begin(), values.end());
}

const char* programName = "bench";

struct ChildResult {
    std::string output;  // what the child wrote to standard output
    long maxRssKiB = 0;  // its peak resident set, from wait4
    std::string error;   // empty when the child ran and exited with 0
};

// Runs this program again with `arguments`, collecting its standard output and, from wait4,
// its peak resident set. A fresh process image (fork and exec, not fork alone) starts with
// none of the state the parent's earlier benchmarks left in the libraries.
ChildResult RunSelf(const std::vector<std::string>& arguments) {
    ChildResult result;
    int pipeEnds[2];
    if (::pipe2(pipeEnds, O_CLOEXEC) != 0) {
        result.error = std::string("pipe: ") + std::strerror(errno);
        return result;
    }
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(programName));
    for (const auto& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child < 0) {
        result.error = std::string("fork: ") + std::strerror(errno);
        ::close(pipeEnds[0]);
        ::close(pipeEnds[1]);
        return result;
    }
    if (child == 0) {
        ::dup2(pipeEnds[1], STDOUT_FILENO);
        ::execv("/proc/self/exe", argv.data());
        std::fprintf(stderr, "%s: cannot run itself: %s\n", programName, std::strerror(errno));
        std::_Exit(127);
    }
    ::close(pipeEnds[1]);
    char buffer[256];
    for (;;) {
        const ssize_t count = ::read(pipeEnds[0], buffer, sizeof(buffer));
        if (count > 0) {
            result.output.append(buffer, static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            break;
        }
    }
    ::close(pipeEnds[0]);
    int status = 0;
    struct rusage usage {};
    while (::wait4(child, &status, 0, &usage) < 0) {
        if (errno != EINTR) {
            result.error = std::string("wait4: ") + std::strerror(errno);
            return result;
        }
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        result.error = "the child process " + arguments.front() + " failed";
        return result;
    }
    result.maxRssKiB = usage.ru_maxrss;
    return result;
}

// The nanoseconds a child measured and printed.
bool ChildNanoseconds(const ChildResult& child, double& seconds) {
    char* end = nullptr;
    const long long nanoseconds = std::strtoll(child.output.c_str(), &end, 10);
    if (end == child.output.c_str() || nanoseconds < 0) {
        return false;
    }
    seconds = static_cast<double>(nanoseconds) / 1e9;
    return true;
}

// The peak resident set of a run of this program in `mode`, and the time it printed.
//
// The kernel carries a process's peak over exec, and a forked child starts with all the
// resident pages of its parent: a child of this program, which by then holds its W1 and W2
// fixtures, would report at least the parent's size. So the parent starts a fresh copy of
// itself (--child=peak-rss), which is no bigger than the process it measures, and that copy
// forks and runs the measured process and reports what wait4 says about it.
bool MeasurePeak(const std::string& mode, double& seconds, double& peakMiB) {
    const ChildResult child = RunSelf({"--child=peak-rss", mode});
    char* end = nullptr;
    const long long nanoseconds = std::strtoll(child.output.c_str(), &end, 10);
    const long kibibytes = std::strtol(end, nullptr, 10);
    if (!child.error.empty() || nanoseconds < 0 || kibibytes <= 0) {
        return false;
    }
    seconds = static_cast<double>(nanoseconds) / 1e9;
    peakMiB = static_cast<double>(kibibytes) / 1024.0;
    return true;
}

// A workload timed in a child process: each iteration runs the child once.
void TimedChild(benchmark::State& state, const std::vector<std::string>& arguments) {
    // One untimed run per child, so that no repetition reads the files from disk.
    static std::set<std::vector<std::string>> warmed;
    if (warmed.insert(arguments).second) {
        RunSelf(arguments);
    }
    for (auto _ : state) {
        const ChildResult child = RunSelf(arguments);
        double seconds = 0;
        if (!child.error.empty() || !ChildNanoseconds(child, seconds)) {
            state.SkipWithError(child.error.empty() ? "no time from the child" : "child failed");
            break;
        }
        state.SetIterationTime(seconds);
    }
}

void ReadEveryKey(benchmark::State& state) {
    for (auto _ : state) {
        double seconds = 0;
        double baselineMiB = 0;
        double peakMiB = 0;
        if (!MeasurePeak("--child=baseline", seconds, baselineMiB) ||
            !MeasurePeak("--child=read-every-key", seconds, peakMiB)) {
            state.SkipWithError("child failed");
            break;
        }
        state.SetIterationTime(seconds);
        state.counters["peak_RSS_MiB"] = peakMiB;
        state.counters["baseline_RSS_MiB"] = baselineMiB;
    }
}

// A loop of pure arithmetic on one and on two threads, for about as long as W1 runs. The
// speed-up it gets from a second thread is what the machine can give W1's second thread at
// that moment: on a machine that other work keeps busy, it stays well below 2 whatever the
// code under test does.
void SpinLoop(benchmark::State& state) {
    std::uint64_t value = static_cast<std::uint64_t>(state.thread_index());
    for (auto _ : state) {
        for (int step = 0; step < 100; ++step) {
            value = value * 6364136223846793005u + 1442695040888963407u;
        }
        benchmark::DoNotOptimize(value);
    }
}

long long NanosecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now() -
                                                                start)
        .count();
}

// Reports the measured time and ends the child without tearing anything down: a fresh process
// needs no cleanup, and its objects stay alive until the end, so that releasing them is
// measured nowhere.
[[noreturn]] void ExitChild(long long nanoseconds) {
    std::printf("%lld\n", nanoseconds);
    std::fflush(stdout);
    std::_Exit(0);
}

}  // namespace

const char* KeyName(int index, KeyBuffer& buffer) {
    std::snprintf(buffer, sizeof(buffer), "key_%05d", index);
    return buffer;
}

std::string KeyName(int index) {
    KeyBuffer buffer;
    return KeyName(index, buffer);
}

std::vector<std::uint32_t> LookupOrder(std::size_t count, std::uint32_t catalogSize) {
    std::vector<std::uint32_t> order(count);
    std::uint64_t state = kLookupOrderSeed;
    for (auto& index : order) {
        index = static_cast<std::uint32_t>(SplitMix64(state) % catalogSize);
    }
    return order;
}

void RegisterLookupAndPlural(const Options& options, void (*prepare)(const benchmark::State&),
                             Workload lookup, Workload plural) {
    WithMinMax(benchmark::RegisterBenchmark("W1_Lookup", lookup))
        ->Setup(prepare)
        ->Iterations(options.calls)
        ->UseRealTime()
        ->Threads(1)
        ->Threads(2);
    WithMinMax(benchmark::RegisterBenchmark("W2_PluralParameter", plural))
        ->Iterations(options.calls);
}

benchmark::internal::Benchmark* WithMinMax(benchmark::internal::Benchmark* benchmark) {
    return benchmark->ComputeStatistics("min", Minimum)->ComputeStatistics("max", Maximum);
}

void Fail(const char* format, ...) {
    std::fprintf(stderr, "%s: ", programName);
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::fputc('\n', stderr);
    std::exit(1);
}

int ComparisonMain(int argc, char** argv, const Library& library) {
    programName = argc > 0 ? argv[0] : "bench";
    const std::string_view mode = argc > 1 ? argv[1] : "";
    if (mode == "--child=first-string" && argc == 3) {
        const int entries = std::atoi(argv[2]);
        const auto start = std::chrono::steady_clock::now();
        library.initialise();
        library.openAndGetFirst(entries);
        ExitChild(NanosecondsSince(start));
    }
    if (mode == "--child=release" && library.releaseCatalog != nullptr) {
        library.initialise();
        library.openAndGetFirst(kLargeCatalogSize);
        const auto start = std::chrono::steady_clock::now();
        library.releaseCatalog();
        ExitChild(NanosecondsSince(start));
    }
    if (mode == "--child=read-every-key") {
        library.initialise();
        const auto start = std::chrono::steady_clock::now();
        library.readEveryKey();
        ExitChild(NanosecondsSince(start));
    }
    if (mode == "--child=baseline") {
        library.initialise();
        ExitChild(0);
    }
    if (mode == "--child=peak-rss" && argc == 3) {
        const ChildResult child = RunSelf({argv[2]});
        if (!child.error.empty()) {
            Fail("%s", child.error.c_str());
        }
        std::printf("%lld %ld\n", std::atoll(child.output.c_str()), child.maxRssKiB);
        return 0;
    }

    Options options;
    int kept = 1;
    for (int index = 1; index < argc; ++index) {
        const std::string_view argument = argv[index];
        if (argument.rfind("--calls=", 0) == 0) {
            options.calls = std::atoll(argv[index] + 8);
            if (options.calls < 1) {
                Fail("--calls must be at least 1");
            }
        } else {
            argv[kept++] = argv[index];
        }
    }
    argc = kept;
    argv[argc] = nullptr;

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    library.initialise();
    WithMinMax(benchmark::RegisterBenchmark("Machine_SpinLoop", SpinLoop))
        ->Iterations(options.calls)
        ->UseRealTime()
        ->Threads(1)
        ->Threads(2);
    library.registerBenchmarks(options);
    for (const int entries : {kLookupCatalogSize, kLargeCatalogSize}) {
        const std::string name = "W3_FirstString/" + std::to_string(entries / 1000) + "k";
        const std::vector<std::string> arguments{"--child=first-string", std::to_string(entries)};
        WithMinMax(benchmark::RegisterBenchmark(name.c_str(), TimedChild, arguments))
            ->UseManualTime()
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    }
    if (library.releaseCatalog != nullptr) {
        const std::vector<std::string> arguments{"--child=release"};
        WithMinMax(benchmark::RegisterBenchmark("W4_Release/100k", TimedChild, arguments))
            ->UseManualTime()
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    }
    // The peak resident set does not vary between runs the way times do: one run is enough.
    benchmark::RegisterBenchmark("Memory_ReadEveryKey/100k", ReadEveryKey)
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(1)
        ->Unit(benchmark::kMillisecond);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

}  // namespace LocalizationManager::Benchmarks
