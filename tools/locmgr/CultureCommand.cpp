#include "CommandSupport.h"
#include "Commands.h"
#include "ModuleSession.h"
#include "StringLocalizing/Model/LanguageName.h"

#include <iostream>
#include <stdexcept>
#include <string>

namespace locmgr {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;

int Run(const Options& options) {
    if (options.Operands().empty()) {
        throw UsageError("no culture NAME given");
    }
    ModuleSession session(options.Value(kModuleOption.name));
    int status = kExitOk;
    for (const std::string& name : options.Operands()) {
        localization_manager::Culture culture;
        if (!ConvertCultureOrReport(session, name, culture)) {
            status = kExitFailed;
            continue;
        }
        std::string languageName;
        try {
            languageName = Model::LanguageName(culture.languageId);
        } catch (const std::range_error& error) {
            std::cerr << "locmgr: culture name '" << name << "': " << error.what() << "\n";
            status = kExitFailed;
            continue;
        }
        std::cout << name << '\t' << culture.languageId << '\t' << languageName << '\t'
                  << culture.firstSubtag.ToStdString() << '\t' << culture.secondSubtag.ToStdString()
                  << '\n';
    }
    return status;
}

}  // namespace

const Command kCultureCommand{
    "culture",
    "show how the module understands culture names",
    "NAME...",
    R"(Converts each culture NAME through the module's culture converter and prints one line per
name: the name, the language id, the language name, the first and the second subtag,
separated by tabs. Grouped names stand for a language and a subtag ("anz" is en + au).
)",
    {kModuleOption},
    "  locmgr culture ru en-US sr-Latn-RS anz\n",
    &Run,
};

}  // namespace locmgr
