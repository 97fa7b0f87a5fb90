#pragma once

// The grammar of a plural rule file. Declared here, defined in PluralFormRulesGrammarDef.h and
// instantiated once, for SourceIterator, in PluralFormRulesGrammar.cpp, so that the heavy
// template expansion happens in a single translation unit.

#include "StringLocalizing/Model/IPluralFormRules.h"

#include <boost/function.hpp>
#include <boost/spirit/include/qi_grammar.hpp>
#include <boost/spirit/include/qi_rule.hpp>
#include <boost/spirit/include/support_standard_wide.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Parsing {

// A rule file holds at most this many conditions, one per plural form; a further one is a
// parse error (end of input expected).
constexpr int kMaxPluralRuleEntries = 5;

// Parentheses may hold further parentheses; deeper nesting than this is refused with a parse
// error, so a hostile file cannot exhaust the stack of the recursive descent. Measured on an
// 8 MiB stack without the limit: the descent crashes at about 3,400 levels in an optimised build
// (2.4 KiB a level) and at about 500 under AddressSanitizer (16 KiB a level), so 32 levels stay
// inside even a 1 MiB thread stack. Real rules nest two levels at most.
constexpr int kMaxRuleNesting = 32;

// Parses a whole plural rule file into its conditions, in file order. Rule names appear in
// error reports. The conditions it builds are immutable and may be called concurrently; their
// evaluation is defined for every signed 64-bit argument and its call depth is bounded by the
// nesting limit, however long a chain of "&&" or "||" is. A grammar object serves one parse at
// a time (it counts the nesting depth of the parse in progress).
template <typename Iterator>
class PluralFormRulesGrammar
    : public boost::spirit::qi::grammar<Iterator, Model::PluralRuleEntries(),
                                        boost::spirit::standard_wide::space_type> {
  public:
    using Skipper = boost::spirit::standard_wide::space_type;

    // A condition over the discriminator.
    using Predicate = Model::PluralRuleEntry;
    // The left-hand side of a comparison: the discriminator or its remainder.
    using NumberExpression = boost::function<std::int64_t(std::int64_t)>;

    enum class Operator {
        Equal = 0,
        Unequal = 1,
        Less = 2,
        LessOrEqual = 3,
        Greater = 4,
        GreaterOrEqual = 5
    };

    // Semantic action of the operator rules: stores the operator the rule matched as the
    // rule's result.
    struct Compiler {
        using result_type = void;
        void operator()(Operator& result, Operator matched) const { result = matched; }
    };

    PluralFormRulesGrammar();

    PluralFormRulesGrammar(const PluralFormRulesGrammar&) = delete;
    PluralFormRulesGrammar& operator=(const PluralFormRulesGrammar&) = delete;

    // The condition "number(n) op constant" as a comparison of signed 64-bit numbers; the
    // constant is the 32-bit value sign-extended, so 4294967295 compares as -1. Throws
    // std::logic_error ("unexpected compare operator type") for a value outside Operator.
    static Predicate MakeComparison(NumberExpression number, Operator op, std::uint32_t constant);

    // The text of each condition parsed so far, as written from its first symbol to its last
    // (whitespace inside kept), in file order.
    const std::vector<std::u16string>& ConditionTexts() const { return conditionTexts_; }

  private:
    template <typename... Parameters>
    using Rule = boost::spirit::qi::rule<Iterator, Parameters...>;
    using Operands = boost::spirit::qi::locals<std::vector<Predicate>>;

    int nesting_ = 0;
    std::vector<std::u16string> conditionTexts_;

    Rule<Model::PluralRuleEntries(), Skipper> pluralFormRules_;
    Rule<Predicate(), Operands, Skipper> or_;
    Rule<Skipper> orOperator_;
    Rule<Predicate(), Operands, Skipper> and_;
    Rule<Skipper> andOperator_;
    Rule<Predicate(), Skipper> condition_;
    Rule<Skipper> nestingLimit_;
    Rule<Predicate(), Skipper> compareExpression_;
    Rule<NumberExpression(), Skipper> numberExpression_;
    Rule<NumberExpression(), Skipper> parameter_;
    Rule<NumberExpression(), Skipper> moduloExpression_;
    Rule<std::uint32_t(), Skipper> nonZeroModulus_;
    Rule<Operator(), Skipper> compareOperator_;
    Rule<Operator(), Skipper> equal_;
    Rule<Operator(), Skipper> unequal_;
    Rule<Operator(), Skipper> less_;
    Rule<Operator(), Skipper> greater_;
    Rule<Operator(), Skipper> lessOrEqual_;
    Rule<Operator(), Skipper> greaterOrEqual_;
};

}  // namespace LocalizationManager::StringLocalizing::Parsing
