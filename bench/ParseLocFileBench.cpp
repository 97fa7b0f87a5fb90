// Throughput of the localization file parser on large catalogs.
//
//   bench_parse [benchmark flags] [--catalog=FILE]... [FILE]...
//
// Catalogs are .lt files; without any on the command line, the colon-separated list in the
// environment variable LM_BENCH_CATALOG is used, and without that the 10,000- and
// 100,000-entry catalogs generated into the build tree. Each file is read and decoded once,
// outside the timing; an iteration parses the decoded text into a fresh dictionary. Bytes per
// second refer to the file's UTF-8 size. A file that does not parse is reported and makes the
// program exit with status 1 before anything is timed.

#include "CatalogArguments.h"
#include "StringLocalizing/Model/ResourceDictionary.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "ulo/rtl/TextConversion.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

struct Catalog {
    std::string path;
    std::u16string fileName;
    std::u16string text;
    std::size_t utf8Size = 0;
    std::size_t entries = 0;
};

// "…/catalog-10k.lt" -> "catalog-10k"
std::string BenchmarkName(const std::string& path) {
    std::string name = path.substr(path.find_last_of('/') + 1);
    if (const std::size_t dot = name.rfind('.'); dot != std::string::npos && dot > 0) {
        name.erase(dot);
    }
    return "ParseLocFile/" + name;
}

// Reads, decodes and parses the catalog once. Throws on an unreadable or unparsable file.
std::shared_ptr<const Catalog> LoadCatalog(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot open " + path);
    }
    std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (std::string_view(bytes).substr(0, kByteOrderMark.size()) == kByteOrderMark) {
        bytes.erase(0, kByteOrderMark.size());
    }

    auto catalog = std::make_shared<Catalog>();
    catalog->path = path;
    catalog->fileName = ulo::Utf8ToWide(path);
    catalog->text = ulo::Utf8ToWide(bytes);
    catalog->utf8Size = bytes.size();

    Model::ResourceDictionary dictionary;
    Parsing::ParseLocFile(catalog->text, catalog->fileName, dictionary);
    catalog->entries = dictionary.size();
    return catalog;
}

void ParseCatalog(benchmark::State& state, const std::shared_ptr<const Catalog>& catalog) {
    for (auto _ : state) {
        Model::ResourceDictionary dictionary;
        try {
            Parsing::ParseLocFile(catalog->text, catalog->fileName, dictionary);
        } catch (const std::exception& error) {
            state.SkipWithError(error.what());
            break;
        }
        benchmark::DoNotOptimize(dictionary);
        // Freeing the entries is not parsing: keep it out of the measurement.
        state.PauseTiming();
        dictionary.clear();
        state.ResumeTiming();
    }
    const auto iterations = static_cast<std::int64_t>(state.iterations());
    state.SetBytesProcessed(iterations * static_cast<std::int64_t>(catalog->utf8Size));
    state.SetItemsProcessed(iterations * static_cast<std::int64_t>(catalog->entries));
    state.counters["entries"] = static_cast<double>(catalog->entries);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);

    const auto catalogPaths = LocalizationManager::Benchmarks::CatalogPaths(
        argc, argv, "bench_parse", LM_BENCH_DEFAULT_CATALOGS);
    if (!catalogPaths) {
        return 2;
    }
    const std::vector<std::string>& paths = *catalogPaths;

    for (const std::string& path : paths) {
        std::shared_ptr<const Catalog> catalog;
        try {
            catalog = LoadCatalog(path);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "bench_parse: %s: %s\n", path.c_str(), error.what());
            return 1;
        }
        benchmark::RegisterBenchmark(BenchmarkName(path).c_str(), ParseCatalog, catalog)
            ->Unit(benchmark::kMillisecond);
    }

    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
