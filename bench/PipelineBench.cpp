// Building the text engine of one scope from disk: read, parse and compile a scope of 10,000
// entries (the first lines of the generated catalog) over a common scope of 1,000 entries,
// through the real file resource provider, then resolve one key. Every iteration starts from
// an empty common dictionary, as the first request of a culture does.
//
//   bench_pipeline [benchmark flags]
//
// The tree is written into a temporary folder that is removed at exit; the files come from the
// page cache after the first iteration, so this measures the code, not the disk.

#include "File/FileResourceProvider.h"
#include "StringLocalizing/Pipeline/ResourceProcessingPipeline.h"

#include <boost/make_shared.hpp>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
namespace SL = LocalizationManager::StringLocalizing;

struct NoParameters : SL::Resolving::IParamResolver {
    std::u16string ResolveParam(const std::u16string&) override { return u"1"; }
};

// The first `count` lines of the catalog, with their keys renamed by `prefix` when given.
std::string CatalogLines(std::size_t count, const std::string& prefix) {
    std::ifstream catalog(LM_BENCH_CATALOG_10K);
    std::string line;
    std::ostringstream out;
    for (std::size_t index = 0; index < count && std::getline(catalog, line); ++index) {
        out << (prefix.empty() ? line : prefix + line.substr(line.find('_'))) << '\n';
    }
    return out.str();
}

class ExampleTree {
  public:
    ExampleTree()
        : root_(fs::temp_directory_path() / ("lm-bench-pipeline-" + std::to_string(::getpid()))) {
        fs::create_directories(root_ / "en" / "Locs");
        std::ofstream(root_ / "en" / "Locs" / "common.lt") << CatalogLines(1000, "common");
        std::ofstream(root_ / "en" / "Locs" / "catalog.lt") << CatalogLines(10000, "");
    }
    ~ExampleTree() { fs::remove_all(root_); }
    std::u16string Root() const { return root_.u16string(); }

  private:
    fs::path root_;
};

void BM_BuildPipeline(benchmark::State& state) {
    const ExampleTree tree;
    const auto provider =
        boost::make_shared<LocalizationManager::File::FileResourceProvider>(tree.Root(), u"");
    const auto params = boost::make_shared<NoParameters>();
    localization_manager::Culture culture;
    culture.languageId = 7;  // "en"
    for (auto _ : state) {
        const auto common = boost::make_shared<SL::Pipeline::CommonTexts>();
        const SL::Pipeline::ResourceProcessingPipeline pipeline(provider, params, common, culture,
                                                                u"catalog", u"common");
        benchmark::DoNotOptimize(pipeline.GetString(u"key_00042"));
    }
    state.counters["entries"] = 11000;
}
BENCHMARK(BM_BuildPipeline)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
