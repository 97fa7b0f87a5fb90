#include "CommandSupport.h"
#include "Commands.h"
#include "Explain.h"
#include "ExplainOutput.h"
#include "TreeModel.h"

#include <iostream>
#include <stdexcept>
#include <string>

namespace locmgr {

namespace {

int Run(const Options& options) {
    const std::string root = options.Value(kRootOption.name);
    const std::string scope = options.Value(kScopeOption.name);
    const std::string culture = options.Value(kCultureOption.name);
    const std::string format = FormatOption(options, {"text", "json"});
    if (options.Operands().size() != 1) {
        throw UsageError("explain needs exactly one KEY");
    }
    try {
        const analysis::TreeModel model(root, options.Value(kAltOption.name));
        const analysis::Explanation explanation =
            analysis::Explain(model, scope, culture, options.Operands().front());
        if (format == "json") {
            analysis::WriteExplanationJson(std::cout, explanation);
        } else {
            analysis::WriteExplanationText(std::cout, explanation);
        }
        return explanation.problems.empty() ? kExitOk : kExitFailed;
    } catch (const analysis::TreeError& error) {
        std::cerr << "locmgr explain: " << error.what() << "\n";
        return kExitUsage;
    } catch (const std::invalid_argument& error) {
        throw UsageError(error.what());
    }
}

}  // namespace

const Command kExplainCommand{
    "explain",
    "show how the module finds and builds the text of a key",
    "KEY",
    R"(Shows, for one key of one scope in one culture, what the module does, without loading it:
  - the culture as the module understands the name, and the paths it tries for the common
    texts and for the scope's file, in order, with the one it reads;
  - the plural rule in force (built in, or which Plural.rule), its forms and numbers that
    select each form;
  - the file and line that define the key, the entry as written, and its operands after the
    module's compiler has expanded the references (texts, parameters, plural invocations
    with their forms);
  - the parameters the application will be asked for;
  - what would make the request fail, in the module's words.

The exit status is 1 when the request would fail whatever the parameters are.
)",
    {kRootOption, kAltOption, kScopeOption,
     kCultureOption.Describe("the culture, as the application names it (\"de-AT\", \"anz\")"),
     kFormatOption.Describe("text or json")},
    "  locmgr explain --root examples/localization --scope download --culture ru status\n",
    &Run,
};

}  // namespace locmgr
