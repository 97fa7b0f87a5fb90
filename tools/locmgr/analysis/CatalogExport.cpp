#include "CatalogExport.h"

#include "CultureFolder.h"
#include "LocFile.h"
#include "PluralRule.h"
#include "RuleSamples.h"
#include "StringLocalizing/Model/CultureNames.h"
#include "TranslationUnit.h"
#include "ulo/ResultCode.h"
#include "ulo/rtl/TextConversion.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <tuple>

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

// A key whose plural invocations choose among more sentences than this is not exported: no
// translator writes thousands of sentences for one text, and the count grows with the power of
// the number of discriminators.
constexpr std::size_t kMaxSentencesPerKey = 1024;

// For the tool's own messages, which never fail on a lone surrogate.
std::string Narrow(const std::u16string& text) {
    return ulo::WideToNarrowMessage(text);
}

std::string Trimmed(const std::u16string& text) {
    const std::size_t first = text.find_first_not_of(u" \t");
    if (first == std::u16string::npos) {
        return std::string();
    }
    return CatalogText(text.substr(first, text.find_last_not_of(u" \t") - first + 1));
}

// The comments of `file` that speak of `entry`: the block of comment lines right above its
// key, and a comment after its value on the value's last line.
std::vector<std::string> NotesOf(const LocFile& file, const Parsing::IndexedEntry& entry) {
    const auto& comments = file.Comments();
    const auto commentText = [&file](const Parsing::SourceSpan& span) {
        return Trimmed(
            file.Text().substr(span.begin.offset + 1, span.end.offset - span.begin.offset - 1));
    };
    // The first comment at or after the key.
    auto after = std::lower_bound(comments.begin(), comments.end(), entry.keySpan.begin.offset,
                                  [](const Parsing::SourceSpan& span, std::size_t offset) {
                                      return span.begin.offset < offset;
                                  });
    std::vector<std::string> notes;
    std::uint32_t line = entry.keySpan.begin.line;
    for (auto above = after; above != comments.begin();) {
        --above;
        if (above->begin.line + 1 != line || above->begin.column != 1) {
            break;
        }
        notes.insert(notes.begin(), commentText(*above));
        line = above->begin.line;
    }
    if (after != comments.end() && after->begin.line == entry.span.end.line) {
        notes.push_back(commentText(*after));
    }
    notes.erase(std::remove(notes.begin(), notes.end(), std::string()), notes.end());
    return notes;
}

// The numbers a unit's notes and its choice of source sentences look at.
constexpr std::int64_t kLargestSample = 1000;
constexpr std::size_t kSamplesInNotes = 4;

// Which form a rule gives to each of 0..kLargestSample.
std::vector<std::size_t> FormsOfNumbers(const Model::PluralRuleEntries& entries) {
    std::vector<std::size_t> forms;
    for (std::int64_t number = 0; number <= kLargestSample; ++number) {
        forms.push_back(FormOfNumber(entries, number));
    }
    return forms;
}

// The number that stands for a form of the culture when the reference's sentence for it is
// chosen: one from 2 up where the form has one, since a form that also serves 21 or 101 needs
// the parameter the reference's "one" sentence leaves out.
std::optional<std::int64_t> RepresentativeOf(const std::vector<std::size_t>& formsOfNumbers,
                                             std::size_t form) {
    for (std::int64_t number = 2; number <= kLargestSample; ++number) {
        if (formsOfNumbers[number] == form) {
            return number;
        }
    }
    for (std::int64_t number = 0; number < 2; ++number) {
        if (formsOfNumbers[number] == form) {
            return number;
        }
    }
    return std::nullopt;
}

class Exporter {
  public:
    Exporter(const TreeModel& model, const CatalogExportOptions& options)
        : model_(model), options_(options) {
        std::tie(cultureName_, culture_) = model.CultureNamed(options.culture);
        if (options.reference != kNeutralFolder && model.Cultures().count(options.reference) == 0) {
            throw std::invalid_argument("the reference '" + options.reference +
                                        "' is neither \"neutral\" nor a culture of the tree");
        }
        rule_ = RuleFor(model.Provider(), culture_);
        cultureForms_ = FormsOfNumbers(rule_.entries);
        referenceForms_ = FormsOfNumbers(ReferenceRule(options.reference).entries);
        sourceLanguage_ =
            options.reference == kNeutralFolder ? options.neutralLanguage : options.reference;
    }

