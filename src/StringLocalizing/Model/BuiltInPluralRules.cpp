#include "StringLocalizing/Model/BuiltInPluralRules.h"

#include "StringLocalizing/Model/PluralFormRules.h"

#include <cstdint>
#include <string>

namespace LocalizationManager::StringLocalizing::Model {

namespace {

// The condition shapes the built-in table is made of. They run on every plural request, so
// they are plain function objects over their own constants. "%" truncates: a negative n has a
// remainder of zero or below. Every modulus of the table is positive, which keeps the
// division free of guards; each one is stored on its own, also where a shape's two moduli are
// equal. Each shape also writes itself as a rule file would (Describe), for tools that show
// or hand on the rule.

std::string Text(std::int32_t value) {
    return std::to_string(value);
}

std::string Remainder(std::int32_t modulus) {
    return "n % " + Text(modulus);
}

// n == a
struct Equals {
    const std::int32_t a;
    bool operator()(std::int64_t n) const { return n == a; }
    std::string Describe() const { return "n == " + Text(a); }
};

// n < a
struct Less {
    const std::int32_t a;
    bool operator()(std::int64_t n) const { return n < a; }
    std::string Describe() const { return "n < " + Text(a); }
};

// a <= n <= b
struct Range {
    const std::int32_t a, b;
    bool operator()(std::int64_t n) const { return a <= n && n <= b; }
    std::string Describe() const { return "n >= " + Text(a) + " && n <= " + Text(b); }
};

// n % m1 == a
struct RemainderEquals {
    const std::int32_t m1, a;
    bool operator()(std::int64_t n) const { return n % m1 == a; }
    std::string Describe() const { return Remainder(m1) + " == " + Text(a); }
};

// n % m1 >= a and n % m2 <= b
struct RemainderRange {
    const std::int32_t m1, a, m2, b;
    bool operator()(std::int64_t n) const { return n % m1 >= a && n % m2 <= b; }
    std::string Describe() const {
        return Remainder(m1) + " >= " + Text(a) + " && " + Remainder(m2) + " <= " + Text(b);
    }
};

// n % m1 == a and n % m2 != b
struct RemainderEqualsNot {
    const std::int32_t m1, a, m2, b;
    bool operator()(std::int64_t n) const { return n % m1 == a && n % m2 != b; }
    std::string Describe() const {
        return Remainder(m1) + " == " + Text(a) + " && " + Remainder(m2) + " != " + Text(b);
    }
};

// n % m1 == a or n % m2 == b
struct RemainderEither {
    const std::int32_t m1, a, m2, b;
    bool operator()(std::int64_t n) const { return n % m1 == a || n % m2 == b; }
    std::string Describe() const {
        return Remainder(m1) + " == " + Text(a) + " || " + Remainder(m2) + " == " + Text(b);
    }
};

// (n % m1 >= a and n % m2 <= b) and not (n % m3 >= c and n % m4 <= d)
struct RemainderRangeNotRange {
    const std::int32_t m1, a, m2, b, m3, c, m4, d;
    bool operator()(std::int64_t n) const {
        return (n % m1 >= a && n % m2 <= b) && !(n % m3 >= c && n % m4 <= d);
    }
    // Rule files have no "not": the negated band is written as its outside.
    std::string Describe() const {
        return Remainder(m1) + " >= " + Text(a) + " && " + Remainder(m2) + " <= " + Text(b) +
               " && (" + Remainder(m3) + " < " + Text(c) + " || " + Remainder(m4) + " > " +
               Text(d) + ")";
    }
};

// (n % m1 >= a and n % m2 <= b) and not (n % m3 >= c and n % m4 < d)
struct RemainderRangeNotHalfOpenRange {
    const std::int32_t m1, a, m2, b, m3, c, m4, d;
    bool operator()(std::int64_t n) const {
        return (n % m1 >= a && n % m2 <= b) && !(n % m3 >= c && n % m4 < d);
    }
    std::string Describe() const {
        return Remainder(m1) + " >= " + Text(a) + " && " + Remainder(m2) + " <= " + Text(b) +
               " && (" + Remainder(m3) + " < " + Text(c) + " || " + Remainder(m4) +
               " >= " + Text(d) + ")";
    }
};

// n == a or (n % m1 > b and n % m2 < c)
struct EqualsOrRemainderBetween {
    const std::int32_t a, m1, b, m2, c;
    bool operator()(std::int64_t n) const { return n == a || (n % m1 > b && n % m2 < c); }
    std::string Describe() const {
        return "n == " + Text(a) + " || (" + Remainder(m1) + " > " + Text(b) + " && " +
               Remainder(m2) + " < " + Text(c) + ")";
    }
};

// n % m1 >= a and (n % m2 < b or n % m3 >= c)
struct RemainderAtLeastOutsideBand {
    const std::int32_t m1, a, m2, b, m3, c;
    bool operator()(std::int64_t n) const { return n % m1 >= a && (n % m2 < b || n % m3 >= c); }
    std::string Describe() const {
        return Remainder(m1) + " >= " + Text(a) + " && (" + Remainder(m2) + " < " + Text(b) +
               " || " + Remainder(m3) + " >= " + Text(c) + ")";
    }
};

template <typename... Shapes>
void Add(PluralFormRules& rules, std::int32_t languageId, const char* qualifier,
         const Shapes&... shapes) {
    PluralRuleEntries& rule = rules.AddRule(languageId, qualifier)->second;
    (rule.push_back(shapes), ...);
    rules.SetConditionTexts(PluralFormRuleId{languageId, qualifier}, {shapes.Describe()...});
}

}  // namespace

void AddBuiltInPluralRules(PluralFormRules& rules) {
    // One form for every number.
    for (const std::int32_t languageId : {2, 3, 9, 18, 15, 19, 20, 33, 34}) {
        Add(rules, languageId, "");
    }
    // One, and every other number.
    for (const std::int32_t languageId : {1, 5, 6, 7, 8, 10, 12, 13, 14, 17, 23, 24, 28, 32}) {
        Add(rules, languageId, "", Equals{1});
    }
    // The last listed entry covers every remainder by 100 from 11 on; 100, 101 and 102 are
    // left to the appended sixth form.
    Add(rules, 0, "", Equals{0}, Equals{1}, Equals{2}, RemainderRange{100, 3, 100, 10},
        RemainderRange{100, 11, 100, 99});
    Add(rules, 24, "br", Less{2});
    Add(rules, 4, "", Equals{1}, Range{2, 4});
    Add(rules, 11, "", Less{2});
    Add(rules, 16, "", Equals{1}, Equals{2}, RemainderRange{10, 3, 10, 6},
        RemainderRange{10, 7, 10, 9});
    Add(rules, 21, "", RemainderEqualsNot{10, 1, 100, 11},
        RemainderAtLeastOutsideBand{10, 2, 100, 10, 100, 20});
    Add(rules, 22, "", RemainderEqualsNot{10, 1, 100, 11}, Equals{0});
    Add(rules, 25, "", Equals{1}, RemainderRangeNotRange{10, 2, 10, 4, 100, 10, 100, 20});
    Add(rules, 27, "", Equals{1}, EqualsOrRemainderBetween{0, 100, 0, 100, 20});
    Add(rules, 26, "", RemainderEqualsNot{10, 1, 100, 11},
        RemainderRangeNotRange{10, 2, 10, 4, 100, 10, 100, 20});
    Add(rules, 29, "", RemainderEqualsNot{10, 1, 100, 11},
        RemainderRangeNotHalfOpenRange{10, 2, 10, 4, 100, 10, 100, 20});
    Add(rules, 30, "", RemainderEqualsNot{10, 1, 100, 11},
        RemainderRangeNotHalfOpenRange{10, 2, 10, 4, 100, 10, 100, 20});
    Add(rules, 31, "", Equals{1}, RemainderEquals{100, 2}, RemainderEither{100, 3, 100, 4});
}

}  // namespace LocalizationManager::StringLocalizing::Model
