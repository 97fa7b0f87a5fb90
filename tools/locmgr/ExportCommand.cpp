#include "CheckSettings.h"
#include "CommandSupport.h"
#include "Commands.h"
#include "PoExport.h"
#include "TreeModel.h"
#include "TreeScan.h"

#include <iostream>
#include <stdexcept>
#include <string>

namespace locmgr {

namespace {

const OptionDefinition kOutOption =
    Valued("--out", "DIR", "where to write the catalogs (created; files of the same name replaced)")
        .Required();

int Run(const Options& options) {
    const std::string format = options.Value(kFormatOption.name);
    if (format != "po") {
        throw UsageError("unknown --format '" + format + "'; use po");
    }
    if (!options.Operands().empty()) {
        throw UsageError("export takes no operands");
    }
    analysis::PoExportOptions exportOptions;
    exportOptions.culture = options.Required(kCultureOption.name, "NAME");
    exportOptions.outputDirectory = options.Value(kOutOption.name);
    exportOptions.scopes = options.Values(kScopeOption.name);
    std::vector<std::string> cultures{exportOptions.culture};
    exportOptions.reference = ReferenceOption(options, cultures);

    std::vector<analysis::ExportedCatalog> catalogs;
    try {
        exportOptions.neutralLanguage =
            analysis::ReadCheckSettings(options.Value(kRootOption.name)).neutralLanguage;
        const analysis::TreeModel model(options.Value(kRootOption.name),
                                        options.Value(kAltOption.name), cultures);
        catalogs = analysis::ExportPo(model, exportOptions);
    } catch (const analysis::TreeError& error) {
        std::cerr << "locmgr export: " << error.what() << "\n";
        return kExitUsage;
    } catch (const analysis::SettingsError& error) {
        std::cerr << "locmgr export: " << error.what() << "\n";
        return kExitUsage;
    } catch (const std::invalid_argument& error) {
        throw UsageError(error.what());
    }
    bool failed = false;
    for (const analysis::ExportedCatalog& catalog : catalogs) {
        if (!catalog.problem.empty()) {
            failed = true;
            std::cout.flush();
            std::cerr << "locmgr export: scope " << catalog.scope
                      << " not written: " << catalog.problem << '\n';
            continue;
        }
        std::cout << catalog.output << ": " << catalog.units << " units, " << catalog.translated
                  << " translated\n";
    }
    return failed ? kExitFailed : kExitOk;
}

}  // namespace

const Command kExportCommand{
    "export",
    "write a culture's texts as translation catalogs (PO) for translation tools",
    "",
    R"(Writes, for one culture, a PO catalog per scope of the reference ("neutral", or --reference)
into DIR, as DIR/SCOPE.po, for PO editors, translation platforms and the GNU gettext tools.

Each key of the reference's file is a unit: the reference's text is the source, the text the
culture reads from its own file for the scope is the translation (empty when it has none, or
reads the reference's file), the key is the context, and the comments the reference's file
writes above the entry (and after it on its line) are notes for the translator.

Placeholders are in Python's brace format, which editors protect and "msgfmt -c" checks:
$name is {name}, a reference to the key name is {key.name}, and a literal brace is doubled.

A text with plural invocations becomes plural units whose forms are whole sentences: the
first parameter that chooses forms is the catalog's plural (the Plural-Forms header is the
culture's rule, built-in or from its rule file), and each choice of forms of the other such
parameters is a unit of its own, its context the key followed by "|name=form". A text that
would need more than 1024 sentences is not exported.

Exit status: 0 every catalog was written, 1 a scope could not be exported (its reason is
given), 2 bad usage or an unreadable root directory.
)",
    {kRootOption, kAltOption,
     kCultureOption.Describe("the culture to export, as an application names it"), kReferenceOption,
     kScopeOption.Describe("only this scope (repeatable)").Repeatable().Optional(), kOutOption,
     kFormatOption.Describe("po").Default("po")},
    R"(  locmgr export --root examples/localization --culture ru --out /tmp/ru-po
  msgfmt -c --check-format -o /dev/null /tmp/ru-po/download.po
)",
    &Run,
};

}  // namespace locmgr
