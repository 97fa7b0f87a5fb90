#include "StringLocalizing/Model/ValueFormat.h"

namespace LocalizationManager::StringLocalizing::Model {

namespace {

void AppendQuoted(const std::u16string& text, std::u16string& out) {
    out += u'\'';
    for (const char16_t character : text) {
        switch (character) {
            case u'\n':
                out += u"\\n";
                break;
            case u'\\':
                out += u"\\\\";
                break;
            case u'\'':
                out += u"\\'";
                break;
            default:
                out += character;
        }
    }
    out += u'\'';
}

void AppendValue(const Value& value, std::u16string& out);

class OperandWriter : public boost::static_visitor<void> {
  public:
    explicit OperandWriter(std::u16string& out) : out_(out) {}

    void operator()(const std::u16string& text) const { AppendQuoted(text, out_); }
    void operator()(const KeyRef& reference) const { out_ += reference.key; }
    void operator()(const Param& param) const {
        out_ += u'$';
        out_ += param.name;
    }
    void operator()(const PluralForm& plural) const {
        out_ += u"{$";
        out_ += plural.param;
        out_ += u": ";
        for (std::size_t index = 0; index < plural.forms.size(); ++index) {
            if (index > 0) {
                out_ += u", ";
            }
            AppendValue(plural.forms[index], out_);
        }
        out_ += u'}';
    }

  private:
    std::u16string& out_;
};

void AppendValue(const Value& value, std::u16string& out) {
    const OperandWriter writer(out);
    for (std::size_t index = 0; index < value.operands.size(); ++index) {
        if (index > 0) {
            out += u" + ";
        }
        boost::apply_visitor(writer, value.operands[index]);
    }
}

}  // namespace

std::u16string FormatValue(const Value& value) {
    std::u16string out;
    AppendValue(value, out);
    return out;
}

std::u16string FormatDictionary(const ResourceDictionary& dictionary) {
    std::u16string out;
    for (const auto& [key, value] : dictionary) {
        out += key;
        out += u" = ";
        AppendValue(value, out);
        out += u'\n';
    }
    return out;
}

}  // namespace LocalizationManager::StringLocalizing::Model
