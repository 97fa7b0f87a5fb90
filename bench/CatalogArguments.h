#pragma once

// The catalog files a benchmark runs on: the files on the command line (as FILE or
// --catalog=FILE), else the colon-separated list in LM_BENCH_CATALOG, else `defaults` (a
// list separated by ";"). Call after benchmark::Initialize, which removes its own flags.

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace LocalizationManager::Benchmarks {

inline std::vector<std::string> SplitList(const std::string& list, char separator) {
    std::vector<std::string> parts;
    std::stringstream stream(list);
    std::string part;
    while (std::getline(stream, part, separator)) {
        if (!part.empty()) {
            parts.push_back(part);
        }
    }
    return parts;
}

// Nothing (after a message on standard error naming `program`) for an unknown argument.
inline std::optional<std::vector<std::string>> CatalogPaths(int argc, char** argv,
                                                            const char* program,
                                                            const std::string& defaults) {
    std::vector<std::string> paths;
    for (int index = 1; index < argc; ++index) {
        const std::string_view argument = argv[index];
        constexpr std::string_view kCatalogFlag = "--catalog=";
        if (argument.substr(0, kCatalogFlag.size()) == kCatalogFlag) {
            paths.emplace_back(argument.substr(kCatalogFlag.size()));
        } else if (!argument.empty() && argument.front() != '-') {
            paths.emplace_back(argument);
        } else {
            std::fprintf(stderr, "%s: unknown argument %s\n", program, argv[index]);
            return std::nullopt;
        }
    }
    if (paths.empty()) {
        const char* list = std::getenv("LM_BENCH_CATALOG");
        paths = list != nullptr && *list != 0 ? SplitList(list, ':') : SplitList(defaults, ';');
    }
    return paths;
}

}  // namespace LocalizationManager::Benchmarks
