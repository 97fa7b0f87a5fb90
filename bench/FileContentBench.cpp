// Throughput of reading localization files: GetFileContent on a file on disk (open, read,
// decode, trim), and the UTF-8 decoder alone on the same bytes in memory.
//
//   bench_file_content [benchmark flags] [--catalog=FILE]... [FILE]...
//
// Sources are chosen as by bench_parse: files on the command line, else the colon-separated
// list in LM_BENCH_CATALOG, else the 100,000-entry catalog generated into the build tree (about
// 6 MB). Each source is copied, behind a byte-order mark, into a fresh temporary folder that is
// removed at exit, so the file read is a real file of our own. A text in scripts outside Latin
// (two-, three- and four-byte sequences) is added for the decoder, whose fast path is ASCII.
// The file reads come from the page cache after the first iteration: this measures the
// code, not the disk. Bytes per second refer to the UTF-8 size.

#include "CatalogArguments.h"
#include "File/FileStream.h"
#include "ulo/rtl/TextConversion.h"
#include "ulo/rtl/Utf8Decoder.h"

#include <benchmark/benchmark.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct Source {
    std::string name;   // for the benchmark names
    std::string bytes;  // the file's content, mark included
    std::u16string path;
};

std::string ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot open " + path);
    }
    return std::string{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteBytes(const fs::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

// A temporary folder, removed with the object.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string pattern = (fs::temp_directory_path() / "lm-bench-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw std::system_error(errno, std::generic_category(), "mkdtemp");
        }
        path_ = pattern;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const fs::path& Path() const { return path_; }

  private:
    fs::path path_;
};

// "…/catalog-100k.lt" -> "catalog-100k"
std::string StemOf(const std::string& path) {
    return fs::path(path).stem().string();
}

// About `size` bytes of entries whose texts are in scripts outside Latin, one script a line as
// in a file of one language: Cyrillic and Greek (two-byte sequences), Chinese, Japanese and
// Korean (three bytes), and Latin with emoji (one to four bytes). ASCII only for keys, spaces
// and quotes.
std::string NonLatinText(std::size_t size) {
    static const std::vector<std::vector<std::string>> kScripts = {
        {"Файл", "сохранить", "настройки", "загрузка", "папка", "удалить"},
        {"Ρυθμίσεις", "αρχείο", "φάκελος", "λήψη"},
        {"文件", "保存", "设置", "下载", "删除", "打开"},
        {"ダウンロード", "ファイル", "設定", "保存"},
        {"파일", "저장", "설정", "다운로드"},
        {"Größe", "café", "\xF0\x9F\x93\x81", "\xF0\x9F\x92\xBE", "ok"},
    };
    std::string text;
    std::uint64_t state = 0x9E3779B97F4A7C15u;
    const auto next = [&state](std::size_t bound) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::size_t>(state >> 33) % bound;
    };
    for (int line = 0; text.size() < size; ++line) {
        const std::vector<std::string>& words = kScripts[next(kScripts.size())];
        text += "key_" + std::to_string(line) + " = '";
        for (int word = 0; word < 6; ++word) {
            text += words[next(words.size())];
            text += word < 5 ? " " : "'\n";
        }
    }
    return text;
}

void ReadFileContent(benchmark::State& state, const std::shared_ptr<const Source>& source) {
    for (auto _ : state) {
        try {
            std::u16string text = LocalizationManager::File::GetFileContent(source->path);
            benchmark::DoNotOptimize(text.data());
        } catch (const std::exception& error) {
            state.SkipWithError(error.what());
            break;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(source->bytes.size()));
}

void DecodeUtf8(benchmark::State& state, const std::shared_ptr<const Source>& source) {
    const std::string_view bytes = std::string_view(source->bytes).substr(kByteOrderMark.size());
    std::u16string output(bytes.size(), u'\0');
    for (auto _ : state) {
        const std::size_t units =
            ulo::DecodeUtf8(bytes.data(), bytes.size(), &output[0], output.size());
        benchmark::DoNotOptimize(units);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(bytes.size()));
}

// The project's general-purpose converter (Boost's Unicode iterators), for comparison.
void Utf8ToWide(benchmark::State& state, const std::shared_ptr<const Source>& source) {
    const std::string bytes = source->bytes.substr(kByteOrderMark.size());
    for (auto _ : state) {
        std::u16string text = ulo::Utf8ToWide(bytes);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(bytes.size()));
}

std::shared_ptr<const Source> MakeSource(const TemporaryFolder& folder, const std::string& name,
                                         const std::string& text) {
    auto source = std::make_shared<Source>();
    source->name = name;
    source->bytes = std::string(kByteOrderMark) + text;
    const fs::path path = folder.Path() / (name + ".lt");
    WriteBytes(path, source->bytes);
    source->path = ulo::Utf8ToWide(path.string());
    return source;
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);

    const auto catalogPaths = LocalizationManager::Benchmarks::CatalogPaths(
        argc, argv, "bench_file_content", LM_BENCH_DEFAULT_CATALOG);
    if (!catalogPaths) {
        return 2;
    }
    const std::vector<std::string>& paths = *catalogPaths;

    std::unique_ptr<TemporaryFolder> folder;
    std::vector<std::shared_ptr<const Source>> sources;
    try {
        folder = std::make_unique<TemporaryFolder>();
        for (const std::string& path : paths) {
            sources.push_back(MakeSource(*folder, StemOf(path), ReadBytes(path)));
        }
        sources.push_back(MakeSource(*folder, "non-latin", NonLatinText(6u << 20)));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_file_content: %s\n", error.what());
        return 1;
    }

    for (const auto& source : sources) {
        benchmark::RegisterBenchmark(("GetFileContent/" + source->name).c_str(), ReadFileContent,
                                     source)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("DecodeUtf8/" + source->name).c_str(), DecodeUtf8, source)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("Utf8ToWide/" + source->name).c_str(), Utf8ToWide, source)
            ->Unit(benchmark::kMillisecond);
    }

    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
