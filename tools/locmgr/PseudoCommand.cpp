#include "CommandSupport.h"
#include "Commands.h"
#include "PseudoTree.h"
#include "TreeModel.h"
#include "ulo/rtl/TextConversion.h"

#include <iostream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace locmgr {

namespace {

const OptionDefinition kOutOption =
    Valued("--out", "ALTDIR", "where to write (created; existing files of the same name replaced)")
        .Required();
const OptionDefinition kStyleOption =
    Valued("--style", "STYLE", "accents, long or rtl (see Styles above)").Default("accents");

int Run(const Options& options) {
    const std::string root = options.Value(kRootOption.name);
    analysis::PseudoOptions pseudo;
    pseudo.outputDirectory = options.Value(kOutOption.name);
    if (options.Has(kCultureOption.name)) {
        pseudo.culture = options.Required(kCultureOption.name, "NAME");
    }
    const std::string styleName = options.Value(kStyleOption.name);
    const auto style = analysis::PseudoStyleOf(styleName);
    if (!style) {
        throw UsageError("unknown --style '" + styleName + "'; use accents, long or rtl");
    }
    pseudo.style = *style;
    const std::string format = FormatOption(options, {"text", "json"});
    if (!options.Operands().empty()) {
        throw UsageError("pseudo takes no operands");
    }

    std::vector<analysis::PseudoFile> files;
    try {
        const analysis::TreeModel model(root, "");
        files = analysis::WritePseudoTree(model, pseudo);
    } catch (const analysis::TreeError& error) {
        std::cerr << "locmgr pseudo: " << error.what() << "\n";
        return kExitUsage;
    } catch (const std::invalid_argument& error) {
        throw UsageError(error.what());
    }

    bool failed = false;
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const analysis::PseudoFile& file : files) {
        const std::string source = ulo::WideToNarrowMessage(file.source);
        failed = failed || !file.problem.empty();
        list.push_back({{"source", source},
                        {"output", file.problem.empty() ? nlohmann::ordered_json(file.output)
                                                        : nlohmann::ordered_json(nullptr)},
                        {"keys", file.keys},
                        {"problem", file.problem.empty() ? nlohmann::ordered_json(nullptr)
                                                         : nlohmann::ordered_json(file.problem)}});
        if (format == "text") {
            if (file.problem.empty()) {
                std::cout << file.output << ": " << file.keys << " keys from " << source << '\n';
            } else {
                std::cout.flush();
                std::cerr << source << ": not written: " << file.problem << '\n';
            }
        }
    }
    if (format == "json") {
        std::cout << nlohmann::ordered_json{{"schemaVersion", 1},
                                            {"root", root},
                                            {"output", pseudo.outputDirectory},
                                            {"style", styleName},
                                            {"files", list}}
                         .dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
                  << '\n';
    } else {
        std::cout << "use it as the alternative directory: --alt " << pseudo.outputDirectory
                  << '\n';
    }
    return failed ? kExitFailed : kExitOk;
}

}  // namespace

const Command kPseudoCommand{
    "pseudo",
    "write pseudo-localized texts to use as the alternative directory",
    "",
    R"(Writes a pseudo-localized copy of the texts into ALTDIR, laid out so that ALTDIR serves as the
alternative directory: an application run with it shows every text it takes from the
localization tree changed, so untranslated (built-in) texts and texts cut short by the layout
stand out, without any change to the application or the module.

Only literal text changes. References, parameters, plural invocations with their forms and
escapes stay as they are, so every file parses back to the same keys and "locmgr check" of the
root with ALTDIR as the alternative directory reports what it reports without it.

Without --culture, every culture folder of the root is copied, and every culture then reads
the copy of the very file it read before. With --culture, the files that culture reads are
written into its own folder of ALTDIR only (cultures below it, such as de-AT under de, see them
too). Files that do not parse are not copied; the exit status is then 1.

Styles:
  accents   [Ðöŵñļöåð]: letters replaced by accented look-alikes, each text bracketed
  long      the same, each text about 40 % longer (~~~), for layouts that must grow
  rtl       each text wrapped in a right-to-left override, to see mirrored layouts
)",
    {kRootOption, kOutOption,
     kCultureOption.Describe("only the texts this culture reads, as the application names it")
         .Optional(),
     kStyleOption, kFormatOption.Describe("text or json (the files written)")},
    R"(  locmgr pseudo --root examples/localization --out /tmp/pseudo
  locmgr get --root examples/localization --alt /tmp/pseudo --scope download --culture de title
)",
    &Run,
};

}  // namespace locmgr
