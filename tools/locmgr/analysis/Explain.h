#pragma once

// "locmgr explain": how the runtime arrives at the text of one key in one scope and culture,
// step by step: the paths it tries, the files it reads, the key's operands after the engine's
// compiler has expanded its references, the plural rule in force with numbers for each form,
// and the parameters the application will be asked for.

#include "LocFile.h"
#include "PluralRule.h"
#include "RuleSamples.h"
#include "TreeModel.h"

#include <string>
#include <vector>

namespace locmgr::analysis {

struct ExplainedOperand {
    enum class Kind { kText, kReference, kParameter, kPlural } kind = Kind::kText;
    std::string text;                // kText: the text; kReference, kParameter, kPlural: the name
    std::vector<std::string> forms;  // kPlural: each form in file syntax
};

struct Explanation {
    std::string culture;  // folder-style name: "de-AT"
    std::string language;
    std::uint32_t languageId = 0;
    std::string firstSubtag;
    std::string secondSubtag;
    std::vector<Probe> scopeProbes;
    std::vector<Probe> commonProbes;
    std::u16string scopeFile;
    std::u16string commonFile;

    RuleInForce rule;
    FormSamples samples;  // numbers for each form of the rule

    std::string key;
    std::u16string definedIn;  // the file whose entry gives the key, empty when none does
    TextPosition position{0, 0, 0};
    std::string definition;                  // the entry as written in the file
    std::vector<ExplainedOperand> operands;  // compiled when the files compile, else as written
    bool compiled = false;
    std::vector<std::string> parameters;  // asked of the resolver, first use first
    // What would make the request fail: the runtime's message, as far as it can be known
    // without the parameters' values.
    std::vector<std::string> problems;
};

// `cultureName` as an application passes it ("de-AT", "anz"). Throws std::invalid_argument
// for an unknown culture name.
Explanation Explain(const TreeModel& model, const std::string& scope,
                    const std::string& cultureName, const std::string& key);

}  // namespace locmgr::analysis
