#include "StringLocalizing/Parsing/PluralFormRulesGrammarDef.h"
#include "StringLocalizing/Parsing/SourceIterator.h"

namespace LocalizationManager::StringLocalizing::Parsing {

template class PluralFormRulesGrammar<SourceIterator>;

}  // namespace LocalizationManager::StringLocalizing::Parsing
