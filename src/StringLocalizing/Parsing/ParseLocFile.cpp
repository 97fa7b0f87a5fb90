#include "StringLocalizing/Parsing/ParseLocFile.h"

#include "StringLocalizing/Parsing/DuplicateKeyException.h"
#include "StringLocalizing/Parsing/LocFileGrammar.h"
#include "StringLocalizing/Parsing/ParseErrorReport.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "StringLocalizing/Parsing/SourceIterator.h"
#include "ulo/rtl/TextConversion.h"

#include <boost/spirit/include/qi_expect.hpp>
#include <boost/spirit/include/qi_parse.hpp>

namespace LocalizationManager::StringLocalizing::Parsing {

void ParseLocFile(const std::u16string& text, const std::u16string& fileName,
                  Model::ResourceDictionary& dictionary) {
    SourceIterator first = MakeSourceBegin(text, fileName);
    const SourceIterator last;
    LocFileGrammar<SourceIterator> grammar(dictionary);
    try {
        // The start rule either reaches the end of the text or throws, so the result of the
        // parse carries no information.
        boost::spirit::qi::parse(first, last, grammar);
    } catch (const boost::spirit::qi::expectation_failure<SourceIterator>& failure) {
        throw ParsingException(BuildParseErrorReport(failure.first, failure.what_));
    } catch (const DuplicateKeyException& duplicate) {
        throw ParsingException(ulo::Utf8ToWide(duplicate.what()));
    }
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
