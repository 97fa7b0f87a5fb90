// What a host meets beyond the first text: parameters known only at run time, failures as
// values (the module's own lines say why), the UTF-16 string of the component interfaces, and
// a stream over a binary resource.
//   texts ROOT CULTURE
#include "localization_manager/host/Localization.h"
#include "ulo/ResultCode.h"

#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

namespace host = localization_manager::host;

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: texts ROOT CULTURE\n";
        return 2;
    }
    host::Failure failure;
    const host::Localization localization(LM_MODULE, argv[1], {}, failure);
    if (failure) {
        std::cerr << failure.Describe() << "\n";  // no module, or no such tree
        return 1;
    }
    const host::ScopeTexts texts = localization.Texts("download", argv[2]);

    // Each request has its own parameters; one ScopeTexts serves every thread.
    for (int count : {1, 3, 5}) {
        std::vector<host::Parameter> parameters{{"count", count}, {"folders", count + 1}};
        std::cout << texts.Get("summary", parameters) << "\n";
    }
    std::cout << texts.Get("progress", {{"fileName", "report.pdf"}, {"percent", 42}}) << "\n";

    // A failure as a value: the result code, its text, and what the module traced for it.
    texts.Get("no.such.key", {}, failure);
    std::cout << "failed as expected: " << failure.message << "\n";
    for (const std::string& line : failure.trace) {
        std::cout << "  module: " << line << "\n";
    }

    // The same failure as an exception.
    try {
        texts.Get("progress", {{"fileName", "report.pdf"}});  // $percent is missing
    } catch (const host::LocalizationError& error) {
        std::cout << "exception: " << error.failure().message << "\n";
    }

    // Without a conversion: the string the component interfaces use.
    const ulo::string16_t title = texts.GetUtf16("title");
    std::cout << "title: " << title.size() << " UTF-16 units\n";

    // A large resource is better read as a stream than whole.
    const host::InterfacePtr<ulo::IIO> icon = texts.OpenResource("icon.svg", failure);
    std::uint64_t size = 0;
    if (icon && ulo::Succeeded(icon->GetSize(&size))) {
        std::cout << "icon.svg: " << size << " bytes\n";
    }
    return 0;
}
