#pragma once

// The grammar of a localization file. Declared here, defined in LocFileGrammarDef.h and
// instantiated twice, each in a translation unit of its own so that the heavy template
// expansions build in parallel: for TextIterator (the fast parse) in LocFileGrammarText.cpp and
// for SourceIterator (the parse that builds reports) in LocFileGrammar.cpp.

#include "StringLocalizing/Model/KeyCase.h"
#include "StringLocalizing/Model/Value.h"
#include "StringLocalizing/Parsing/EntrySink.h"
#include "StringLocalizing/Parsing/SourceIndexRecorder.h"
#include "StringLocalizing/Parsing/WideSpaceParser.h"

#include <boost/spirit/include/qi_grammar.hpp>
#include <boost/spirit/include/qi_rule.hpp>

#include <string>

namespace LocalizationManager::StringLocalizing::Parsing {

// Plural form invocations may hold further invocations; deeper nesting than this is refused
// with a parse error, so a hostile file cannot exhaust the stack of the recursive descent.
// Measured on an 8 MiB stack: the descent crashes at about 4,100 levels in an optimised build
// (2 KiB a level) and 1,400 under AddressSanitizer (6 KiB a level), so 32 levels stay far
// inside even a 1 MiB thread stack, and the code that later walks the parsed tree
// recursively inherits the same bound.
constexpr int kMaxPluralNesting = 32;

// Parses a whole localization file and adds each entry to the sink given at construction as
// soon as it is parsed. Rule names appear in error reports. A grammar object
// serves one parse at a time (it counts the nesting depth of the parse in progress).
//
// With a recorder, the grammar reports where each part of the file stands, and a key defined
// again is reported to the recorder instead of failing the parse (the sink keeps the first
// definition). Without one, a key defined again throws DuplicateKeyException.
template <typename Iterator>
class LocFileGrammar : public boost::spirit::qi::grammar<Iterator> {
  public:
    using Skipper = WideSpaceParser;

    explicit LocFileGrammar(EntrySink& sink, SourceIndexRecorder<Iterator>* recorder = nullptr);

    LocFileGrammar(const LocFileGrammar&) = delete;
    LocFileGrammar& operator=(const LocFileGrammar&) = delete;

  private:
    template <typename... Parameters>
    using Rule = boost::spirit::qi::rule<Iterator, Parameters...>;

    EntrySink& sink_;
    SourceIndexRecorder<Iterator>* const recorder_;
    // Keys and references are folded under the global locale of the parse.
    const Model::KeyCaseFolder keyCaseFolder_;
    int nesting_ = 0;

    // Made with the grammar, so it takes the runtime's whitespace as it is at the parse.
    const WideSpaceParser space_;
    // The entry being parsed: its key where the text writes it, and its folded form when
    // folding changes it (one buffer serves every entry).
    std::u16string_view entryKey_;
    std::u16string foldedKey_;
    // The text of an entry of one quoted string without escapes, where the text holds it.
    std::u16string_view plainText_;

    Rule<> locFile_;
    Rule<> comment_;
    // The commonest entry, a key and one quoted string without escapes, matched without
    // building a value: it fails, consuming nothing and throwing nothing, on any other entry,
    // which keyValueEntry_ then parses and reports. Only without a recorder.
    Rule<Skipper> plainEntry_;
    // Synthesises the entry's value; its key goes to entryKey_.
    Rule<Model::Value(), Skipper> keyValueEntry_;
    Rule<std::u16string()> key_;
    Rule<Model::Value(), Skipper> value_;
    Rule<Model::Operand(), Skipper> operand_;
    Rule<std::u16string()> quotedString_;
    Rule<std::u16string()> externalParameterName_;
    Rule<Model::Param(), Skipper> externalParameter_;
    Rule<Model::KeyRef()> keyReference_;
    Rule<Model::PluralForm(), Skipper> pluralFormInvocation_;
    // The discriminator and the forms of a plural invocation, each reported to the recorder.
    Rule<std::u16string()> pluralParameterName_;
    Rule<Model::Value(), Skipper> pluralFormValue_;
    Rule<> nestingLimit_;
};

}  // namespace LocalizationManager::StringLocalizing::Parsing
