#include "RuleFileCheck.h"

#include "File/FileStream.h"
#include "FileChecks.h"
#include "LocFile.h"
#include "RuleSamples.h"
#include "StringLocalizing/Parsing/ParsePluralRuleFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "ulo/rtl/TextConversion.h"

#include <algorithm>
#include <exception>
#include <new>

namespace locmgr::analysis {

namespace {

namespace Parsing = LocalizationManager::StringLocalizing::Parsing;

constexpr std::size_t kMaxConditions = 5;

Finding RuleFinding(FindingKind kind, const std::u16string& path,
                    const std::vector<std::string>& cultures, const std::string& message) {
    Finding finding;
    finding.kind = kind;
    finding.file = ulo::WideToNarrowMessage(path);
    finding.message = message;
    finding.cultures = cultures;
    return finding;
}

// The last line that holds anything: where a missing last condition belongs.
int LastLine(const std::u16string& text) {
    const std::size_t last = text.find_last_not_of(u" \t\r\n");
    return last == std::u16string::npos ? 1 : LineStarts(text).LineOf(last);
}

}  // namespace

std::vector<Finding> CheckRuleFile(const std::u16string& path,
                                   const std::vector<std::string>& cultures) {
    std::vector<Finding> findings;
    std::u16string text;
    try {
        text = LocalizationManager::File::GetFileContent(path);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        findings.push_back(RuleFinding(FindingKind::kUnreadableFile, path, cultures,
                                       std::string("cannot read the file: ") + error.what()));
        return findings;
    }
    LocalizationManager::StringLocalizing::Model::PluralRuleEntries entries;
    try {
        entries = Parsing::ParsePluralRuleFile(text, path);
    } catch (const Parsing::ParsingException& error) {
        const Parsing::SyntaxError* syntax = error.Syntax();
        std::string message = syntax != nullptr
                                  ? ulo::WideToNarrowMessage(Parsing::RenderExpectation(*syntax))
                                  : std::string(ulo::FullMessage(error));
        if (static_cast<std::size_t>(std::count(text.begin(), text.end(), u';')) > kMaxConditions) {
            message += " (a rule file holds at most 5 conditions)";
        }
        Finding finding = RuleFinding(FindingKind::kRuleParseError, path, cultures, message);
        finding.report = ulo::FullMessage(error);
        if (syntax != nullptr) {
            const TextPosition position = LineStarts(text).PositionOf(
                {syntax->offset, static_cast<std::uint32_t>(syntax->line),
                 static_cast<std::uint32_t>(syntax->column)});
            finding.line = position.line;
            finding.column = position.column;
            finding.unitColumn = position.unitColumn;
        }
        findings.push_back(finding);
        return findings;
    }
    const FormSamples samples = ClassifyNumbers(entries, SampleNumbers(text), 3);
    if (!samples.withoutForm.empty()) {
        std::string numbers;
        for (const std::int64_t number : samples.withoutForm) {
            numbers += (numbers.empty() ? "" : ", ") + std::to_string(number);
        }
        Finding finding = RuleFinding(
            FindingKind::kRuleGap, path, cultures,
            entries.empty()
                ? "the rule holds no condition: no number has a form, and every plural "
                  "invocation fails"
                : "no condition holds for " + numbers +
                      ": texts with a plural invocation fail for such numbers (Cannot find "
                      "rule entry ... and discriminator value " +
                      std::to_string(samples.withoutForm.front()) +
                      "); end the file with a condition that always holds, such as "
                      "\"n >= 0 || n < 1;\"");
        finding.line = LastLine(text);
        finding.column = finding.unitColumn = 1;
        findings.push_back(finding);
    }
    return findings;
}

}  // namespace locmgr::analysis
