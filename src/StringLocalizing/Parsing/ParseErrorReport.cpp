#include "StringLocalizing/Parsing/ParseErrorReport.h"

#include "ulo/rtl/TextConversion.h"

#include <sstream>

namespace LocalizationManager::StringLocalizing::Parsing {

namespace {

std::u16string ToWide(std::size_t number) {
    const std::string digits = std::to_string(number);
    return std::u16string(digits.begin(), digits.end());
}

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

std::u16string RenderParseErrorReport(const SyntaxError& error) {
    std::u16string report = u"parse error at file ";
    report += error.fileName;
    report += u" line ";
    report += ToWide(error.line);
    report += u" column ";
    report += ToWide(error.column);
    report += u"\n\"";
    report += error.lineText;
    report += u"\"\n";
    // A blank in a field as wide as the column, so the caret stands under the failing
    // character once the opening double quote of the line above is counted.
    report.append(error.column > 0 ? error.column - 1 : 0, u' ');
    report += u" ^- expecting ";
    report += error.expected;
    report += u" here";
    if (error.expected == u"\"=\"") {
        // The misspelling is the system's own text and is kept as it is.
        report += u" or one of previous lines miss termination '(qoute)";
    }
    return report;
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
