#include "StringLocalizing/Parsing/ParsingException.h"

#include "ulo/rtl/TextConversion.h"

namespace LocalizationManager::StringLocalizing::Parsing {

ParsingException::ParsingException(const std::u16string& report)
    : ulo::MessageError(ulo::WideToNarrowMessage(report)), report_(report) {}

}  // namespace LocalizationManager::StringLocalizing::Parsing