    std::vector<ExportedCatalog> Run() {
        std::vector<std::string> scopes = options_.scopes;
        if (scopes.empty()) {
            for (const std::string& scope : model_.Inventory().scopes) {
                if (!ReferenceFile(scope).empty()) {
                    scopes.push_back(scope);
                }
            }
        }
        std::vector<ExportedCatalog> catalogs;
        for (const std::string& scope : scopes) {
            if (ReferenceFile(scope).empty()) {
                throw UnknownScope("the reference has no texts of scope '" + scope + "'");
            }
            catalogs.push_back(Export(scope));
        }
        return catalogs;
    }

  private:
    // The rule the reference's texts are written for: a culture's own, or for the neutral
    // texts the language the tree's settings give them (the culture's rule when they give
    // none, as the runtime applies it to neutral texts the culture reads).
    RuleInForce ReferenceRule(const std::string& reference) const {
        if (reference != kNeutralFolder) {
            return RuleFor(model_.Provider(), model_.Cultures().at(reference));
        }
        const std::string& language = options_.neutralLanguage;
        localization_manager::Culture culture;
        if (language.empty() || ulo::Failed(Model::ConvertCultureName(language, culture))) {
            return rule_;
        }
        return RuleFor(model_.Provider(), culture);
    }

    // A file as translators' tools show it: relative to the root or the alternative directory
    // it was found in, so that a catalog reads the same wherever the tree is.
    std::string Shown(const std::u16string& file) const {
        const std::filesystem::path path(CatalogText(file));
        for (const std::u16string* base :
             {&model_.Inventory().alternative, &model_.Inventory().root}) {
            if (base->empty()) {
                continue;
            }
            const std::filesystem::path relative =
                path.lexically_relative(std::filesystem::path(CatalogText(*base)));
            if (!relative.empty() && *relative.begin() != "..") {
                return relative.generic_string();
            }
        }
        return path.generic_string();
    }

    // The reference's form for the number that stands for the culture's `form`.
    std::size_t ReferenceFormFor(std::size_t form) const {
        const std::optional<std::int64_t> number = RepresentativeOf(cultureForms_, form);
        return number ? referenceForms_[*number] : form;
    }

    // "{name} is 2, 3, 4, 22, ... here": which numbers a unit's choice of `form` stands for.
    std::string SamplesNote(const std::u16string& name, std::size_t form) const {
        std::vector<std::string> samples;
        for (std::int64_t number = 0; number <= kLargestSample; ++number) {
            if (cultureForms_[number] == form) {
                if (samples.size() == kSamplesInNotes) {
                    samples.push_back("...");
                    break;
                }
                samples.push_back(std::to_string(number));
            }
        }
        std::string note = "{" + CatalogText(name) + "} is ";
        for (std::size_t index = 0; index < samples.size(); ++index) {
            note += (index == 0 ? "" : ", ") + samples[index];
        }
        return note +
               (samples.empty() ? "a number above " + std::to_string(kLargestSample)
                                : std::string()) +
               " here";
    }

    std::u16string ReferenceFile(const std::string& scope) const {
        return model_.ReferenceFile(options_.reference, scope);
    }

    ExportedCatalog Export(const std::string& scope) {
        ExportedCatalog exported;
        Catalog& catalog = exported.catalog;
        catalog.scope = scope;
        const std::u16string referencePath = ReferenceFile(scope);
        const LocFile& reference = files_.Get(referencePath);
        if (!reference.Loadable()) {
            exported.problem = "the reference's file " + Narrow(referencePath) +
                               " cannot be loaded; \"locmgr check\" says why";
            return exported;
        }
        if (!rule_.Usable()) {
            exported.problem =
                "the plural rule of " + cultureName_ + " cannot be built: " + rule_.failure;
            return exported;
        }
        const std::u16string ownPath = model_.ServingFile(scope, culture_);
        const LocFile* own = nullptr;
        if (!ownPath.empty() && ownPath != referencePath) {
            own = &files_.Get(ownPath);
            if (!own->Loadable()) {
                exported.problem = "the culture's file " + Narrow(ownPath) +
                                   " cannot be loaded; \"locmgr check\" says why";
                return exported;
            }
        }

        for (const Parsing::IndexedEntry& entry : reference.Entries()) {
            const Model::Value& source = reference.Dictionary()->at(entry.lowerKey);
            const Model::Value* target = nullptr;
            if (own != nullptr) {
                const auto found = own->Dictionary()->find(entry.lowerKey);
                target = found != own->Dictionary()->end() ? &found->second : nullptr;
            }
            CatalogUnit unit;
            try {
                unit.notes = NotesOf(reference, entry);
                unit.file = Shown(referencePath);
                unit.line = entry.keySpan.begin.line;
                unit.key = entry.key;
                if (!AddUnits(CatalogText(entry.key), unit, source, target, catalog.units)) {
                    exported.problem = "the texts of '" + Narrow(entry.key) +
                                       "' choose among more than " +
                                       std::to_string(kMaxSentencesPerKey) + " sentences";
                    return exported;
                }
            } catch (const UnwritableText& error) {
                exported.problem = "the texts of '" + Narrow(entry.key) + "': " + error.what();
                return exported;
            }
        }
        catalog.language = cultureName_;
        catalog.sourceLanguage = sourceLanguage_;
        catalog.pluralConditions = rule_.conditions;
        catalog.description = "Texts of scope \"" + scope + "\" for " + cultureName_ + ", from " +
                              Shown(referencePath) +
                              (own != nullptr ? " and " + Shown(ownPath) : std::string()) + ".";
        return exported;
    }

