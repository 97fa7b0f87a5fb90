#include "StringLocalizing/Parsing/ParsingException.h"

#include "StringLocalizing/Parsing/DuplicateKeyException.h"
#include "StringLocalizing/Parsing/ParseErrorReport.h"
#include "ulo/rtl/TextConversion.h"

#include <utility>

namespace LocalizationManager::StringLocalizing::Parsing {

ParsingException::ParsingException(const std::u16string& report)
    : ulo::MessageError(ulo::WideToNarrowMessage(report)), report_(report) {}

ParsingException::ParsingException(SyntaxError syntaxError)
    : ParsingException(RenderParseErrorReport(syntaxError)) {
    syntaxError_ = std::move(syntaxError);
}

ParsingException::ParsingException(const DuplicateKeyException& duplicate)
    : ParsingException(ulo::Utf8ToWide(duplicate.Message())) {
    duplicateKey_ = duplicate.Key();
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
