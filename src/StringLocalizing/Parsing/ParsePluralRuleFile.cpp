#include "StringLocalizing/Parsing/ParsePluralRuleFile.h"

#include "StringLocalizing/Parsing/ParseErrorReport.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "StringLocalizing/Parsing/PluralFormRulesGrammar.h"
#include "StringLocalizing/Parsing/SourceIterator.h"

#include <boost/spirit/include/qi_char_class.hpp>
#include <boost/spirit/include/qi_expect.hpp>
#include <boost/spirit/include/qi_parse.hpp>

namespace LocalizationManager::StringLocalizing::Parsing {

Model::PluralRuleEntries ParsePluralRuleFile(const std::u16string& text,
                                             const std::u16string& path) {
    const SourceIterator begin = MakeSourceBegin(text, path);
    SourceIterator first = begin;
    const SourceIterator last;
    PluralFormRulesGrammar<SourceIterator> grammar;
    Model::PluralRuleEntries entries;
    try {
        // The start rule either reaches the end of the text or throws, so the result of the
        // parse carries no information.
        boost::spirit::qi::phrase_parse(first, last, grammar, boost::spirit::standard_wide::space,
                                        entries);
    } catch (const boost::spirit::qi::expectation_failure<SourceIterator>& failure) {
        throw ParsingException(MakeSyntaxError(failure.first, failure.what_, begin));
    }
    return entries;
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
