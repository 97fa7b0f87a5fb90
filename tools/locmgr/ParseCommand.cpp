#include "Commands.h"
#include "File/FileStream.h"
#include "StandardInput.h"
#include "StringLocalizing/Model/ValueFormat.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "ulo/rtl/TextConversion.h"

#include <algorithm>
#include <iostream>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

namespace locmgr {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

// The name that files read from standard input go by in the output and the reports.
constexpr char kStandardInputLabel[] = "<stdin>";

// The text of `operand` as the module reads a file (File::GetFileContent): a FIFO, device or
// directory is refused at once, malformed UTF-8 reads as U+FFFD, trailing NULs are dropped;
// "-" is standard input, decoded alike. On failure says why on standard error, in the
// module's words, naming the file `path`, and returns false.
bool ReadTextOrReport(const std::string& operand, const std::string& path,
                      const std::u16string& widePath, std::u16string& text) {
    try {
        text = operand == kStandardInputName ? ReadStandardInputText()
                                             : LocalizationManager::File::GetFileContent(widePath);
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
    const std::vector<std::string>& operands = options.Operands();
    if (operands.empty()) {
        throw UsageError("no FILE given");
    }
    if (std::count(operands.begin(), operands.end(), kStandardInputName) > 1) {
        throw UsageError("standard input ('-') can be read only once");
    }
    int status = kExitOk;
    for (const std::string& operand : operands) {
        const std::string path = operand == kStandardInputName ? kStandardInputLabel : operand;
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
        if (!ReadTextOrReport(operand, path, widePath, text)) {
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
    "FILE...",
    R"(Reads each localization file as the module does (UTF-8 with or without a byte-order mark,
malformed sequences as U+FFFD, NULs at the end dropped; only regular files, so a FIFO or a
device is refused at once), parses it with the module's own parser, without loading the
module, and prints its entries in canonical form, or the parse error report (file, line,
column, the line and a caret under the fault) for a file that has a mistake. A file the
module cannot read is reported with the module's message.

FILE "-" is standard input, decoded as the module decodes a file and named <stdin> in the
output; it may be a pipe or a terminal.
)",
    {},
    R"(  locmgr parse examples/localization/ru/Locs/download.lt
  sed 's/Загрузка/Скачивание/' examples/localization/ru/Locs/download.lt | locmgr parse -
)",
    &Run,
};

}  // namespace locmgr
