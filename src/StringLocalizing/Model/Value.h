#pragma once

// The parsed form of one localization text. Plain value types: they have no behaviour beyond
// construction, copying, comparison and telling a value of one literal text (PlainText). The parser
// builds them, the compiler expands the key references in them and the resolvers turn them into
// final text.

#include <boost/ptr_container/ptr_vector.hpp>
#include <boost/variant.hpp>

#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Model {

struct Value;

// A reference to another key of the same dictionary or of the common dictionary. The key is
// stored already lower-cased, so it can be looked up directly.
struct KeyRef {
    std::u16string key;
};

// An external parameter, asked of the caller's parameter resolver at resolution time. The name
// is written without its "$" and keeps its case.
struct Param {
    std::u16string name;
};

// A plural form invocation: the parameter whose number selects the form, and one text per
// form in the order written. The forms are owned; copying a PluralForm copies every form.
struct PluralForm {
    std::u16string param;
    boost::ptr_vector<Value> forms;
};

// The four kinds of operand, in this order (the order is the variant's index).
using Operand = boost::variant<std::u16string, KeyRef, Param, PluralForm>;

// A text: the concatenation of its operands in order. A parsed value has at least one operand.
struct Value {
    std::vector<Operand> operands;
};

bool operator==(const KeyRef& left, const KeyRef& right);
bool operator==(const Param& left, const Param& right);
bool operator==(const PluralForm& left, const PluralForm& right);
bool operator==(const Value& left, const Value& right);

inline bool operator==(const KeyRef& left, const KeyRef& right) {
    return left.key == right.key;
}
inline bool operator==(const Param& left, const Param& right) {
    return left.name == right.name;
}

inline bool operator==(const PluralForm& left, const PluralForm& right) {
    if (left.param != right.param || left.forms.size() != right.forms.size()) {
        return false;
    }
    for (std::size_t index = 0; index < left.forms.size(); ++index) {
        if (!(left.forms[index] == right.forms[index])) {
            return false;
        }
    }
    return true;
}

inline bool operator==(const Value& left, const Value& right) {
    return left.operands == right.operands;
}

// Whether a value still holds a key reference at its top level, where the compiler expands
// them (references inside plural forms are never expanded).
inline bool HasKeyReference(const Value& value) {
    for (const Operand& operand : value.operands) {
        if (boost::get<KeyRef>(&operand) != nullptr) {
            return true;
        }
    }
    return false;
}

// The text of a value made of one literal text, which is then its resolved text as well;
// null for any other value.
inline const std::u16string* PlainText(const Value& value) {
    return value.operands.size() == 1 ? boost::get<std::u16string>(&value.operands.front())
                                      : nullptr;
}

}  // namespace LocalizationManager::StringLocalizing::Model
