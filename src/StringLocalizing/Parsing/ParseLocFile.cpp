#include "StringLocalizing/Parsing/ParseLocFile.h"

#include "StringLocalizing/Parsing/DuplicateKeyException.h"
#include "StringLocalizing/Parsing/LocFileGrammar.h"
#include "StringLocalizing/Parsing/ParseErrorReport.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "StringLocalizing/Parsing/SourceIterator.h"
#include "StringLocalizing/Parsing/TextIterator.h"

#include <boost/spirit/include/qi_expect.hpp>
#include <boost/spirit/include/qi_parse.hpp>

#include <algorithm>
#include <stdexcept>
#include <unordered_map>
#include <vector>

namespace LocalizationManager::StringLocalizing::Parsing {

namespace {

// The fast parse into any sink.
void ParseInto(const std::u16string& text, const std::u16string& fileName, EntrySink& sink) {
    TextIterator first = text.begin();
    LocFileGrammar<TextIterator> grammar(sink);
    try {
        try {
            // The start rule either reaches the end of the text or throws, so the result of
            // the parse carries no information.
            boost::spirit::qi::parse(first, text.end(), grammar);
        } catch (const boost::spirit::qi::expectation_failure<TextIterator>&) {
            // The plain iterator knows no line or column. Both parses run the same grammar, so
            // the parse on the position iterator stops at the same element and throws the
            // report; its entries go to a scratch dictionary, the caller's store already holds
            // them. The dictionary stops at a key defined twice, so a duplicate before the
            // error is what it reports, although the store would find it only when sealed.
            Model::ResourceDictionary scratch;
            ParseLocFileWithPositions(text, fileName, scratch);
            throw std::logic_error(
                "the position-tracking parse accepted a text the fast parse refused");
        }
        sink.Finish();
    } catch (const DuplicateKeyException& duplicate) {
        throw ParsingException(duplicate);
    }
}

}  // namespace

void ParseLocFile(const std::u16string& text, const std::u16string& fileName,
                  Model::ResourceDictionary& dictionary) {
    DictionarySink sink(dictionary);
    ParseInto(text, fileName, sink);
}

void ParseLocFile(const std::u16string& text, const std::u16string& fileName,
                  Model::CompactTexts& texts) {
    CompactTextsSink sink(texts);
    ParseInto(text, fileName, sink);
}

namespace {

void ParseWithPositions(const std::u16string& text, const std::u16string& fileName,
                        Model::ResourceDictionary& dictionary,
                        SourceIndexRecorder<SourceIterator>* recorder) {
    const SourceIterator begin = MakeSourceBegin(text, fileName);
    SourceIterator first = begin;
    const SourceIterator last;
    DictionarySink sink(dictionary);
    LocFileGrammar<SourceIterator> grammar(sink, recorder);
    try {
        boost::spirit::qi::parse(first, last, grammar);
    } catch (const boost::spirit::qi::expectation_failure<SourceIterator>& failure) {
        throw ParsingException(MakeSyntaxError(failure.first, failure.what_, begin));
    } catch (const DuplicateKeyException& duplicate) {
        throw ParsingException(duplicate);
    }
}

// Every place the index records, in the order of their offsets.
std::vector<SourcePoint*> PointsOf(SourceIndex& index) {
    std::vector<SourcePoint*> points;
    const auto add = [&points](SourceSpan& span) {
        points.push_back(&span.begin);
        points.push_back(&span.end);
    };
    for (IndexedEntry& entry : index.entries) {
        add(entry.keySpan);
        add(entry.span);
        for (IndexedReference& reference : entry.references) {
            add(reference.span);
        }
        for (IndexedParameter& parameter : entry.parameters) {
            add(parameter.span);
        }
        for (IndexedPlural& plural : entry.plurals) {
            add(plural.span);
            add(plural.parameterSpan);
            for (SourceSpan& form : plural.forms) {
                add(form);
            }
        }
    }
    for (DuplicateDefinition& duplicate : index.duplicates) {
        add(duplicate.secondKey);
    }
    for (SourceSpan& comment : index.comments) {
        add(comment);
    }
    // Entries follow each other, so the points are nearly in order already.
    std::stable_sort(points.begin(), points.end(),
                     [](const SourcePoint* left, const SourcePoint* right) {
                         return left->offset < right->offset;
                     });
    return points;
}

// Gives every recorded point its line and column, counted as the reports count them: by the
// report's own iterator, walked once over the text.
void LocateSourcePoints(const std::u16string& text, const std::u16string& fileName,
                        SourceIndex& index) {
    SourceIterator walker = MakeSourceBegin(text, fileName);
    std::size_t offset = 0;
    for (SourcePoint* point : PointsOf(index)) {
        for (; offset < point->offset && offset < text.size(); ++offset) {
            ++walker;
        }
        const SourcePosition& position = walker.get_position();
        point->line = static_cast<std::uint32_t>(position.line);
        point->column = static_cast<std::uint32_t>(position.column);
    }
}

// Each duplicate's first definition: the first entry with its key.
void FindFirstDefinitions(SourceIndex& index) {
    if (index.duplicates.empty()) {
        return;
    }
    std::unordered_map<std::u16string, const IndexedEntry*> firstEntries;
    for (const DuplicateDefinition& duplicate : index.duplicates) {
        firstEntries.emplace(duplicate.lowerKey, nullptr);
    }
    for (const IndexedEntry& entry : index.entries) {
        const auto found = firstEntries.find(entry.lowerKey);
        if (found != firstEntries.end() && found->second == nullptr) {
            found->second = &entry;
        }
    }
    for (DuplicateDefinition& duplicate : index.duplicates) {
        if (const IndexedEntry* first = firstEntries.at(duplicate.lowerKey)) {
            duplicate.firstKey = first->keySpan;
        }
    }
}

}  // namespace

void ParseLocFileIndexed(const std::u16string& text, const std::u16string& fileName,
                         Model::ResourceDictionary& dictionary, SourceIndex& index) {
    // The fast parse records offsets; one walk then finds their lines and columns.
    SourceIndexRecorder<TextIterator> recorder(index, text.begin());
    DictionarySink sink(dictionary);
    LocFileGrammar<TextIterator> grammar(sink, &recorder);
    TextIterator first = text.begin();
    try {
        boost::spirit::qi::parse(first, text.end(), grammar);
    } catch (const boost::spirit::qi::expectation_failure<TextIterator>&) {
        // The report comes from the position-tracking parse, which goes past duplicates as
        // this one did, so that it stops at the same place.
        Model::ResourceDictionary scratchDictionary;
        SourceIndex scratchIndex;
        SourceIndexRecorder<SourceIterator> scratchRecorder(scratchIndex,
                                                            MakeSourceBegin(text, fileName));
        try {
            ParseWithPositions(text, fileName, scratchDictionary, &scratchRecorder);
        } catch (const ParsingException&) {
            LocateSourcePoints(text, fileName, index);
            FindFirstDefinitions(index);
            throw;
        }
        throw std::logic_error(
            "the position-tracking parse accepted a text the fast parse refused");
    }
    LocateSourcePoints(text, fileName, index);
    FindFirstDefinitions(index);
}

void ParseLocFileWithPositions(const std::u16string& text, const std::u16string& fileName,
                               Model::ResourceDictionary& dictionary) {
    ParseWithPositions(text, fileName, dictionary, nullptr);
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
