#pragma once

#include "StringLocalizing/Parsing/MoveAssign.h"
#include "StringLocalizing/Parsing/PluralFormRulesGrammar.h"

#include <boost/phoenix/bind/bind_function.hpp>
#include <boost/phoenix/core.hpp>
#include <boost/phoenix/function.hpp>
#include <boost/phoenix/operator.hpp>
#include <boost/spirit/include/qi.hpp>

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace LocalizationManager::StringLocalizing::Parsing {

namespace plural_rule_callables {

using Predicate = Model::PluralRuleEntry;
using NumberExpression = boost::function<std::int64_t(std::int64_t)>;

// Every number of a rule file is stored as a 32-bit value: 2147483648 and above read as
// negative numbers, 4294967295 as -1.
inline std::int64_t SignExtend(std::uint32_t number) {
    constexpr std::int64_t kTwoToThe32 = std::int64_t{1} << 32;
    return number <= INT32_MAX ? std::int64_t{number} : std::int64_t{number} - kTwoToThe32;
}

struct Identity {
    std::int64_t operator()(std::int64_t n) const { return n; }
};

// Truncating remainder. The modulus is never 0 (the grammar refuses it) and lies in
// [-2^31, 2^31 - 1], so the only quotient that overflows is INT64_MIN / -1, which traps on
// x86 although its remainder is 0.
struct Remainder {
    std::int64_t modulus;

    std::int64_t operator()(std::int64_t n) const { return modulus == -1 ? 0 : n % modulus; }
};

// Both sides are signed 64-bit values and nothing is computed from them, so no comparison can
// overflow.
template <typename Compare>
struct Comparison {
    NumberExpression number;
    std::int64_t constant;

    bool operator()(std::int64_t n) const { return Compare()(number(n), constant); }
};

// A chain "a || b || c" is kept flat rather than as the left fold ((a || b) || c): the meaning
// is the same (left to right, stopping at the first operand that holds), but the fold of a
// hostile chain of 200,000 operands recurses that deep when it is called and when it is
// destroyed, and building it is quadratic because boost::function copies what it stores. The
// operands are shared, so copying a condition (every lookup of a rule copies its entries)
// costs the same however long the chain is.
struct AnyOf {
    std::shared_ptr<const std::vector<Predicate>> operands;

    bool operator()(std::int64_t n) const {
        for (const Predicate& operand : *operands) {
            if (operand(n)) {
                return true;
            }
        }
        return false;
    }
};

// "a && b && c", flat and shared for the same reasons; stops at the first operand that fails.
struct AllOf {
    std::shared_ptr<const std::vector<Predicate>> operands;

    bool operator()(std::int64_t n) const {
        for (const Predicate& operand : *operands) {
            if (!operand(n)) {
                return false;
            }
        }
        return true;
    }
};

}  // namespace plural_rule_callables

namespace plural_rule_actions {

using plural_rule_callables::NumberExpression;
using plural_rule_callables::Predicate;

// Semantic actions move what a rule synthesised into its parent: a chain may hold a large
// vector of conditions.

struct AppendOperand {
    using result_type = void;
    void operator()(std::vector<Predicate>& operands, Predicate& operand) const {
        operands.push_back(std::move(operand));
    }
};

// A single operand stands for itself, so parentheses and one-term chains add no call level.
template <typename Combination>
struct Combine {
    using result_type = void;
    void operator()(Predicate& result, std::vector<Predicate>& operands) const {
        if (operands.size() == 1) {
            result = std::move(operands.front());
        } else {
            result =
                Combination{std::make_shared<const std::vector<Predicate>>(std::move(operands))};
        }
    }
};

struct SetIdentity {
    using result_type = void;
    void operator()(NumberExpression& result) const { result = plural_rule_callables::Identity(); }
};

struct SetRemainder {
    using result_type = void;
    void operator()(NumberExpression& result, std::uint32_t modulus) const {
        result = plural_rule_callables::Remainder{plural_rule_callables::SignExtend(modulus)};
    }
};

// The text a condition was parsed from, for ConditionTexts.
struct KeepText {
    using result_type = void;
    template <typename Range>
    void operator()(std::vector<std::u16string>& texts, const Range& range) const {
        texts.emplace_back(range.begin(), range.end());
    }
};

}  // namespace plural_rule_actions

template <typename Iterator>
typename PluralFormRulesGrammar<Iterator>::Predicate
PluralFormRulesGrammar<Iterator>::MakeComparison(NumberExpression number, Operator op,
                                                 std::uint32_t constant) {
    using plural_rule_callables::Comparison;
    const std::int64_t value = plural_rule_callables::SignExtend(constant);
    switch (op) {
        case Operator::Equal:
            return Comparison<std::equal_to<std::int64_t>>{std::move(number), value};
        case Operator::Unequal:
            return Comparison<std::not_equal_to<std::int64_t>>{std::move(number), value};
        case Operator::Less:
            return Comparison<std::less<std::int64_t>>{std::move(number), value};
        case Operator::LessOrEqual:
            return Comparison<std::less_equal<std::int64_t>>{std::move(number), value};
        case Operator::Greater:
            return Comparison<std::greater<std::int64_t>>{std::move(number), value};
        case Operator::GreaterOrEqual:
            return Comparison<std::greater_equal<std::int64_t>>{std::move(number), value};
    }
    throw std::logic_error("unexpected compare operator type");
}

template <typename Iterator>
PluralFormRulesGrammar<Iterator>::PluralFormRulesGrammar()
    : PluralFormRulesGrammar::base_type(pluralFormRules_, "PluralFormRules") {
    namespace qi = boost::spirit::qi;
    namespace phx = boost::phoenix;
    using namespace plural_rule_actions;
    using qi::_1;
    using qi::_2;
    using qi::_3;
    using qi::_a;
    using qi::_pass;
    using qi::_val;
    using qi::lit;

    const phx::function<MoveAssign> moveAssign;
    const phx::function<AppendOperand> appendOperand;
    const phx::function<Combine<plural_rule_callables::AnyOf>> anyOf;
    const phx::function<Combine<plural_rule_callables::AllOf>> allOf;
    const phx::function<SetIdentity> setIdentity;
    const phx::function<SetRemainder> setRemainder;
    const phx::function<Compiler> compile;
    const phx::function<KeepText> keepText;
    const qi::uint_parser<std::uint32_t> number;

    pluralFormRules_ =
        qi::repeat(0, kMaxPluralRuleEntries)[qi::raw[or_[appendOperand(_val, _1)]][keepText(
                                                 phx::ref(conditionTexts_), _1)] > lit(L';')] >
        qi::eoi;

    or_ = (and_[appendOperand(_a, _1)] >>
           *(orOperator_ > and_[appendOperand(_a, _1)]))[anyOf(_val, _a)];
    orOperator_ = lit(L"||");

    and_ = (condition_[appendOperand(_a, _1)] >>
            *(andOperator_ > condition_[appendOperand(_a, _1)]))[allOf(_val, _a)];
    andOperator_ = lit(L"&&");

    condition_ =
        compareExpression_[moveAssign(_val, _1)] |
        (lit(L'(') > nestingLimit_ > or_[moveAssign(_val, _1)] > lit(L')')[--phx::ref(nesting_)]);

    nestingLimit_ = qi::eps(phx::ref(nesting_) < kMaxRuleNesting)[++phx::ref(nesting_)];

    compareExpression_ =
        (numberExpression_ > compareOperator_ >
         number)[_val = phx::bind(&PluralFormRulesGrammar::MakeComparison, _1, _2, _3)];

    numberExpression_ = parameter_[moveAssign(_val, _1)] | moduloExpression_[moveAssign(_val, _1)];

    // The look-ahead sends "n %" on to the modulo expression.
    parameter_ = (lit(L'n') >> !lit(L'%'))[setIdentity(_val)];

    // A modulus of 0 is refused here, when the rule is built, with the caret at the 0: every
    // evaluation of it would divide by zero. The skip and the look-ahead keep a missing or too
    // large number reported as "<unsigned-integer>", at the place where the number should be.
    moduloExpression_ =
        lit(L'n') > lit(L'%') > qi::eps > &number > nonZeroModulus_[setRemainder(_val, _1)];
    nonZeroModulus_ = qi::lexeme[number[_pass = (_1 != 0u), _val = _1]];

    compareOperator_ = equal_ | unequal_ | less_ | greater_ | lessOrEqual_ | greaterOrEqual_;
    equal_ = lit(L"==")[compile(_val, Operator::Equal)];
    unequal_ = lit(L"!=")[compile(_val, Operator::Unequal)];
    // "Less" and "Greater" are tried first; their look-ahead leaves "<=" and ">=" to the rules
    // below.
    less_ = (lit(L'<') >> !lit(L'='))[compile(_val, Operator::Less)];
    greater_ = (lit(L'>') >> !lit(L'='))[compile(_val, Operator::Greater)];
    lessOrEqual_ = lit(L"<=")[compile(_val, Operator::LessOrEqual)];
    greaterOrEqual_ = lit(L">=")[compile(_val, Operator::GreaterOrEqual)];

    // Condition, NumberExpression, CompareOperator and the "&&" and "||" rules stay unnamed:
    // an expected item of theirs is reported as "<unnamed-rule>".
    pluralFormRules_.name("PluralFormRules");
    or_.name("Or");
    and_.name("And");
    compareExpression_.name("CompareExpression");
    parameter_.name("Parameter");
    moduloExpression_.name("ModuloExpression");
    nonZeroModulus_.name("non-zero modulus");
    nestingLimit_.name("at most " + std::to_string(kMaxRuleNesting) + " nested parentheses");
    equal_.name("Equal");
    unequal_.name("Unequal");
    less_.name("Less");
    greater_.name("Greater");
    lessOrEqual_.name("LessOrEqual");
    greaterOrEqual_.name("GreaterOrEqual");
}

}  // namespace LocalizationManager::StringLocalizing::Parsing
