#include "StringLocalizing/Parsing/ParseLocFile.h"

#include "StringLocalizing/Parsing/DuplicateKeyException.h"
#include "StringLocalizing/Parsing/LocFileGrammar.h"
#include "StringLocalizing/Parsing/ParseErrorReport.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "StringLocalizing/Parsing/SourceIterator.h"
#include "StringLocalizing/Parsing/TextIterator.h"

#include <boost/spirit/include/qi_expect.hpp>
#include <boost/spirit/include/qi_parse.hpp>

#include <stdexcept>

namespace LocalizationManager::StringLocalizing::Parsing {

void ParseLocFile(const std::u16string& text, const std::u16string& fileName,
                  Model::ResourceDictionary& dictionary) {
    TextIterator first = text.begin();
    LocFileGrammar<TextIterator> grammar(dictionary);
    try {
        // The start rule either reaches the end of the text or throws, so the result of the
        // parse carries no information.
        boost::spirit::qi::parse(first, text.end(), grammar);
    } catch (const boost::spirit::qi::expectation_failure<TextIterator>&) {
        // The plain iterator knows no line or column. Both parses run the same grammar, so the
        // parse on the position iterator stops at the same element and throws the report;
        // its entries go to a scratch dictionary, the caller's already holds them.
        Model::ResourceDictionary scratch;
        ParseLocFileWithPositions(text, fileName, scratch);
        throw std::logic_error(
            "the position-tracking parse accepted a text the fast parse refused");
    } catch (const DuplicateKeyException& duplicate) {
        throw ParsingException(duplicate);
    }
}

namespace {

void ParseWithPositions(const std::u16string& text, const std::u16string& fileName,
                        Model::ResourceDictionary& dictionary,
                        SourceIndexRecorder<SourceIterator>* recorder) {
    const SourceIterator begin = MakeSourceBegin(text, fileName);
    SourceIterator first = begin;
    const SourceIterator last;
    LocFileGrammar<SourceIterator> grammar(dictionary, recorder);
    try {
        boost::spirit::qi::parse(first, last, grammar);
    } catch (const boost::spirit::qi::expectation_failure<SourceIterator>& failure) {
        throw ParsingException(MakeSyntaxError(failure.first, failure.what_, begin));
    } catch (const DuplicateKeyException& duplicate) {
        throw ParsingException(duplicate);
    }
}

}  // namespace

void ParseLocFileIndexed(const std::u16string& text, const std::u16string& fileName,
                         Model::ResourceDictionary& dictionary, SourceIndex& index) {
    SourceIndexRecorder<SourceIterator> recorder(index, MakeSourceBegin(text, fileName));
    ParseWithPositions(text, fileName, dictionary, &recorder);
}

void ParseLocFileWithPositions(const std::u16string& text, const std::u16string& fileName,
                               Model::ResourceDictionary& dictionary) {
    ParseWithPositions(text, fileName, dictionary, nullptr);
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
