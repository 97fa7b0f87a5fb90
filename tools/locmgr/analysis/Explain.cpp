#include "Explain.h"

#include "CultureFolder.h"
#include "StringLocalizing/Model/CultureNames.h"
#include "StringLocalizing/Model/KeyCase.h"
#include "StringLocalizing/Model/KeyNotFoundException.h"
#include "StringLocalizing/Model/LanguageName.h"
#include "StringLocalizing/Model/ValueFormat.h"
#include "StringLocalizing/Parsing/DuplicateKeyException.h"
#include "StringLocalizing/Pipeline/PipelineSteps.h"
#include "StringLocalizing/Resolving/PluralFormCountException.h"
#include "StringLocalizing/Resolving/UnexpandedReferenceException.h"
#include "ValueWalk.h"
#include "ulo/ResultCode.h"
#include "ulo/rtl/MessageError.h"
#include "ulo/rtl/TextConversion.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <stdexcept>

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;
namespace Pipeline = LocalizationManager::StringLocalizing::Pipeline;
namespace Resolving = LocalizationManager::StringLocalizing::Resolving;

constexpr std::size_t kSamplesPerForm = 8;

std::string Narrow(const std::u16string& text) {
    return ulo::WideToNarrowMessage(text);
}

std::u16string FirstExisting(const std::vector<Probe>& probes) {
    for (const Probe& probe : probes) {
        if (probe.exists) {
            return probe.path;
        }
    }
    return std::u16string();
}

std::vector<ExplainedOperand> Operands(const Model::Value& value) {
    std::vector<ExplainedOperand> operands;
    for (const Model::Operand& operand : value.operands) {
        ExplainedOperand explained;
        if (const auto* text = boost::get<std::u16string>(&operand)) {
            explained.text = Narrow(*text);
        } else if (const auto* reference = boost::get<Model::KeyRef>(&operand)) {
            explained.kind = ExplainedOperand::Kind::kReference;
            explained.text = Narrow(reference->key);
        } else if (const auto* param = boost::get<Model::Param>(&operand)) {
            explained.kind = ExplainedOperand::Kind::kParameter;
            explained.text = Narrow(param->name);
        } else if (const auto* plural = boost::get<Model::PluralForm>(&operand)) {
            explained.kind = ExplainedOperand::Kind::kPlural;
            explained.text = Narrow(plural->param);
            for (const Model::Value& form : plural->forms) {
                explained.forms.push_back(Narrow(Model::FormatValue(form)));
            }
        }
        operands.push_back(explained);
    }
    return operands;
}

// The entry as it stands in the file, from its key to the end of its value.
std::string Definition(const LocFile& file, const LocFile::IndexedEntry& entry) {
    return Narrow(file.Text().substr(entry.span.begin.offset,
                                     entry.span.end.offset - entry.span.begin.offset));
}

// Compiles the culture's common texts and the scope's texts as the runtime's pipeline does,
// and gives the key's value from the scope, else from the common texts.
class KeyCompilation {
  public:
    KeyCompilation(const LocFile* scope, const LocFile* common) {
        common_ = boost::make_shared<Model::ResourceDictionary>();
        scope_ = boost::make_shared<Model::ResourceDictionary>();
        if (common != nullptr && common->Dictionary()) {
            *common_ = *common->Dictionary();
        }
        if (scope != nullptr && scope->Dictionary()) {
            *scope_ = *scope->Dictionary();
        }
        // Each step as the runtime's pipeline takes it: the common texts first, whole, then
        // the scope's texts over them.
        try {
            Pipeline::CompileCommonTexts(common_);
            Pipeline::CompileScopeTexts(scope_, common_);
            compiled_ = true;
        } catch (const std::exception& error) {
            // The runtime fails every key of the scope with this message; the texts are shown
            // as far as they were expanded.
            error_ = ulo::FullMessage(error);
        }
    }

    const Model::Value* Find(const std::u16string& lowerKey, bool& inScope) const {
        if (const auto found = scope_->find(lowerKey); found != scope_->end()) {
            inScope = true;
            return &found->second;
        }
        inScope = false;
        const auto found = common_->find(lowerKey);
        return found != common_->end() ? &found->second : nullptr;
    }

    bool Compiled() const { return compiled_; }
    const std::string& Error() const { return error_; }

  private:
    boost::shared_ptr<Model::ResourceDictionary> common_;
    boost::shared_ptr<Model::ResourceDictionary> scope_;
    bool compiled_ = false;
    std::string error_;
};

