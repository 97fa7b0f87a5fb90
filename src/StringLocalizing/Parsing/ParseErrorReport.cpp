#include "StringLocalizing/Parsing/ParseErrorReport.h"

#include "ulo/rtl/TextConversion.h"

#include <sstream>

namespace LocalizationManager::StringLocalizing::Parsing {

namespace {

std::u16string ToWide(std::size_t number) {
    const std::string digits = std::to_string(number);
    return std::u16string(digits.begin(), digits.end());
}

}  // namespace

std::u16string DescribeExpected(const boost::spirit::info& expected) {
    // Spirit prints a rule or other named parser as "<name>" and a literal as "\"text\"";
    // its text is UTF-8.
    std::ostringstream description;
    description << expected;
    return ulo::Utf8ToWide(description.str());
}

std::u16string BuildParseErrorReport(const SourceIterator& failure,
                                     const boost::spirit::info& expected) {
    const SourcePosition& position = failure.get_position();
    const std::u16string description = DescribeExpected(expected);

    std::u16string report = u"parse error at file ";
    report += position.file;
    report += u" line ";
    report += ToWide(position.line);
    report += u" column ";
    report += ToWide(position.column);
    report += u"\n\"";
    report += failure.get_currentline();
    report += u"\"\n";
    // A blank in a field as wide as the column, so the caret stands under the failing
    // character once the opening double quote of the line above is counted.
    report.append(position.column > 0 ? position.column - 1 : 0, u' ');
    report += u" ^- expecting ";
    report += description;
    report += u" here";
    if (description == u"\"=\"") {
        // The misspelling is the system's own text and is kept as it is.
        report += u" or one of previous lines miss termination '(qoute)";
    }
    return report;
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
