#include "CultureMerge.h"

#include "CultureFolder.h"
#include "LocFile.h"
#include "LtWriter.h"
#include "StringLocalizing/Model/KeyCase.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "TranslationCheck.h"
#include "ulo/rtl/TextConversion.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <tuple>

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

std::string Narrow(const std::u16string& text) {
    return ulo::WideToNarrowMessage(text);
}

// A text as the record keeps it: as a localization file writes it.
std::string Written(const Model::Value& value) {
    return Narrow(FormatValue(value));
}

bool Defines(const LocFile* file, const std::u16string& lowerKey) {
    return file != nullptr && file->Dictionary()->count(lowerKey) != 0;
}

std::string WhyNotLoadable(const LocFile& file) {
    if (!file.ReadError().empty()) {
        return file.ReadError();
    }
    if (file.ParseError()) {
        return "line " + std::to_string(file.ParseError()->position.line) + ": " +
               file.ParseError()->expectation;
    }
    return "it defines '" + Narrow(file.Duplicates().front().writtenKey) + "' more than once";
}

class Merger {
  public:
    Merger(const TreeModel& model, const MergeOptions& options, MergeRecord& record)
        : model_(model), options_(options) {
        std::tie(cultureName_, culture_) = model.CultureNamed(options.culture);
        if (options.reference != kNeutralFolder && model.Cultures().count(options.reference) == 0) {
            throw std::invalid_argument("the reference '" + options.reference +
                                        "' is neither \"neutral\" nor a culture of the tree");
        }
        if (cultureName_ == options.reference) {
            throw std::invalid_argument("the culture '" + options.culture +
                                        "' is the reference itself");
        }
        for (const auto& [scope, key] : options.reviewed) {
            reviewed_.emplace(scope, Model::LowerCaseKey(ulo::Utf8ToWide(key)));
        }
        // Texts recorded against another reference say nothing about this one.
        record_ = &record.cultures[cultureName_];
        if (record_->reference != options.reference) {
            *record_ = CultureRecord{options.reference, {}};
        }
    }

    MergeResult Run() {
        std::vector<std::string> scopes = options_.scopes;
        if (scopes.empty()) {
            for (const std::string& scope : model_.Inventory().scopes) {
                if (!ReferenceFile(scope).empty()) {
                    scopes.push_back(scope);
                }
            }
        }
        for (const std::string& scope : scopes) {
            if (ReferenceFile(scope).empty()) {
                throw std::invalid_argument("the reference has no texts of scope '" + scope + "'");
            }
        }
        // The common texts first: a key they define is found in every scope, so the other
        // scopes are merged against the culture's merged common texts.
        std::stable_partition(scopes.begin(), scopes.end(),
                              [](const std::string& scope) { return scope == kCommonScope; });
        MergeResult result;
        for (const std::string& scope : scopes) {
            result.scopes.push_back(Merge(scope));
        }
        for (const auto& [scope, key] : reviewed_) {
            result.problems.push_back("no translation of '" + Narrow(key) + "' in scope '" + scope +
                                      "' waits for review");
        }
        return result;
    }

  private:
    std::u16string ReferenceFile(const std::string& scope) const {
        return model_.ReferenceFile(options_.reference, scope);
    }

    MergedScope Merge(const std::string& scope) {
        MergedScope merged;
        merged.scope = scope;
        const std::u16string referencePath = ReferenceFile(scope);
        const std::u16string own = model_.OwnFile(scope, culture_);
        merged.file = Narrow(own);
        const LocFile* reference = files_.Loadable(referencePath);
        if (reference == nullptr) {
            merged.problem = "the reference's file " + Narrow(referencePath) +
                             " cannot be loaded; \"locmgr check\" says why";
            return merged;
        }
        std::u16string source = model_.BaseFile(scope, culture_);
        if (source != own) {
            source = source.empty() ? referencePath : source;
            merged.copiedFrom = Narrow(source);
        }
        // Read afresh, not from the cache: an earlier scope of this merge may have written it.
        const LocFile sourceFile(source);
        if (!sourceFile.Loadable()) {
            merged.problem = Narrow(source) + " cannot be loaded (" + WhyNotLoadable(sourceFile) +
                             "); \"locmgr check\" says more";
            return merged;
        }
        try {
            LtFileText file = ReadLtFile(source);
            Model::ResourceDictionary texts;
            Parsing::SourceIndex index;
            Parsing::ParseLocFileIndexed(file.text, source, texts, index);
            LtEdit edit(file.text, index);
            AddMissing(scope, *reference, texts, edit, merged);
            MarkObsolete(scope, *reference, index, edit, merged);
            ScopeRecord next = Review(scope, *reference, texts, edit, merged);
            if (!merged.copiedFrom.empty() || !merged.added.empty() || !merged.updated.empty() ||
                (options_.prune && !merged.obsolete.empty())) {
                file.text = edit.Text();
                WriteLtFile(own, file);
            }
            record_->scopes[scope] = std::move(next);
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception& error) {
            merged.problem = Narrow(source) + " cannot be merged: " + error.what();
        }
        return merged;
    }

