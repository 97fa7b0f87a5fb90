#include "TranslationCheck.h"

#include "ClosestName.h"
#include "CultureFolder.h"
#include "FileUse.h"
#include "StringLocalizing/Model/LanguageName.h"
#include "ulo/rtl/TextConversion.h"

#include <algorithm>
#include <optional>
#include <set>
#include <stdexcept>

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;

const CheckSettings kNoSettings;

// Letters as far as telling a sentence from punctuation goes: ASCII letters, the Latin,
// Greek, Cyrillic, ... blocks up to the general punctuation, and the scripts from the kana on.
// Symbols, dashes, quotes and emoji are not.
bool IsLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
           (unit >= 0xC0 && unit < 0x2000 && unit != 0xD7 && unit != 0xF7) ||
           (unit >= 0x3040 && unit < 0xD800) || (unit >= 0xF900 && unit < 0xFE00);
}

// A text without a letter (" – ", "10", "%") reads the same in every language, so it is no
// sign of a forgotten translation.
bool HasLetter(const Model::Value& value) {
    std::vector<const Model::Value*> pending{&value};  // plural forms nest without bound
    while (!pending.empty()) {
        const Model::Value* next = pending.back();
        pending.pop_back();
        for (const Model::Operand& operand : next->operands) {
            if (const auto* text = boost::get<std::u16string>(&operand)) {
                if (std::any_of(text->begin(), text->end(), IsLetter)) {
                    return true;
                }
            } else if (const auto* plural = boost::get<Model::PluralForm>(&operand)) {
                for (const Model::Value& form : plural->forms) {
                    pending.push_back(&form);
                }
            }
        }
    }
    return false;
}

const std::set<std::u16string>& ParametersOfKey(const KeyParameters& parameters,
                                                const std::u16string& key) {
    static const std::set<std::u16string> kNone;
    const auto found = parameters.find(key);
    return found != parameters.end() ? found->second : kNone;
}

std::string Narrow(const std::u16string& text) {
    return ulo::WideToNarrowMessage(text);
}

class Comparison {
  public:
    explicit Comparison(const TranslationCheckInputs& inputs)
        : inputs_(inputs),
          model_(*inputs.model),
          settings_(inputs.settings != nullptr ? *inputs.settings : kNoSettings) {
        if (inputs.reference == kNeutralFolder) {
            referenceLanguage_ = settings_.neutralLanguage;
        } else {
            const auto culture = model_.Cultures().find(inputs.reference);
            if (culture == model_.Cultures().end()) {
                throw std::invalid_argument("the reference '" + inputs.reference +
                                            "' is neither \"neutral\" nor a culture of the tree");
            }
            referenceLanguage_ = Model::LanguageName(culture->second.languageId);
        }
    }

    TranslationCheckResult Run() {
        for (const auto& [name, culture] : model_.Cultures()) {
            if (name != inputs_.reference) {
                CompareCulture(name, culture);
            }
        }
        return std::move(result_);
    }

  private:
    std::u16string ReferenceFile(const std::string& scope) const {
        return model_.ReferenceFile(inputs_.reference, scope);
    }

    // The file at `path` when the runtime can load it, else null.
    const LocFile* Loadable(const std::u16string& path) const {
        if (path.empty()) {
            return nullptr;
        }
        const LocFile& file = inputs_.file(path);
        return file.Loadable() ? &file : nullptr;
    }

    // A scope file's parameters are expanded over its common texts; the common texts' own over
    // nothing, as the runtime compiles them.
    const KeyParameters& ParametersOf(const std::string& scope, const std::u16string& path,
                                      const std::u16string& commonPath) const {
        return inputs_.parameters(path, scope == kCommonScope ? std::u16string() : commonPath);
    }

    void CompareCulture(const std::string& name, const localization_manager::Culture& culture) {
        CultureCompletion completion;
        completion.culture = name;
        const bool sameLanguage = !referenceLanguage_.empty() &&
                                  Model::LanguageName(culture.languageId) == referenceLanguage_;
        const std::u16string commonPath = model_.ServingFile(kCommonScope, culture);
        const std::u16string referenceCommonPath = ReferenceFile(kCommonScope);
        for (const std::string& scope : model_.Inventory().scopes) {
            const std::u16string referencePath = ReferenceFile(scope);
            const LocFile* reference = Loadable(referencePath);
            if (reference == nullptr) {
                continue;
            }
            ScopeCompletion scopeCompletion{scope, 0, reference->Dictionary()->size()};
            const std::u16string path = model_.ServingFile(scope, culture);
            const LocFile* own = path != referencePath ? Loadable(path) : nullptr;
            if (own != nullptr) {
                ScopeInputs inputs{scope,
                                   FileUse{own, scope, {name}},
                                   *reference,
                                   scope == kCommonScope ? nullptr : Loadable(commonPath),
                                   scope == kCommonScope ? nullptr : Loadable(referenceCommonPath),
                                   ParametersOf(scope, path, commonPath),
                                   ParametersOf(scope, referencePath, referenceCommonPath),
                                   sameLanguage};
                scopeCompletion.translated = CompareScope(inputs);
            }
            completion.translated += scopeCompletion.translated;
            completion.total += scopeCompletion.total;
            completion.scopes.push_back(scopeCompletion);
        }
        result_.completion.push_back(std::move(completion));
    }

