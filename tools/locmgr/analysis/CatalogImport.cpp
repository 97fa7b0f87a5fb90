#include "CatalogImport.h"

#include "ClosestName.h"
#include "LtWriter.h"
#include "PoCatalog.h"
#include "StringLocalizing/Model/KeyCase.h"
#include "StringLocalizing/Model/ResourceDictionary.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "ValueBuilder.h"
#include "ulo/rtl/TextConversion.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

std::string Narrow(const std::u16string& text) {
    return ulo::WideToNarrowMessage(text);
}

// A placeholder as translators see it.
std::string Shown(const Piece& piece) {
    return "{" + std::string(piece.kind == Piece::Kind::kReference ? "key." : "") +
           Narrow(piece.text) + "}";
}

std::set<std::string> PlaceholdersOf(const Sentence& sentence) {
    std::set<std::string> placeholders;
    for (const Piece& piece : sentence) {
        if (piece.kind != Piece::Kind::kText) {
            placeholders.insert(Shown(piece));
        }
    }
    return placeholders;
}

// The units of one key in a catalog as exported, in order.
struct KeyUnits {
    std::u16string key;
    std::vector<const CatalogUnit*> units;
};

std::vector<KeyUnits> ByKey(const Catalog& catalog) {
    std::vector<KeyUnits> keys;
    for (const CatalogUnit& unit : catalog.units) {
        if (keys.empty() || keys.back().key != unit.key) {
            keys.push_back({unit.key, {}});
        }
        keys.back().units.push_back(&unit);
    }
    return keys;
}

class ScopeImport {
  public:
    ScopeImport(const TreeModel& model, const Catalog& current, const ImportedCatalog& imported,
                ImportResult& result)
        : model_(model), current_(current), imported_(imported), result_(result) {
        for (const ImportedUnit& unit : imported.units) {
            byContext_.emplace(unit.context, &unit);
        }
        forms_ = std::max<std::size_t>(current.pluralConditions.size(), 1);
    }

    void Run() {
        ImportedScope scope;
        scope.catalog = imported_.path;
        scope.scope = current_.scope;
        std::map<std::u16string, Model::Value> changes;  // by key as the reference writes it
        const std::size_t problemsBefore = result_.problems.size();
        for (const KeyUnits& key : ByKey(current_)) {
            std::optional<Model::Value> value = Take(key, scope);
            if (value) {
                changes.emplace(key.key, std::move(*value));
            }
        }
        if (result_.problems.size() != problemsBefore) {
            return;  // nothing of a catalog with refused units is written
        }
        if (!changes.empty()) {
            Write(changes, scope);
        }
        result_.scopes.push_back(scope);
    }

  private:
    void Problem(const std::string& unit, const std::string& message) {
        result_.problems.push_back({imported_.path, unit, message});
    }

    // The key's new value, or none when it is unchanged, untranslated or refused.
    std::optional<Model::Value> Take(const KeyUnits& key, ImportedScope& scope) {
        std::vector<const ImportedUnit*> units;
        std::size_t translated = 0;
        for (const CatalogUnit* unit : key.units) {
            const auto found = byContext_.find(unit->context);
            units.push_back(found != byContext_.end() ? found->second : nullptr);
            translated += units.back() != nullptr && units.back()->translated ? 1 : 0;
        }
        if (translated == 0) {
            ++scope.untranslated;
            return std::nullopt;
        }
        if (translated != units.size()) {
            for (std::size_t index = 0; index < units.size(); ++index) {
                if (units[index] == nullptr || !units[index]->translated) {
                    Problem(key.units[index]->context,
                            "untranslated, while other units of the same text are translated; "
                            "translate every unit of the text or none");
                }
            }
            return std::nullopt;
        }

        SentenceTable table;
        table.discriminators = key.units.front()->discriminators;
        table.forms = key.units.front()->plural ? forms_ : 1;
        std::set<std::string> source;
        std::set<std::string> target;
        for (const std::u16string& name : table.discriminators) {
            source.insert(Shown({Piece::Kind::kParameter, name}));
        }
        bool same = true;
        for (std::size_t index = 0; index < units.size(); ++index) {
            const CatalogUnit& unit = *key.units[index];
            const ImportedUnit& imported = *units[index];
            for (const Sentence* sentence : {&unit.source, &unit.sourcePlural}) {
                const std::set<std::string> found = PlaceholdersOf(*sentence);
                source.insert(found.begin(), found.end());
            }
            if (imported.targets.size() != table.forms) {
                Problem(unit.context, "has " + std::to_string(imported.targets.size()) +
                                          " translations; the culture's plural rule has " +
                                          std::to_string(table.forms) + " forms");
                return std::nullopt;
            }
            for (std::size_t form = 0; form < imported.targets.size(); ++form) {
                Sentence sentence;
                try {
                    sentence = ParseBraceFormat(imported.targets[form]);
                } catch (const std::invalid_argument& error) {
                    Problem(unit.context,
                            "translation " + std::to_string(form) + ": " + error.what());
                    return std::nullopt;
                }
                for (Piece& piece : sentence) {
                    if (piece.kind == Piece::Kind::kReference) {
                        piece.text = Model::LowerCaseKey(piece.text);
                    }
                }
                const std::set<std::string> found = PlaceholdersOf(sentence);
                target.insert(found.begin(), found.end());
                same = same && form < unit.targets.size() && unit.targets[form] == sentence;
                table.sentences.push_back(std::move(sentence));
            }
        }
        if (!CheckPlaceholders(key, source, target)) {
            return std::nullopt;
        }
        if (same) {
            return std::nullopt;
        }
        return BuildValue(table);
    }

