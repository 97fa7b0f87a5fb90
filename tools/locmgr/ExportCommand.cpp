#include "CatalogExport.h"
#include "CheckSettings.h"
#include "CommandSupport.h"
#include "Commands.h"
#include "PoCatalog.h"
#include "TreeModel.h"
#include "TreeScan.h"
#include "XliffCatalog.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace locmgr {

namespace {

const OptionDefinition kOutOption =
    Valued("--out", "DIR", "where to write the catalogs (created; files of the same name replaced)")
        .Required();

// The catalog in `format`; throws analysis::UnwritableText.
std::string Document(const analysis::Catalog& catalog, const std::string& format) {
    if (format == "xliff") {
        return analysis::XliffDocument(catalog);
    }
    std::ostringstream out;
    analysis::WritePo(out, catalog);
    return out.str();
}

int Run(const Options& options) {
    const std::string format = FormatOption(options, {"po", "xliff"});
    if (!options.Operands().empty()) {
        throw UsageError("export takes no operands");
    }
    analysis::CatalogExportOptions exportOptions;
    exportOptions.culture = options.Required(kCultureOption.name, "NAME");
    exportOptions.scopes = options.Values(kScopeOption.name);
    std::vector<std::string> cultures{exportOptions.culture};
    exportOptions.reference = ReferenceOption(options, cultures);

    std::vector<analysis::ExportedCatalog> catalogs;
    const int status = RunOnTree("export", [&] {
        exportOptions.neutralLanguage =
            analysis::ReadCheckSettings(options.Value(kRootOption.name)).neutralLanguage;
        const analysis::TreeModel model(options.Value(kRootOption.name),
                                        options.Value(kAltOption.name), cultures);
        catalogs = analysis::ExportCatalogs(model, exportOptions);
    });
    if (status != kExitOk) {
        return status;
    }

    const std::filesystem::path directory(options.Value(kOutOption.name));
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    bool failed = false;
    for (analysis::ExportedCatalog& exported : catalogs) {
        const analysis::Catalog& catalog = exported.catalog;
        const std::string file =
            (directory / (catalog.scope + (format == "xliff" ? ".xlf" : ".po"))).string();
        if (exported.problem.empty()) {
            try {
                const std::string document = Document(catalog, format);
                std::ofstream out(file, std::ios::binary | std::ios::trunc);
                if (!out.write(document.data(), static_cast<std::streamsize>(document.size())) ||
                    !out.flush()) {
                    exported.problem = "cannot write " + file;
                }
            } catch (const analysis::UnwritableText& unwritable) {
                exported.problem = unwritable.what();
            }
        }
        if (!exported.problem.empty()) {
            failed = true;
            std::cout.flush();
            std::cerr << "locmgr export: scope " << catalog.scope
                      << " not written: " << exported.problem << '\n';
            continue;
        }
        const auto translated =
            std::count_if(catalog.units.begin(), catalog.units.end(),
                          [](const analysis::CatalogUnit& unit) { return !unit.targets.empty(); });
        std::cout << file << ": " << catalog.units.size() << " units, " << translated
                  << " translated\n";
    }
    return failed ? kExitFailed : kExitOk;
}

}  // namespace

const Command kExportCommand{
    "export",
    "write a culture's texts as translation catalogs (PO or XLIFF) for translation tools",
    "",
    R"(Writes, for one culture, a catalog per scope of the reference ("neutral", or --reference)
into DIR: DIR/SCOPE.po (GNU gettext PO) or, with --format xliff, DIR/SCOPE.xlf (XLIFF 1.2),
for PO editors, translation platforms, CAT tools and the GNU gettext tools.

Each key of the reference's file is a unit: the reference's text is the source, the text the
culture reads from its own file for the scope is the translation (empty and untranslated when
it has none, or reads the reference's file), the key is the context, and the comments the
reference's file writes above the entry (and after it on its line) are notes.

Placeholders are in Python's brace format, which editors protect and "msgfmt -c" checks:
$name is {name}, a reference to the key name is {key.name}, and a literal brace is doubled.
In XLIFF each placeholder is a <ph> element holding that text.

A text with plural invocations becomes plural units whose forms are whole sentences: the
first parameter that chooses forms is the catalog's plural (the Plural-Forms header is the
culture's rule, built-in or from its rule file; in XLIFF a group of one unit per form), and
each choice of forms of the other such parameters is a unit of its own, its context the key
followed by "|name=form". A text that would need more than 1024 sentences is not exported.

Exit status: 0 every catalog was written, 1 a scope could not be exported (its reason is
given), 2 bad usage or an unreadable root directory.
)",
    {kRootOption, kAltOption,
     kCultureOption.Describe("the culture to export, as an application names it"), kReferenceOption,
     kScopeOption.Describe("only this scope (repeatable)").Repeatable().Optional(), kOutOption,
     kFormatOption.Describe("po or xliff").Default("po")},
    R"(  locmgr export --root examples/localization --culture ru --out /tmp/ru-po
  msgfmt -c --check-format -o /dev/null /tmp/ru-po/download.po
  locmgr export --root examples/localization --culture ru --out /tmp/ru-xliff --format xliff
)",
    &Run,
};

}  // namespace locmgr
