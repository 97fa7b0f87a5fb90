#include "TranslationUnit.h"

#include "ulo/rtl/TextConversion.h"

#include <algorithm>

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;

void Append(Sentence& sentence, Piece::Kind kind, const std::u16string& text) {
    if (kind == Piece::Kind::kText) {
        if (text.empty()) {
            return;
        }
        if (!sentence.empty() && sentence.back().kind == Piece::Kind::kText) {
            sentence.back().text += text;
            return;
        }
    }
    sentence.push_back({kind, text});
}

// The parser bounds how deeply plural invocations nest, and with it this recursion.
void EvaluateInto(const Model::Value& value, const std::map<std::u16string, std::size_t>& formOf,
                  Sentence& sentence) {
    for (const Model::Operand& operand : value.operands) {
        if (const auto* text = boost::get<std::u16string>(&operand)) {
            Append(sentence, Piece::Kind::kText, *text);
        } else if (const auto* parameter = boost::get<Model::Param>(&operand)) {
            Append(sentence, Piece::Kind::kParameter, parameter->name);
        } else if (const auto* reference = boost::get<Model::KeyRef>(&operand)) {
            Append(sentence, Piece::Kind::kReference, reference->key);
        } else if (const auto* plural = boost::get<Model::PluralForm>(&operand)) {
            if (plural->forms.empty()) {
                continue;
            }
            const auto chosen = formOf.find(plural->param);
            const std::size_t form =
                std::min(chosen != formOf.end() ? chosen->second : 0, plural->forms.size() - 1);
            EvaluateInto(plural->forms[form], formOf, sentence);
        }
    }
}

void CollectDiscriminators(const Model::Value& value, std::vector<std::u16string>& names) {
    for (const Model::Operand& operand : value.operands) {
        if (const auto* plural = boost::get<Model::PluralForm>(&operand)) {
            if (std::find(names.begin(), names.end(), plural->param) == names.end()) {
                names.push_back(plural->param);
            }
            for (const Model::Value& form : plural->forms) {
                CollectDiscriminators(form, names);
            }
        }
    }
}

}  // namespace

std::string CatalogText(const std::u16string& text) {
    try {
        return ulo::WideToUtf8(text);
    } catch (const std::out_of_range&) {
        throw UnwritableText(
            "a text holds a UTF-16 surrogate outside a pair, which UTF-8 "
            "cannot carry");
    }
}

std::vector<std::u16string> Discriminators(const Model::Value& value) {
    std::vector<std::u16string> names;
    CollectDiscriminators(value, names);
    return names;
}

Sentence Evaluate(const Model::Value& value, const std::map<std::u16string, std::size_t>& formOf) {
    Sentence sentence;
    EvaluateInto(value, formOf, sentence);
    return sentence;
}

}  // namespace locmgr::analysis
