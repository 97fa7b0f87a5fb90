#pragma once

#include "StringLocalizing/Model/KeyCase.h"
#include "StringLocalizing/Parsing/SourceIndex.h"
#include "StringLocalizing/Parsing/SourceIterator.h"

#include <cstddef>
#include <iterator>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace LocalizationManager::StringLocalizing::Parsing {

// The parts of a localization file that the grammar reports to a SourceIndexRecorder, each
// once it has been parsed whole.
enum class SpanKind {
    kKey,              // the key of an entry; starts the entry
    kReference,        // a bare key in a value
    kParameter,        // "$name" of an external parameter
    kPluralParameter,  // "$name" of the innermost plural invocation under way
    kPluralForm,       // a form of the innermost plural invocation under way
    kPlural,           // ends the innermost plural invocation under way
    kEntry,            // ends the entry
    kComment,          // a comment between entries
};

// Fills a SourceIndex from what the localization file grammar reports while it parses: the
// offsets of every part, and each key defined again. The grammar reports a part only once the
// part has matched, so nothing is recorded for what it tried and gave up. Lines and columns
// are left to LocateSourcePoints, which finds them all in one walk over the text. One recorder
// serves one parse.
template <typename Iterator>
class SourceIndexRecorder {
  public:
    SourceIndexRecorder(SourceIndex& index, Iterator textBegin)
        : index_(index), textBegin_(std::move(textBegin)) {}

    SourceIndexRecorder(const SourceIndexRecorder&) = delete;
    SourceIndexRecorder& operator=(const SourceIndexRecorder&) = delete;

    // A "{" opened a plural invocation.
    void BeginPlural() {
        IndexedPlural plural;
        plural.pluralDepth = static_cast<int>(openPlurals_.size());
        openPlurals_.push_back(entry_.plurals.size());
        entry_.plurals.push_back(std::move(plural));
    }

    void Record(SpanKind kind, const Iterator& begin, const Iterator& end) {
        const SourceSpan span{PointOf(begin), PointOf(end)};
        const int depth = static_cast<int>(openPlurals_.size());
        switch (kind) {
            case SpanKind::kKey:
                entry_ = IndexedEntry();
                entry_.key.assign(begin, end);
                entry_.lowerKey = Fold(entry_.key);
                entry_.keySpan = span;
                break;
            case SpanKind::kReference:
                entry_.references.push_back({Fold(std::u16string(begin, end)), span, depth});
                break;
            case SpanKind::kParameter:
                // The text starts with "$".
                entry_.parameters.push_back({std::u16string(std::next(begin), end), span, depth});
                break;
            case SpanKind::kPluralParameter:
                OpenPlural().parameter.assign(std::next(begin), end);
                OpenPlural().parameterSpan = span;
                break;
            case SpanKind::kPluralForm:
                OpenPlural().forms.push_back(span);
                break;
            case SpanKind::kPlural:
                OpenPlural().span = span;
                openPlurals_.pop_back();
                break;
            case SpanKind::kComment:
                index_.comments.push_back(span);
                break;
            case SpanKind::kEntry:
                entry_.span = span;
                index_.entries.push_back(std::move(entry_));
                entry_ = IndexedEntry();
                break;
        }
    }

    // The entry being parsed, whose key has been recorded, defines its key again.
    void Duplicate() {
        DuplicateDefinition duplicate;
        duplicate.lowerKey = entry_.lowerKey;
        duplicate.writtenKey = entry_.key;
        duplicate.secondKey = entry_.keySpan;
        index_.duplicates.push_back(std::move(duplicate));
    }

  private:
    SourcePoint PointOf(const Iterator& position) const {
        if constexpr (std::is_same_v<Iterator, SourceIterator>) {
            return {static_cast<std::size_t>(position.base() - textBegin_.base()), 0, 0};
        } else {
            return {static_cast<std::size_t>(position - textBegin_), 0, 0};
        }
    }

    std::u16string Fold(const std::u16string& key) const {
        std::u16string buffer;
        return std::u16string(keyCaseFolder_.Fold(key, buffer));
    }

    IndexedPlural& OpenPlural() { return entry_.plurals[openPlurals_.back()]; }

    SourceIndex& index_;
    const Iterator textBegin_;
    // Folds as the grammar does: both are made for the same parse.
    const Model::KeyCaseFolder keyCaseFolder_;
    IndexedEntry entry_;
    // Indices into entry_.plurals of the invocations under way, outermost first.
    std::vector<std::size_t> openPlurals_;
};

}  // namespace LocalizationManager::StringLocalizing::Parsing
