#include "StringLocalizing/Parsing/LocFileGrammarDef.h"
#include "StringLocalizing/Parsing/SourceIterator.h"

namespace LocalizationManager::StringLocalizing::Parsing {

template class LocFileGrammar<SourceIterator>;

}  // namespace LocalizationManager::StringLocalizing::Parsing