    // One unit for a text without plural invocations; otherwise one for each choice of forms
    // of the discriminators after the first, whose forms are the unit's plural forms. False
    // when that would be more than kMaxSentencesPerKey sentences.
    bool AddUnits(const std::string& key, const CatalogUnit& base, const Model::Value& source,
                  const Model::Value* target, std::vector<CatalogUnit>& units) const {
        std::vector<std::u16string> dimensions = Discriminators(source);
        if (target != nullptr) {
            for (const std::u16string& name : Discriminators(*target)) {
                if (std::find(dimensions.begin(), dimensions.end(), name) == dimensions.end()) {
                    dimensions.push_back(name);
                }
            }
        }
        if (dimensions.empty()) {
            CatalogUnit unit = base;
            unit.context = key;
            unit.source = Evaluate(source, {});
            if (target != nullptr) {
                unit.targets = {Evaluate(*target, {})};
            }
            units.push_back(std::move(unit));
            return true;
        }
        const std::size_t forms = rule_.FormCount();
        std::size_t sentences = forms;
        for (std::size_t index = 1; index < dimensions.size(); ++index) {
            if (sentences > kMaxSentencesPerKey / forms) {
                return false;
            }
            sentences *= forms;
        }
        // The source's two sentences are the reference's for one and for the first number
        // that takes another form, as a PO editor expects of msgid and msgid_plural.
        const std::size_t singular = referenceForms_[1];
        std::size_t plural = referenceForms_[2];
        for (std::int64_t number = 2; number <= kLargestSample; ++number) {
            if (referenceForms_[number] != singular) {
                plural = referenceForms_[number];
                break;
            }
        }
        std::vector<std::size_t> choice(dimensions.size(), 0);
        while (true) {
            CatalogUnit unit = base;
            unit.plural = true;
            unit.discriminators = dimensions;
            unit.context = key;
            std::map<std::u16string, std::size_t> sourceFormOf;
            std::map<std::u16string, std::size_t> targetFormOf;
            for (std::size_t index = 1; index < dimensions.size(); ++index) {
                targetFormOf[dimensions[index]] = choice[index];
                sourceFormOf[dimensions[index]] = ReferenceFormFor(choice[index]);
                unit.context += (index == 1 ? "|" : ",") + CatalogText(dimensions[index]) + "=" +
                                std::to_string(choice[index]);
                unit.notes.push_back(SamplesNote(dimensions[index], choice[index]));
            }
            sourceFormOf[dimensions.front()] = singular;
            unit.source = Evaluate(source, sourceFormOf);
            sourceFormOf[dimensions.front()] = plural;
            unit.sourcePlural = Evaluate(source, sourceFormOf);
            for (std::size_t form = 0; target != nullptr && form < forms; ++form) {
                targetFormOf[dimensions.front()] = form;
                unit.targets.push_back(Evaluate(*target, targetFormOf));
            }
            units.push_back(std::move(unit));
            // The next choice, the last discriminator counting fastest.
            std::size_t index = dimensions.size();
            while (--index >= 1 && ++choice[index] == forms) {
                choice[index] = 0;
            }
            if (index == 0) {
                return true;
            }
        }
    }

    const TreeModel& model_;
    const CatalogExportOptions& options_;
    std::string cultureName_;
    std::string sourceLanguage_;
    localization_manager::Culture culture_;
    RuleInForce rule_;
    // The form each of 0..kLargestSample takes in the culture's rule and the reference's.
    std::vector<std::size_t> cultureForms_;
    std::vector<std::size_t> referenceForms_;
    LocFileCache files_;
};

}  // namespace

std::vector<ExportedCatalog> ExportCatalogs(const TreeModel& model,
                                            const CatalogExportOptions& options) {
    return Exporter(model, options).Run();
}

}  // namespace locmgr::analysis