    // The reference's keys the culture would not find, each after the key the reference puts
    // before it (at the end when the culture has none of those).
    void AddMissing(const std::string& scope, const LocFile& reference,
                    const Model::ResourceDictionary& texts, LtEdit& edit, MergedScope& merged) {
        const LocFile* common = scope == kCommonScope
                                    ? nullptr
                                    : files_.Loadable(model_.ServingFile(kCommonScope, culture_));
        std::u16string previous;
        for (const LocFile::IndexedEntry& entry : reference.Entries()) {
            if (texts.count(entry.lowerKey) != 0) {
                previous = entry.lowerKey;
                continue;
            }
            if (Defines(common, entry.lowerKey)) {
                continue;  // the culture's common texts answer it
            }
            const Model::Value& value = reference.Dictionary()->at(entry.lowerKey);
            if (previous.empty()) {
                edit.Append(entry.key, value);
            } else {
                edit.InsertAfter(previous, entry.key, value);
            }
            previous = entry.lowerKey;
            merged.added.push_back(Narrow(entry.key));
        }
    }

    // The culture's keys the reference has nowhere it would look for them.
    void MarkObsolete(const std::string& scope, const LocFile& reference,
                      const Parsing::SourceIndex& index, LtEdit& edit, MergedScope& merged) {
        const LocFile* referenceCommon =
            scope == kCommonScope ? nullptr : files_.Loadable(ReferenceFile(kCommonScope));
        for (const Parsing::IndexedEntry& entry : index.entries) {
            // A culture's common texts may answer a key of any scope.
            const bool obsolete = scope == kCommonScope
                                      ? ReferenceKeys().count(entry.lowerKey) == 0
                                      : reference.Dictionary()->count(entry.lowerKey) == 0 &&
                                            !Defines(referenceCommon, entry.lowerKey);
            if (obsolete) {
                merged.obsolete.push_back(Narrow(entry.key));
                if (options_.prune) {
                    edit.Remove(entry.key);
                }
            }
        }
    }

    const std::set<std::u16string>& ReferenceKeys() {
        if (!referenceKeys_) {
            referenceKeys_ = EveryReferenceKey(
                model_, options_.reference,
                [this](const std::u16string& path) { return files_.Loadable(path); });
        }
        return *referenceKeys_;
    }

    // A translation of the culture's own whose reference text changed since the last merge
    // waits for review until the translation changes or is marked reviewed. A text the culture
    // took over unchanged from the reference follows it: it gets the reference's new text, so
    // that it is served current and "locmgr check" still reports it untranslated. Returns the
    // scope's new record.
    ScopeRecord Review(const std::string& scope, const LocFile& reference,
                       const Model::ResourceDictionary& texts, LtEdit& edit, MergedScope& merged) {
        const ScopeRecord& last = record_->scopes[scope];
        ScopeRecord next;
        for (const LocFile::IndexedEntry& entry : reference.Entries()) {
            const Model::Value& referenceValue = reference.Dictionary()->at(entry.lowerKey);
            KeyRecord& keyRecord = next[Narrow(entry.lowerKey)];
            keyRecord.reference = Written(referenceValue);
            const auto lastRecord = last.find(Narrow(entry.lowerKey));
            const auto text = texts.find(entry.lowerKey);
            if (lastRecord == last.end() || text == texts.end() ||
                (lastRecord->second.reference == keyRecord.reference &&
                 !lastRecord->second.review)) {
                continue;
            }
            const std::string translation = Written(text->second);
            if (translation == lastRecord->second.reference && !lastRecord->second.review) {
                edit.Replace(entry.lowerKey, referenceValue);
                merged.updated.push_back(Narrow(entry.key));
                continue;
            }
            std::optional<PendingReview> review = lastRecord->second.review;
            if (review &&
                (translation != review->translation || TakeReviewed(scope, entry.lowerKey))) {
                review.reset();
            }
            if (!review && lastRecord->second.reference != keyRecord.reference) {
                review = PendingReview{lastRecord->second.reference, translation};
            }
            if (review && translation != keyRecord.reference) {
                keyRecord.review = review;
                merged.reviews.push_back({Narrow(entry.key), review->was, keyRecord.reference});
            }
        }
        return next;
    }

    bool TakeReviewed(const std::string& scope, const std::u16string& lowerKey) {
        return reviewed_.erase({scope, lowerKey}) != 0;
    }

    const TreeModel& model_;
    const MergeOptions& options_;
    std::string cultureName_;
    localization_manager::Culture culture_;
    CultureRecord* record_ = nullptr;
    std::set<std::pair<std::string, std::u16string>> reviewed_;
    LocFileCache files_;
    std::optional<std::set<std::u16string>> referenceKeys_;
};

}  // namespace

MergeResult MergeCulture(const TreeModel& model, const MergeOptions& options, MergeRecord& record) {
    return Merger(model, options, record).Run();
}

}  // namespace locmgr::analysis
