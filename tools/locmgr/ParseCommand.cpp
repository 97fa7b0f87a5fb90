#include "Commands.h"
#include "StringLocalizing/Model/ValueFormat.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "ulo/rtl/TextConversion.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

namespace locmgr {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

// Reads a UTF-8 file without its byte-order mark.
bool ReadUtf8File(const std::string& path, std::string& content) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return false;
    }
    content.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    if (content.compare(0, 3, "\xEF\xBB\xBF") == 0) {
        content.erase(0, 3);
    }
    return !file.bad();
}

int Run(const Options& options) {
    if (options.Operands().empty()) {
        throw UsageError("no FILE given");
    }
    int status = kExitOk;
    for (const std::string& path : options.Operands()) {
        std::string content;
        if (!ReadUtf8File(path, content)) {
            std::cerr << path << ": cannot read file\n";
            status = kExitFailed;
            continue;
        }
        try {
            Model::ResourceDictionary dictionary;
            Parsing::ParseLocFile(ulo::Utf8ToWide(content), ulo::Utf8ToWide(path), dictionary);
            std::cout << "# " << path << ": " << dictionary.size() << " entries\n"
                      << ulo::WideToUtf8(Model::FormatDictionary(dictionary));
        } catch (const std::exception& error) {
            std::cout.flush();
            std::cerr << path << ": " << error.what() << "\n";
            status = kExitFailed;
        }
    }
    return status;
}

}  // namespace

const Command kParseCommand{
    "parse",
    "check localization files (.lt) and print their entries",
    R"(usage: locmgr parse FILE...

Parses each localization file with the module's own parser, without loading the module, and
prints its entries in canonical form, or the parse error report (file, line, column, the line
and a caret under the fault) for a file that has a mistake.

Example:
  locmgr parse examples/localization/ru/Locs/download.lt
)",
    {},
    &Run,
};

}  // namespace locmgr
