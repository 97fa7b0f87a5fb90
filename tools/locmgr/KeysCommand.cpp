#include "CommandSupport.h"
#include "Commands.h"
#include "KeyHeader.h"
#include "TreeModel.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace locmgr {

namespace {

const OptionDefinition kNamespaceOption =
    Valued("--namespace", "NAME", "the namespace of the constants, SCOPE's inside it")
        .Default("keys");
const OptionDefinition kHeaderOption =
    Valued("--header", "FILE", "the header to write (default: standard output)");

int Run(const Options& options) {
    if (!options.Operands().empty()) {
        throw UsageError("keys takes no operands");
    }
    analysis::KeyHeaderOptions headerOptions;
    headerOptions.scope = options.Required(kScopeOption.name, "SCOPE");
    headerOptions.nameSpace = options.Value(kNamespaceOption.name);
    std::vector<std::string> cultures;
    headerOptions.reference = ReferenceOption(options, cultures);
    headerOptions.source =
        std::filesystem::path(options.Value(kRootOption.name)).filename().string();

    std::string header;
    std::size_t count = 0;
    std::string problem;
    const int status = RunOnTree("keys", [&] {
        const analysis::TreeModel model(options.Value(kRootOption.name),
                                        options.Value(kAltOption.name), cultures);
        try {
            const std::vector<analysis::KeyConstant> keys =
                analysis::KeyConstants(model, headerOptions);
            header = analysis::KeyHeader(keys, headerOptions);
            count = keys.size();
        } catch (const analysis::KeyHeaderError& error) {
            problem = error.what();
        }
    });
    if (status != kExitOk) {
        return status;
    }
    if (!problem.empty()) {
        std::cerr << "locmgr keys: " << problem << "\n";
        return kExitFailed;
    }
    const std::string path = options.Value(kHeaderOption.name);
    if (path.empty()) {
        std::cout << header;
        return kExitOk;
    }
    // An unchanged header keeps its time stamp, so that nothing is rebuilt for it.
    std::ifstream existing(path, std::ios::binary);
    if (existing && std::string(std::istreambuf_iterator<char>(existing),
                                std::istreambuf_iterator<char>()) == header) {
        std::cout << path << ": " << count << " keys of scope " << headerOptions.scope
                  << ", unchanged\n";
        return kExitOk;
    }
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out.write(header.data(), static_cast<std::streamsize>(header.size())) || !out.flush()) {
        std::cerr << "locmgr keys: cannot write " << path << "\n";
        return kExitFailed;
    }
    std::cout << path << ": " << count << " keys of scope " << headerOptions.scope << "\n";
    return kExitOk;
}

}  // namespace

const Command kKeysCommand{
    "keys",
    "write a C++ header with a constant for every key of a scope",
    "",
    R"(Writes a C++ header with one constant per key that a request of the scope may ask for:
the keys of the reference's file of the scope and of its common texts. Each constant is a
localization_manager::host::TextKey in the namespace NAME::SCOPE ("dialogs/save" is
NAME::dialogs::save) with the names of the parameters its texts ask for in any culture of
the tree, references expanded. With the host library,

  texts.Get(keys::download::summary, {{"count", 3}, {"folders", 2}})

does not compile for a misspelt key, and fails in every culture when a parameter that the
texts of some culture ask for is not given. kAll lists every constant, for tests. A key that
C++ reserves gets a "k" before it ("delete" is kdelete), and a character of a scope's name
that C++ does not allow is written as its code ("save-as" is save_u002Das). The header is
written again only when it changes.

Exit status: 0 the header was written (or is unchanged), 1 the reference's file of the scope
does not load or two keys would give one constant, 2 bad usage or an unreadable root.
)",
    {kRootOption, kAltOption, kScopeOption, kReferenceOption, kNamespaceOption, kHeaderOption},
    R"(  locmgr keys --root examples/localization --scope download --header download_keys.h
)",
    &Run,
};

}  // namespace locmgr
