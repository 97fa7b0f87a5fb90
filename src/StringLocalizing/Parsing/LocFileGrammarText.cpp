#include "StringLocalizing/Parsing/LocFileGrammarDef.h"
#include "StringLocalizing/Parsing/TextIterator.h"

namespace LocalizationManager::StringLocalizing::Parsing {

template class LocFileGrammar<TextIterator>;

}  // namespace LocalizationManager::StringLocalizing::Parsing
