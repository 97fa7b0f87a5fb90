#include "PseudoTree.h"

#include "CultureFolder.h"
#include "LocFile.h"
#include "StringLocalizing/Model/CultureNames.h"
#include "StringLocalizing/Model/ValueFormat.h"
#include "ulo/ResultCode.h"
#include "ulo/rtl/TextConversion.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace locmgr::analysis {

namespace {

namespace fs = std::filesystem;
namespace Model = LocalizationManager::StringLocalizing::Model;

std::string Narrow(const std::u16string& text) {
    return ulo::WideToNarrowMessage(text);
}

const char* StyleName(PseudoStyle style) {
    switch (style) {
        case PseudoStyle::kLong:
            return "long";
        case PseudoStyle::kRtl:
            return "rtl";
        case PseudoStyle::kAccents:
            break;
    }
    return "accents";
}

// The file's entries, each with its texts pseudo-localized, in the syntax of the module's own
// writer, keys spelt as in the source.
std::string PseudoFileText(const LocFile& file, PseudoStyle style) {
    std::u16string text = u"; pseudo-localized (" + ulo::Utf8ToWide(StyleName(style)) + u") from " +
                          file.Path() + u"\n";
    for (const auto& [key, value] : *file.Dictionary()) {
        const LocFile::IndexedEntry* entry = file.FindEntry(key);
        text += entry != nullptr ? entry->key : key;
        text += u" = ";
        text += Model::FormatValue(PseudoValue(value, style));
        text += u'\n';
    }
    return ulo::WideToUtf8(text);
}

void RequireOutsideTree(const std::string& output, const std::u16string& root) {
    std::error_code error;
    const fs::path rootPath = fs::weakly_canonical(Narrow(root), error);
    const fs::path outputPath = fs::weakly_canonical(output, error);
    const auto [rootEnd, outputEnd] =
        std::mismatch(rootPath.begin(), rootPath.end(), outputPath.begin(), outputPath.end());
    if (rootEnd == rootPath.end()) {
        throw std::invalid_argument("the output directory '" + output +
                                    "' must not be the root directory or lie inside it");
    }
}

PseudoFile Write(const LocFile& file, const fs::path& output, PseudoStyle style) {
    PseudoFile written{file.Path(), output.generic_string(), 0, ""};
    if (!file.Loadable()) {
        written.problem = !file.ReadError().empty() ? file.ReadError()
                          : file.ParseError()       ? file.ParseError()->report
                                                    : "it defines a key twice";
        return written;
    }
    std::error_code error;
    fs::create_directories(output.parent_path(), error);
    std::ofstream stream(output, std::ios::binary | std::ios::trunc);
    stream << PseudoFileText(file, style);
    if (!stream.flush()) {
        throw std::runtime_error("cannot write '" + output.string() + "'");
    }
    written.keys = file.Dictionary()->size();
    return written;
}

}  // namespace

std::vector<PseudoFile> WritePseudoTree(const TreeModel& model, const PseudoOptions& options) {
    RequireOutsideTree(options.outputDirectory, model.Inventory().root);
    const fs::path output(options.outputDirectory);
    LocFileCache files;
    std::vector<PseudoFile> written;
    if (!options.culture) {
        for (const LocFileEntry& entry : model.Inventory().locFiles) {
            const CultureFolder& folder = model.Inventory().folders[entry.folder];
            if (folder.alternative) {
                continue;
            }
            written.push_back(Write(files.Get(entry.path),
                                    output / folder.name / "Locs" / (entry.scope + ".lt"),
                                    options.style));
        }
        return written;
    }
    localization_manager::Culture culture;
    if (ulo::Failed(Model::ConvertCultureName(*options.culture, culture))) {
        throw std::invalid_argument("unknown culture name '" + *options.culture + "'");
    }
    const std::string folder = CultureName(culture);
    std::vector<std::string> scopes = model.Inventory().scopes;
    if (std::find(scopes.begin(), scopes.end(), "common") == scopes.end()) {
        scopes.push_back("common");
    }
    for (const std::string& scope : scopes) {
        const std::u16string source = model.ServingFile(scope, culture);
        if (!source.empty()) {
            written.push_back(Write(files.Get(source), output / folder / "Locs" / (scope + ".lt"),
                                    options.style));
        }
    }
    return written;
}

}  // namespace locmgr::analysis
