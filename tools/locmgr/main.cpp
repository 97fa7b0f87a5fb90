// locmgr: the command-line tool for hosts and translators.
//
//   locmgr parse FILE...   parses localization files and prints their entries in canonical
//                          form, or the parse error report of each file that fails.
//
// Exit status: 0 all went well, 1 a file failed, 2 bad usage.

#include "StringLocalizing/Model/ValueFormat.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "ulo/rtl/TextConversion.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

void PrintUsage(std::ostream& out) {
    out << "usage: locmgr parse FILE...\n"
           "  parse   print the entries of localization files (.lt), or their parse errors\n";
}

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

int ParseFiles(const std::vector<std::string>& paths) {
    int status = kExitOk;
    for (const std::string& path : paths) {
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
            std::cerr << path << ": " << error.what() << "\n";
            status = kExitFailed;
        }
    }
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.empty() || arguments[0] == "--help" || arguments[0] == "-h") {
        PrintUsage(arguments.empty() ? std::cerr : std::cout);
        return arguments.empty() ? kExitUsage : kExitOk;
    }
    if (arguments[0] == "parse" && arguments.size() > 1) {
        return ParseFiles({arguments.begin() + 1, arguments.end()});
    }
    PrintUsage(std::cerr);
    return kExitUsage;
}
