#include "StringLocalizing/Parsing/ParseErrorReport.h"

#include "ulo/rtl/TextConversion.h"

#include <sstream>

namespace LocalizationManager::StringLocalizing::Parsing {

namespace {

ExpectedKind KindOf(const boost::spirit::info& expected) {
    if (expected.tag == "eoi") {
        return ExpectedKind::kEndOfInput;
    }
    if (expected.tag.compare(0, 8, "literal-") == 0) {
        return ExpectedKind::kLiteral;
    }
    return ExpectedKind::kElement;
}

std::u16string DescribeExpected(const boost::spirit::info& expected) {
    // Spirit prints a rule or other named parser as "<name>" and a literal as "\"text\"";
    // its text is UTF-8.
    std::ostringstream description;
    description << expected;
    return ulo::Utf8ToWide(description.str());
}

}  // namespace

SyntaxError MakeSyntaxError(const SourceIterator& failure, const boost::spirit::info& expected,
                            const SourceIterator& textBegin) {
    const SourcePosition& position = failure.get_position();
    SyntaxError error;
    error.fileName = position.file;
    error.line = position.line;
    error.column = position.column;
    error.offset = static_cast<std::size_t>(failure.base() - textBegin.base());
    error.lineText = failure.get_currentline();
    error.expectedKind = KindOf(expected);
    error.expected = DescribeExpected(expected);
    return error;
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
