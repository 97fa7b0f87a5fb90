#include "StringLocalizing/Parsing/SyntaxError.h"

namespace LocalizationManager::StringLocalizing::Parsing {

namespace {

std::u16string ToWide(std::size_t number) {
    const std::string digits = std::to_string(number);
    return std::u16string(digits.begin(), digits.end());
}

}  // namespace

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
    report += u" ^- ";
    report += RenderExpectation(error);
    return report;
}

std::u16string RenderExpectation(const SyntaxError& error) {
    std::u16string expectation = u"expecting " + error.expected + u" here";
    if (error.expected == u"\"=\"") {
        // The misspelling is the system's own text and is kept as it is.
        expectation += u" or one of previous lines miss termination '(qoute)";
    }
    return expectation;
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
