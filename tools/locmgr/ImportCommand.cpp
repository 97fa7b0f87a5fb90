#include "CatalogImport.h"
#include "CatalogReading.h"
#include "CheckSettings.h"
#include "CommandSupport.h"
#include "Commands.h"
#include "TreeModel.h"
#include "TreeScan.h"

#include <iostream>
#include <stdexcept>
#include <string>

namespace locmgr {

namespace {

const OptionDefinition kInOption =
    Valued("--in", "FILE", "a catalog to import, PO or XLIFF (repeatable)").Required().Repeatable();

int Run(const Options& options) {
    if (!options.Operands().empty()) {
        throw UsageError("import takes no operands");
    }
    analysis::CatalogExportOptions importOptions;
    importOptions.culture = options.Required(kCultureOption.name, "NAME");
    std::vector<std::string> cultures{importOptions.culture};
    importOptions.reference = ReferenceOption(options, cultures);

    std::vector<analysis::ImportedCatalog> catalogs;
    for (const std::string& path : options.Values(kInOption.name)) {
        try {
            catalogs.push_back(analysis::ReadCatalog(path));
        } catch (const analysis::CatalogReadError& error) {
            std::cerr << "locmgr import: " << error.what() << "\n";
            return kExitFailed;
        }
    }
    analysis::ImportResult result;
    const int status = RunOnTree("import", [&] {
        importOptions.neutralLanguage =
            analysis::ReadCheckSettings(options.Value(kRootOption.name)).neutralLanguage;
        const analysis::TreeModel model(options.Value(kRootOption.name),
                                        options.Value(kAltOption.name), cultures);
        result = analysis::ImportCatalogs(model, importOptions, catalogs);
    });
    if (status != kExitOk) {
        return status;
    }
    for (const analysis::ImportedScope& scope : result.scopes) {
        std::cout << scope.catalog << ": ";
        if (scope.file.empty()) {
            std::cout << "scope " << scope.scope << " unchanged";
        } else {
            std::cout << scope.file << " written, " << scope.changed << " texts changed, "
                      << scope.added << " added";
        }
        if (scope.untranslated > 0) {
            std::cout << " (" << scope.untranslated << " untranslated texts left as they were)";
        }
        std::cout << "\n";
    }
    std::cout.flush();
    for (const analysis::ImportProblem& problem : result.problems) {
        std::cerr << "locmgr import: " << problem.catalog << ": "
                  << (problem.unit.empty() ? std::string() : "unit '" + problem.unit + "': ")
                  << problem.message << "\n";
    }
    return result.problems.empty() ? kExitOk : kExitFailed;
}

}  // namespace

const Command kImportCommand{
    "import",
    "write translations from PO or XLIFF catalogs back into a culture's files",
    "",
    R"(Reads catalogs that "locmgr export" wrote and translators filled in, and writes their
translations into the culture's own files.

Each catalog belongs to the scope its header names (PO Project-Id-Version, XLIFF original),
or else the scope its file is named after. A text whose translations equal what the culture
reads today is left as it is, byte for byte. A changed text is rebuilt from its whole
sentences, the words and placeholders all its forms share written once outside the plural
invocation, and replaces the old value in place: the order of the entries, the comments and
the blank lines stay. A text the culture's file lacks is added after the text the reference
puts before it. When the culture has no file of its own for the scope, its file starts as a
copy of the file it reads today, so that every text it serves stays served.

Untranslated units (empty, or fuzzy in PO, or in state "new" or "needs-translation" in
XLIFF) leave their text as it was. A catalog is refused as a whole, and nothing of it is
written, when a translation drops a placeholder of its source or adds one the source does
not have, when a text is malformed (a lone brace), when a plural unit has another number of
forms than the culture's rule, or when only some units of a text are translated.

Exit status: 0 every catalog was imported, 1 a catalog could not be read or was refused (the
file and unit are named), 2 bad usage or an unreadable root directory.
)",
    {kRootOption, kAltOption,
     kCultureOption.Describe("the culture whose files receive the translations"),
     kReferenceOption.Describe("the culture the catalogs were exported against"), kInOption},
    R"(  locmgr export --root examples/localization --culture ru --out /tmp/ru-po
  msgfilter -i /tmp/ru-po/download.po -o /tmp/ru-po/download.po sed -e 's/Загрузка/Скачивание/'
  locmgr import --root examples/localization --culture ru --in /tmp/ru-po/download.po
)",
    &Run,
};

}  // namespace locmgr
