#pragma once

#include "StringLocalizing/Model/KeyCase.h"
#include "StringLocalizing/Parsing/DuplicateKeyException.h"
#include "StringLocalizing/Parsing/KeyParser.h"
#include "StringLocalizing/Parsing/LocFileGrammar.h"
#include "StringLocalizing/Parsing/MoveAssign.h"
#include "StringLocalizing/Parsing/MoveOperand.h"
#include "StringLocalizing/Parsing/PlainTextParser.h"
#include "StringLocalizing/Parsing/QuotedTextParser.h"
#include "StringLocalizing/Parsing/SourceIterator.h"
#include "StringLocalizing/Parsing/TextIterator.h"

#include <boost/phoenix/core.hpp>
#include <boost/phoenix/function.hpp>
#include <boost/phoenix/operator.hpp>
#include <boost/phoenix/statement/sequence.hpp>
#include <boost/spirit/include/qi.hpp>

#include <string>
#include <utility>

namespace LocalizationManager::StringLocalizing::Parsing {

namespace loc_file_actions {

// Semantic actions move what a rule synthesised into its parent instead of copying it: a
// plural form holds a deep tree of owned values.

struct AppendOperand {
    using result_type = void;
    void operator()(Model::Value& value, Model::Operand& operand) const {
        AppendMovedOperand(value.operands, operand);
    }
};

struct TakePluralForm {
    using result_type = void;
    void operator()(Model::Operand& operand, Model::PluralForm& plural) const {
        MovePluralForm(plural, operand);
    }
};

struct MakeKeyRef {
    using result_type = void;
    template <typename Range>
    void operator()(Model::KeyRef& reference, const Model::KeyCaseFolder& keyCaseFolder,
                    const Range& written) const {
        const std::u16string key(written.begin(), written.end());
        std::u16string buffer;
        reference.key = keyCaseFolder.Fold(key, buffer);
    }
};

struct MakeParam {
    using result_type = void;
    void operator()(Model::Param& param, std::u16string& name) const {
        param.name = std::move(name);
    }
};

struct SetPluralParam {
    using result_type = void;
    void operator()(Model::PluralForm& plural, std::u16string& name) const {
        plural.param = std::move(name);
    }
};

struct AppendForm {
    using result_type = void;
    void operator()(Model::PluralForm& plural, Model::Value& form) const {
        plural.forms.push_back(new Model::Value(std::move(form)));
    }
};

// The units of a part of the parsed text, where the text holds them.
inline std::u16string_view UnitsOf(TextIterator begin, TextIterator end) {
    return begin == end ? std::u16string_view()
                        : std::u16string_view(&*begin, static_cast<std::size_t>(end - begin));
}

inline std::u16string_view UnitsOf(const SourceIterator& begin, const SourceIterator& end) {
    return UnitsOf(begin.base(), end.base());
}

struct SetEntryKey {
    using result_type = void;
    template <typename Range>
    void operator()(std::u16string_view& key, const Range& written) const {
        key = UnitsOf(written.begin(), written.end());
    }
};

struct StoreEntry {
    using result_type = void;
    template <typename Recorder>
    void operator()(EntrySink& sink, const Model::KeyCaseFolder& keyCaseFolder,
                    std::u16string_view key, std::u16string& foldBuffer, Model::Value& value,
                    Recorder* recorder) const {
        const std::u16string_view lowerKey = keyCaseFolder.Fold(key, foldBuffer);
        if (recorder == nullptr) {
            sink.Add(lowerKey, std::move(value));
            return;
        }
        try {
            sink.Add(lowerKey, std::move(value));
        } catch (const DuplicateKeyException&) {
            recorder->Duplicate();
        }
    }
};

struct SetPlainText {
    using result_type = void;
    template <typename Range>
    void operator()(std::u16string_view& text, const Range& written) const {
        text = UnitsOf(written.begin(), written.end());
    }
};

// StoreEntry for an entry of one text without escapes, which the grammar has as a view only.
struct StorePlainEntry {
    using result_type = void;
    void operator()(EntrySink& sink, const Model::KeyCaseFolder& keyCaseFolder,
                    std::u16string_view key, std::u16string& foldBuffer,
                    std::u16string_view text) const {
        sink.AddPlain(keyCaseFolder.Fold(key, foldBuffer), text);
    }
};

// Reports a part of the file that has matched whole to the recorder, if there is one.
struct RecordSpan {
    using result_type = void;
    template <typename Recorder, typename Range>
    void operator()(Recorder* recorder, SpanKind kind, const Range& range) const {
        if (recorder != nullptr) {
            recorder->Record(kind, range.begin(), range.end());
        }
    }
};

struct BeginPlural {
    using result_type = void;
    template <typename Recorder>
    void operator()(Recorder* recorder) const {
        if (recorder != nullptr) {
            recorder->BeginPlural();
        }
    }
};

}  // namespace loc_file_actions

template <typename Iterator>
LocFileGrammar<Iterator>::LocFileGrammar(EntrySink& sink, SourceIndexRecorder<Iterator>* recorder)
    : LocFileGrammar::base_type(locFile_, "loc file"), sink_(sink), recorder_(recorder) {
    namespace qi = boost::spirit::qi;
    namespace wide = boost::spirit::standard_wide;
    namespace phx = boost::phoenix;
    using namespace loc_file_actions;
    using qi::_1;
    using qi::_val;
    using qi::lit;

    const phx::function<AppendOperand> appendOperand;
    const phx::function<MoveAssign> moveAssign;
    const phx::function<TakePluralForm> takePluralForm;
    const phx::function<MakeKeyRef> makeKeyRef;
    const phx::function<MakeParam> makeParam;
    const phx::function<SetPluralParam> setPluralParam;
    const phx::function<AppendForm> appendForm;
    const phx::function<SetEntryKey> setEntryKey;
    const phx::function<StoreEntry> storeEntry;
    const phx::function<StorePlainEntry> storePlainEntry;
    const phx::function<SetPlainText> setPlainText;
    const phx::function<RecordSpan> recordSpan;
    const phx::function<BeginPlural> beginPlural;
    const auto indexRecorder = phx::val(recorder_);

    // Comments are skipped only between entries; inside an entry only whitespace is.
    const auto storeParsedEntry =
        storeEntry(phx::ref(sink_), phx::cref(keyCaseFolder_), phx::cref(entryKey_),
                   phx::ref(foldedKey_), _1, indexRecorder);
    const auto storeParsedPlainEntry =
        storePlainEntry(phx::ref(sink_), phx::cref(keyCaseFolder_), phx::cref(entryKey_),
                        phx::ref(foldedKey_), phx::cref(plainText_));
    locFile_ = *(space_ | comment_) >>
               *(qi::skip(space_)[plainEntry_[storeParsedPlainEntry] |
                                  qi::raw[keyValueEntry_[storeParsedEntry]]
                                         [recordSpan(indexRecorder, SpanKind::kEntry, _1)]] >>
                 *(space_ | comment_)) > qi::eoi;

    // Not followed by "+", which would make the value longer than one text. A recorder wants
    // every span that keyValueEntry_ reports, so it does without.
    plainEntry_ = qi::eps(phx::val(recorder_) == nullptr) >>
                  qi::raw[KeyParser()][setEntryKey(phx::ref(entryKey_), _1)] >> lit(L'=') >>
                  qi::lexeme[lit(L'\'') >>
                             qi::raw[PlainTextParser()][setPlainText(phx::ref(plainText_), _1)] >>
                             lit(L'\'')] >>
                  !lit(L'+');

    comment_ = qi::raw[lit(L';') >> *(wide::char_ - lit(L'\r') - lit(L'\n'))]
                      [recordSpan(indexRecorder, SpanKind::kComment, _1)];

    keyValueEntry_ = qi::raw[KeyParser()][setEntryKey(phx::ref(entryKey_), _1),
                                          recordSpan(indexRecorder, SpanKind::kKey, _1)] >
                     lit(L'=') > value_[moveAssign(_val, _1)];

    key_ = KeyParser();

    // A "+" that no operand follows is not part of the value: the alternative backs up.
    value_ = operand_[appendOperand(_val, _1)] >> *(lit(L'+') >> operand_[appendOperand(_val, _1)]);

    operand_ = quotedString_[moveAssign(_val, _1)] | keyReference_[moveAssign(_val, _1)] |
               externalParameter_[moveAssign(_val, _1)] |
               qi::raw[pluralFormInvocation_[takePluralForm(_val, _1)]]
                      [recordSpan(indexRecorder, SpanKind::kPlural, _1)];

    quotedString_ = lit(L'\'') > QuotedTextParser() > lit(L'\'');

    externalParameterName_ = lit(L'$') > key_;

    // "$count :" opens a plural form, so it is not a parameter.
    externalParameter_ = qi::raw[externalParameterName_[makeParam(_val, _1)] >> !lit(L':')]
                                [recordSpan(indexRecorder, SpanKind::kParameter, _1)];

    keyReference_ = qi::raw[KeyParser()][makeKeyRef(_val, phx::cref(keyCaseFolder_), _1),
                                         recordSpan(indexRecorder, SpanKind::kReference, _1)];

    pluralFormInvocation_ = lit(L'{') > nestingLimit_ >
                            pluralParameterName_[setPluralParam(_val, _1)] > lit(L':') >
                            pluralFormValue_[appendForm(_val, _1)] >
                            qi::repeat(0, 5)[lit(L',') > pluralFormValue_[appendForm(_val, _1)]] >
                            lit(L'}')[--phx::ref(nesting_)];

    pluralParameterName_ = qi::raw[externalParameterName_[moveAssign(_val, _1)]]
                                  [recordSpan(indexRecorder, SpanKind::kPluralParameter, _1)];

    pluralFormValue_ =
        qi::raw[value_[moveAssign(_val, _1)]][recordSpan(indexRecorder, SpanKind::kPluralForm, _1)];

    nestingLimit_ = qi::eps(phx::ref(nesting_) <
                            kMaxPluralNesting)[++phx::ref(nesting_), beginPlural(indexRecorder)];

    locFile_.name("loc file");
    plainEntry_.name("key-value entry");
    comment_.name("comment");
    keyValueEntry_.name("key-value entry");
    key_.name("key");
    value_.name("value");
    operand_.name("operand");
    quotedString_.name("quoted string");
    externalParameterName_.name("external parameter name");
    externalParameter_.name("external parameter");
    keyReference_.name("key reference");
    pluralFormInvocation_.name("plural form invocation");
    // Named as what they stand for, which is what a report of their absence names.
    pluralParameterName_.name("external parameter name");
    pluralFormValue_.name("value");
    nestingLimit_.name("at most " + std::to_string(kMaxPluralNesting) +
                       " nested plural form invocations");
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