void ExplainKey(Explanation& explanation, const LocFile* scopeFile, const LocFile* commonFile,
                const std::string& key) {
    for (const LocFile* file : {scopeFile, commonFile}) {
        if (file != nullptr && !file->Loadable()) {
            explanation.problems.push_back(
                Narrow(file->Path()) + ": " +
                (!file->ReadError().empty() ? file->ReadError()
                 : file->ParseError()
                     ? file->ParseError()->report
                     : Parsing::DuplicateKeyException(file->Duplicates().front().lowerKey)
                           .Message()));
        }
    }
    const KeyCompilation compilation(scopeFile, commonFile);
    if (!compilation.Compiled()) {
        explanation.problems.push_back(compilation.Error());
    }
    explanation.compiled = compilation.Compiled();
    const std::u16string lowerKey = Model::LowerCaseKey(ulo::Utf8ToWide(key));
    bool inScope = false;
    const Model::Value* value = compilation.Find(lowerKey, inScope);
    if (value == nullptr) {
        explanation.problems.push_back(Model::KeyNotFoundException(lowerKey).Message());
        return;
    }
    const LocFile* definingFile = inScope ? scopeFile : commonFile;
    explanation.definedIn = definingFile->Path();
    if (const LocFile::IndexedEntry* entry = definingFile->FindEntry(lowerKey)) {
        explanation.position = definingFile->PositionOf(entry->keySpan.begin);
        explanation.definition = Definition(*definingFile, *entry);
    }
    explanation.operands = Operands(*value);
    for (const std::u16string& name : ParameterNames(*value)) {
        const std::string narrow = Narrow(name);
        if (std::find(explanation.parameters.begin(), explanation.parameters.end(), narrow) ==
            explanation.parameters.end()) {
            explanation.parameters.push_back(narrow);
        }
    }
    if (!explanation.rule.Usable()) {
        return;
    }
    for (const Model::PluralForm* plural : PluralInvocations(*value)) {
        if (plural->forms.size() != explanation.rule.FormCount()) {
            explanation.problems.push_back(
                Resolving::PluralFormCountException(
                    static_cast<std::uint16_t>(explanation.rule.FormCount()),
                    static_cast<std::uint16_t>(plural->forms.size()), plural->param)
                    .what());
        }
    }
    for (const ReferenceUse& reference : References(*value)) {
        if (reference.insidePlural) {
            explanation.problems.push_back(
                std::string(Resolving::UnexpandedReferenceException(reference.key).what()) +
                " (when that form is chosen)");
        }
    }
}

}  // namespace

Explanation Explain(const TreeModel& model, const std::string& scope,
                    const std::string& cultureName, const std::string& key) {
    localization_manager::Culture culture;
    if (ulo::Failed(Model::ConvertCultureName(cultureName, culture))) {
        throw std::invalid_argument("unknown culture name '" + cultureName + "'");
    }
    Explanation explanation;
    explanation.culture = CultureName(culture);
    explanation.languageId = culture.languageId;
    explanation.language = Model::LanguageName(culture.languageId);
    explanation.firstSubtag = culture.firstSubtag.ToStdString();
    explanation.secondSubtag = culture.secondSubtag.ToStdString();
    explanation.key = key;
    explanation.scopeProbes = model.ProbeScope(scope, culture);
    explanation.commonProbes = model.ProbeScope("common", culture);
    explanation.scopeFile = FirstExisting(explanation.scopeProbes);
    explanation.commonFile = FirstExisting(explanation.commonProbes);

    explanation.rule = RuleFor(model.Provider(), culture);
    if (explanation.rule.Usable()) {
        explanation.samples = ClassifyNumbers(
            explanation.rule.entries, SampleNumbers(explanation.rule.fileText), kSamplesPerForm);
    } else {
        explanation.problems.push_back(explanation.rule.failure);
    }
    // The runtime reads the common texts first: without them nothing else matters.
    if (explanation.commonFile.empty()) {
        explanation.problems.push_back("cannot find localization file 'common.lt'");
        return explanation;
    }
    if (explanation.scopeFile.empty()) {
        explanation.problems.push_back("cannot find localization file '" + scope + ".lt'");
        return explanation;
    }
    LocFileCache files;
    ExplainKey(explanation, &files.Get(explanation.scopeFile), &files.Get(explanation.commonFile),
               key);
    return explanation;
}

}  // namespace locmgr::analysis
