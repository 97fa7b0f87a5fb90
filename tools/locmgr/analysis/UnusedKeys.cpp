#include "UnusedKeys.h"

#include "ClosestName.h"
#include "FileUse.h"
#include "KeyHeader.h"
#include "LocFile.h"
#include "SourceScan.h"
#include "ulo/rtl/TextConversion.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <tuple>

namespace locmgr::analysis {

namespace {

namespace fs = std::filesystem;

constexpr char kGeneratedMark[] = "Written by \"locmgr keys\"";

const std::set<std::string> kSourceExtensions{".c",   ".cc",  ".cpp", ".cxx", ".h", ".hh",
                                              ".hpp", ".hxx", ".inl", ".ipp", ".m", ".mm"};

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::vector<fs::path> SourceFiles(const std::vector<std::string>& sources) {
    std::vector<fs::path> files;
    for (const std::string& source : sources) {
        std::error_code error;
        if (fs::is_regular_file(source, error)) {
            files.emplace_back(source);
            continue;
        }
        if (!fs::is_directory(source, error)) {
            throw SourceError("no source file or folder '" + source + "'");
        }
        // Symbolic links to folders are not followed, so a loop cannot keep the search going.
        fs::recursive_directory_iterator iterator(
            source, fs::directory_options::skip_permission_denied, error);
        if (error) {
            throw SourceError("cannot list '" + source + "': " + error.message());
        }
        for (; !error && iterator != fs::recursive_directory_iterator();
             iterator.increment(error)) {
            std::error_code typeError;
            if (iterator->is_regular_file(typeError) &&
                kSourceExtensions.count(iterator->path().extension().string()) != 0) {
                files.push_back(iterator->path());
            }
        }
    }
    std::sort(files.begin(), files.end());
    files.erase(std::unique(files.begin(), files.end()), files.end());
    return files;
}

struct ReferenceKey {
    std::string written;
    std::string file;
    std::size_t line = 0;
    bool used = false;
};

}  // namespace

KeyUseResult FindKeyUses(const TreeModel& model, const std::string& reference,
                         const std::vector<std::string>& sources) {
    // Every key of the reference by scope, and the constants that name it.
    std::map<std::pair<std::string, std::string>, ReferenceKey> keys;  // (scope, lower key)
    std::map<std::string, std::vector<std::pair<std::string, std::string>>> byLowerKey;
    // By the constant's name, whole or without outer namespaces ("save::title").
    std::multimap<std::string, std::pair<std::string, std::string>> byConstant;
    std::vector<std::string> scopes;
    for (const std::string& scope : model.Inventory().scopes) {
        const std::u16string path = model.ReferenceFile(reference, scope);
        if (path.empty()) {
            continue;
        }
        const LocFile file(path);
        if (!file.Loadable()) {
            continue;  // "locmgr check" reports it
        }
        scopes.push_back(scope);
        for (const LocFile::IndexedEntry& entry : file.Entries()) {
            const std::string lower = ulo::WideToNarrowMessage(entry.lowerKey);
            keys[{scope, lower}] = {
                ulo::WideToNarrowMessage(entry.key), ulo::WideToNarrowMessage(path),
                static_cast<std::size_t>(EntryPosition(file, entry.lowerKey).line)};
            byLowerKey[lower].emplace_back(scope, lower);
        }
    }
    for (const std::string& scope : scopes) {
        for (const auto& [scopeAndKey, key] : keys) {
            // A scope's constants include the common texts' keys, which every scope reads.
            if (scopeAndKey.first == scope || scopeAndKey.first == kCommonScope) {
                // Sources may leave out outer namespaces: "dialogs::save::title" is also
                // "save::title" after a using-directive.
                const std::string constant =
                    ScopeNamespace(scope) + "::" + KeyIdentifier(ulo::Utf8ToWide(key.written));
                for (std::size_t from = 0;;) {
                    byConstant.emplace(constant.substr(from), scopeAndKey);
                    from = constant.find("::", from);
                    if (from == std::string::npos ||
                        constant.find("::", from + 2) == std::string::npos) {
                        break;
                    }
                    from += 2;
                }
            }
        }
    }
    std::vector<std::string> knownKeys;
    for (const auto& [scopeAndKey, key] : keys) {
        knownKeys.push_back(key.written);
    }

    KeyUseResult result;
    for (const fs::path& path : SourceFiles(sources)) {
        std::ifstream in(path, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(in),
                               std::istreambuf_iterator<char>()};
        if (text.find(kGeneratedMark) != std::string::npos) {
            continue;
        }
        ++result.sourceFiles;
        const SourceScan scan = ScanSource(text);
        for (const SourceLiteral& literal : scan.literals) {
            const auto found = byLowerKey.find(Lower(literal.text));
            if (found != byLowerKey.end()) {
                for (const auto& scopeAndKey : found->second) {
                    keys[scopeAndKey].used = true;
                }
            } else if (literal.requested) {
                const std::string closest = ClosestName(literal.text, knownKeys);
                result.unknown.push_back(
                    {path.string(), literal.line, literal.text,
                     "'" + literal.text + "' is asked for, and the reference has no such key" +
                         (closest.empty() ? std::string() : " (did you mean '" + closest + "'?)")});
            }
        }
        for (const SourceName& name : scan.names) {
            // The constant with any namespace before it: keys::download::title, ::app::keys::...
            for (std::size_t from = 0; from != std::string::npos;) {
                const auto [first, last] = byConstant.equal_range(name.name.substr(from));
                for (auto found = first; found != last; ++found) {
                    keys[found->second].used = true;
                }
                const std::size_t separator = name.name.find("::", from);
                from = separator == std::string::npos ? separator : separator + 2;
            }
        }
    }
    for (const auto& [scopeAndKey, key] : keys) {
        if (!key.used) {
            result.unused.push_back({key.file, key.line, key.written,
                                     "key '" + key.written + "' is used by no source file"});
        }
    }
    std::sort(result.unused.begin(), result.unused.end(),
              [](const KeyUseFinding& left, const KeyUseFinding& right) {
                  return std::tie(left.file, left.line) < std::tie(right.file, right.line);
              });
    return result;
}

}  // namespace locmgr::analysis
