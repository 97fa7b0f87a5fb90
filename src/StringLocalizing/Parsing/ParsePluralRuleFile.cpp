#include "StringLocalizing/Parsing/ParsePluralRuleFile.h"

#include "StringLocalizing/Parsing/ParseErrorReport.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "StringLocalizing/Parsing/PluralFormRulesGrammar.h"
#include "StringLocalizing/Parsing/SourceIterator.h"

#include <boost/spirit/include/qi_char_class.hpp>
#include <boost/spirit/include/qi_expect.hpp>
#include <boost/spirit/include/qi_parse.hpp>

#include <cwctype>

namespace LocalizationManager::StringLocalizing::Parsing {

namespace {

// The grammar admits only ASCII symbols besides whitespace, which the parser's skipper
// recognises; every run of it becomes one space.
std::string OneLine(const std::u16string& text) {
    std::string line;
    bool blank = false;
    for (const char16_t unit : text) {
        if (std::iswspace(static_cast<std::wint_t>(unit)) != 0) {
            blank = true;
            continue;
        }
        if (blank && !line.empty()) {
            line += ' ';
        }
        blank = false;
        line += static_cast<char>(unit);
    }
    return line;
}

}  // namespace

Model::PluralRuleEntries ParsePluralRuleFile(const std::u16string& text, const std::u16string& path,
                                             std::vector<std::string>* conditionTexts) {
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
    if (conditionTexts != nullptr) {
        conditionTexts->clear();
        for (const std::u16string& condition : grammar.ConditionTexts()) {
            conditionTexts->push_back(OneLine(condition));
        }
    }
    return entries;
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
