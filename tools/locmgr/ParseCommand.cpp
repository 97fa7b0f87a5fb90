#include "Commands.h"
#include "File/FileStream.h"
#include "StringLocalizing/Model/ValueFormat.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "ulo/rtl/TextConversion.h"

#include <iostream>
#include <new>
#include <stdexcept>
#include <string>

namespace locmgr {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

// The file's text as the module reads it (File::GetFileContent): a FIFO, device or directory
// is refused at once, malformed UTF-8 reads as U+FFFD, trailing NULs are dropped. On failure
// says why on standard error, in the module's words, and returns false.
bool ReadTextOrReport(const std::string& path, const std::u16string& widePath,
                      std::u16string& text) {
    try {
        text = LocalizationManager::File::GetFileContent(widePath);
        return true;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        std::cout.flush();
        std::cerr << path << ": cannot read the file: " << error.what() << "\n";
        return false;
    }
}

int Run(const Options& options) {
    if (options.Operands().empty()) {
        throw UsageError("no FILE given");
    }
    int status = kExitOk;
    for (const std::string& path : options.Operands()) {
        // A path that is not UTF-8 cannot name a file for the module either.
        std::u16string widePath;
        try {
            widePath = ulo::Utf8ToWide(path);
        } catch (const std::out_of_range& error) {
            std::cerr << path << ": cannot read the file: " << error.what() << "\n";
            status = kExitFailed;
            continue;
        }
        std::u16string text;
        if (!ReadTextOrReport(path, widePath, text)) {
            status = kExitFailed;
            continue;
        }
        try {
            Model::ResourceDictionary dictionary;
            Parsing::ParseLocFile(text, widePath, dictionary);
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

Reads each localization file as the module does (UTF-8 with or without a byte-order mark,
malformed sequences as U+FFFD, NULs at the end dropped; only regular files, so a FIFO or a
device is refused at once), parses it with the module's own parser, without loading the
module, and prints its entries in canonical form, or the parse error report (file, line,
column, the line and a caret under the fault) for a file that has a mistake. A file the
module cannot read is reported with the module's message.

Example:
  locmgr parse examples/localization/ru/Locs/download.lt
)",
    {},
    &Run,
};

}  // namespace locmgr
