#include "PseudoText.h"

#include <algorithm>

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;

constexpr char16_t kLower[] = u"åƀçðéƒĝĥîĵķļɱñöþǫŕšţûṽŵẋýž";
constexpr char16_t kUpper[] = u"ÅƁÇÐÉƑĜĤÎĴĶĻṀÑÖÞǪŔŠŢÛṼŴẊÝŽ";
constexpr char16_t kRightToLeftOverride = u'\u202E';
constexpr char16_t kPopDirectionalFormatting = u'\u202C';
constexpr char16_t kPadding = u'~';

bool HasLetter(const std::u16string& text) {
    return std::any_of(text.begin(), text.end(), [](char16_t unit) {
        return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
    });
}

Model::Value Transformed(const Model::Value& value, PseudoStyle style);

struct OperandTransformer : boost::static_visitor<Model::Operand> {
    explicit OperandTransformer(PseudoStyle style) : style(style) {}

    Model::Operand operator()(const std::u16string& text) const { return PseudoText(text, style); }
    Model::Operand operator()(const Model::KeyRef& reference) const { return reference; }
    Model::Operand operator()(const Model::Param& param) const { return param; }
    Model::Operand operator()(const Model::PluralForm& plural) const {
        Model::PluralForm transformed;
        transformed.param = plural.param;
        for (const Model::Value& form : plural.forms) {
            transformed.forms.push_back(new Model::Value(Transformed(form, style)));
        }
        return transformed;
    }

    PseudoStyle style;
};

Model::Value Transformed(const Model::Value& value, PseudoStyle style) {
    Model::Value transformed;
    for (const Model::Operand& operand : value.operands) {
        transformed.operands.push_back(boost::apply_visitor(OperandTransformer(style), operand));
    }
    return transformed;
}

bool IsText(const Model::Operand& operand) {
    return boost::get<std::u16string>(&operand) != nullptr;
}

}  // namespace

std::optional<PseudoStyle> PseudoStyleOf(const std::string& name) {
    if (name == "accents") {
        return PseudoStyle::kAccents;
    }
    if (name == "long") {
        return PseudoStyle::kLong;
    }
    if (name == "rtl") {
        return PseudoStyle::kRtl;
    }
    return std::nullopt;
}

std::u16string PseudoText(const std::u16string& text, PseudoStyle style) {
    if (style == PseudoStyle::kRtl) {
        return text;
    }
    std::u16string result;
    result.reserve(text.size() * 2);
    for (const char16_t unit : text) {
        if (unit >= u'a' && unit <= u'z') {
            result += kLower[unit - u'a'];
        } else if (unit >= u'A' && unit <= u'Z') {
            result += kUpper[unit - u'A'];
        } else {
            result += unit;
        }
    }
    if (style == PseudoStyle::kLong && HasLetter(text)) {
        result.append((text.size() * 2 + 4) / 5, kPadding);
    }
    return result;
}

Model::Value PseudoValue(const Model::Value& value, PseudoStyle style) {
    Model::Value transformed = Transformed(value, style);
    // A value made only of references and parameters shows texts marked elsewhere already.
    if (std::none_of(value.operands.begin(), value.operands.end(), IsText)) {
        return transformed;
    }
    const bool rtl = style == PseudoStyle::kRtl;
    const std::u16string open(1, rtl ? kRightToLeftOverride : u'[');
    const std::u16string close(1, rtl ? kPopDirectionalFormatting : u']');
    std::vector<Model::Operand>& operands = transformed.operands;
    if (auto* first = boost::get<std::u16string>(&operands.front())) {
        *first = open + *first;
    } else {
        operands.insert(operands.begin(), open);
    }
    if (auto* last = boost::get<std::u16string>(&operands.back())) {
        last->append(close);
    } else {
        operands.push_back(close);
    }
    return transformed;
}

}  // namespace locmgr::analysis