    struct ScopeInputs {
        const std::string& scope;
        FileUse own;
        const LocFile& reference;
        const LocFile* common;  // the culture's common texts, for a scope other than common
        const LocFile* referenceCommon;  // the reference's, likewise
        const KeyParameters& ownParameters;
        const KeyParameters& referenceParameters;
        bool sameLanguage;
    };

    static bool Defines(const LocFile* file, const std::u16string& key) {
        return file != nullptr && file->Dictionary()->count(key) != 0;
    }

    // The findings of one scope file against the reference's; returns how many of the
    // reference's keys it translates.
    std::size_t CompareScope(const ScopeInputs& in) {
        std::size_t translated = 0;
        const Model::ResourceDictionary& own = *in.own.file->Dictionary();
        for (const auto& [key, referenceValue] : *in.reference.Dictionary()) {
            const auto found = own.find(key);
            if (found == own.end()) {
                if (!Defines(in.common, key)) {
                    AddMissing(in, key);
                }
                continue;
            }
            const std::string written = WrittenKey(*in.own.file, key);
            const TextPosition position = EntryPosition(*in.own.file, key);
            if (!in.sameLanguage && found->second == referenceValue && HasLetter(referenceValue) &&
                !settings_.MayEqualReference(in.own.cultures.front(), key)) {
                Add(FindingAt(FindingKind::kUntranslated, in.own, position, written,
                              "the text of '" + written + "' is the reference's own"));
            } else {
                ++translated;
            }
            CompareParameters(in, key, written, position);
        }
        for (const auto& entry : own) {
            const bool obsolete = in.scope == kCommonScope
                                      ? ReferenceKeys().count(entry.first) == 0
                                      : in.reference.Dictionary()->count(entry.first) == 0 &&
                                            !Defines(in.referenceCommon, entry.first);
            if (obsolete) {
                const std::string written = WrittenKey(*in.own.file, entry.first);
                Add(FindingAt(FindingKind::kObsoleteKey, in.own,
                              EntryPosition(*in.own.file, entry.first), written,
                              "the reference has no key '" + written + "'"));
            }
        }
        return translated;
    }

    const std::set<std::u16string>& ReferenceKeys() {
        if (!referenceKeys_) {
            referenceKeys_ =
                EveryReferenceKey(model_, inputs_.reference,
                                  [this](const std::u16string& path) { return Loadable(path); });
        }
        return *referenceKeys_;
    }

    void AddMissing(const ScopeInputs& in, const std::u16string& key) {
        const std::string written = WrittenKey(in.reference, key);
        const std::string message =
            in.scope == kCommonScope
                ? "key '" + written +
                      "' of the reference's common texts is missing: every scope that does not "
                      "define it fails to show it (Key '" +
                      Narrow(key) + "' not found)"
                : "key '" + written +
                      "' of the reference is neither here nor in the culture's common.lt: "
                      "requests for it fail (Key '" +
                      Narrow(key) + "' not found)";
        Add(FindingAt(FindingKind::kMissingKey, in.own, TextPosition{0, 0, 0}, written, message));
    }

    void CompareParameters(const ScopeInputs& in, const std::u16string& key,
                           const std::string& written, const TextPosition& position) {
        const std::set<std::u16string>& own = ParametersOfKey(in.ownParameters, key);
        const std::set<std::u16string>& reference = ParametersOfKey(in.referenceParameters, key);
        std::vector<std::string> referenceNames;
        for (const std::u16string& name : reference) {
            referenceNames.push_back(Narrow(name));
            if (own.count(name) == 0) {
                Finding finding =
                    FindingAt(FindingKind::kParameterMismatch, in.own, position, written,
                              "the text of '" + written + "' drops the parameter '$" +
                                  Narrow(name) + "' that the reference's shows: its value is lost");
                finding.severity = Severity::kWarning;
                Add(finding);
            }
        }
        for (const std::u16string& name : own) {
            if (reference.count(name) != 0) {
                continue;
            }
            std::string message = "the text of '" + written + "' asks for the parameter '$" +
                                  Narrow(name) +
                                  "' that the reference's does not: the application does not "
                                  "know it";
            const std::string closest = ClosestName(Narrow(name), referenceNames);
            if (!closest.empty()) {
                message += " (did you mean '$" + closest + "'?)";
            }
            Finding finding =
                FindingAt(FindingKind::kParameterMismatch, in.own, position, written, message);
            finding.severity = Severity::kError;
            Add(finding);
        }
    }

    void Add(Finding finding) { result_.findings.push_back(std::move(finding)); }

    const TranslationCheckInputs& inputs_;
    const TreeModel& model_;
    const CheckSettings& settings_;
    std::string referenceLanguage_;
    std::optional<std::set<std::u16string>> referenceKeys_;
    TranslationCheckResult result_;
};

}  // namespace

std::set<std::u16string> EveryReferenceKey(
    const TreeModel& model, const std::string& reference,
    const std::function<const LocFile*(const std::u16string& path)>& loadable) {
    std::set<std::u16string> keys;
    for (const std::string& scope : model.Inventory().scopes) {
        const std::u16string path = model.ReferenceFile(reference, scope);
        if (const LocFile* file = path.empty() ? nullptr : loadable(path)) {
            for (const auto& entry : *file->Dictionary()) {
                keys.insert(entry.first);
            }
        }
    }
    return keys;
}

TranslationCheckResult CheckTranslations(const TranslationCheckInputs& inputs) {
    return Comparison(inputs).Run();
}

}  // namespace locmgr::analysis