    // A translation keeps every placeholder its source has (in some form) and adds none.
    bool CheckPlaceholders(const KeyUnits& key, const std::set<std::string>& source,
                           const std::set<std::string>& target) {
        const std::vector<std::string> known(source.begin(), source.end());
        bool good = true;
        for (const std::string& placeholder : target) {
            if (source.count(placeholder) == 0) {
                const std::string closest = ClosestName(placeholder, known);
                Problem(key.units.front()->context,
                        placeholder + " is not a placeholder of the source" +
                            (closest.empty() ? std::string() : "; did you mean " + closest + "?"));
                good = false;
            }
        }
        for (const std::string& placeholder : source) {
            if (target.count(placeholder) == 0) {
                Problem(key.units.front()->context,
                        "the translation drops " + placeholder + ", which the source has");
                good = false;
            }
        }
        return good;
    }

    // The culture's own file for the scope; when it has none yet, a new one that starts from
    // the text of the file it reads today.
    void Write(const std::map<std::u16string, Model::Value>& changes, ImportedScope& scope) {
        const auto& culture = model_.Cultures().at(current_.language);
        const std::u16string path = model_.OwnFile(current_.scope, culture);
        const std::u16string base = model_.BaseFile(current_.scope, culture);
        const std::u16string source = base.empty() ? path : base;
        try {
            LtFileText file = ReadLtFile(source);
            Model::ResourceDictionary dictionary;
            Parsing::SourceIndex index;
            Parsing::ParseLocFileIndexed(file.text, source, dictionary, index);
            LtEdit edit(file.text, index);
            std::u16string previous;
            for (const KeyUnits& key : ByKey(current_)) {
                const auto change = changes.find(key.key);
                if (change != changes.end()) {
                    if (edit.Contains(key.key)) {
                        edit.Replace(key.key, change->second);
                        ++scope.changed;
                    } else {
                        if (previous.empty()) {
                            edit.Append(key.key, change->second);
                        } else {
                            edit.InsertAfter(previous, key.key, change->second);
                        }
                        ++scope.added;
                    }
                }
                if (edit.Contains(key.key)) {
                    previous = key.key;
                }
            }
            file.text = edit.Text();
            WriteLtFile(path, file);
            scope.file = Narrow(path);
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception& error) {
            Problem("", Narrow(source) + " cannot be rewritten: " + error.what());
        }
    }

    const TreeModel& model_;
    const Catalog& current_;
    const ImportedCatalog& imported_;
    ImportResult& result_;
    std::multimap<std::string, const ImportedUnit*> byContext_;
    std::size_t forms_ = 1;
};

}  // namespace

ImportResult ImportCatalogs(const TreeModel& model, const CatalogExportOptions& options,
                            const std::vector<ImportedCatalog>& catalogs) {
    ImportResult result;
    for (const ImportedCatalog& imported : catalogs) {
        // The scope the catalog names, else its file's name (platforms rename files, and
        // some tools rewrite the header).
        CatalogExportOptions scopeOptions = options;
        const std::string stem = std::filesystem::path(imported.path).stem().string();
        std::vector<ExportedCatalog> current;
        for (const std::string& scope : {imported.scope, stem}) {
            if (scope.empty()) {
                continue;
            }
            scopeOptions.scopes = {scope};
            try {
                current = ExportCatalogs(model, scopeOptions);
                break;
            } catch (const UnknownScope&) {
                // Not a scope of the reference: try the next name.
            }
        }
        if (current.empty()) {
            result.problems.push_back({imported.path, "",
                                       "names no scope of the reference (neither '" +
                                           imported.scope + "' nor '" + stem + "')"});
            continue;
        }
        if (!current.front().problem.empty()) {
            result.problems.push_back({imported.path, "", current.front().problem});
            continue;
        }
        ScopeImport(model, current.front().catalog, imported, result).Run();
    }
    return result;
}

}  // namespace locmgr::analysis
