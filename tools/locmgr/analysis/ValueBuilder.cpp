#include "ValueBuilder.h"

#include <algorithm>
#include <stdexcept>

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;

using Operands = std::vector<Model::Operand>;

bool IsBlank(char16_t character) {
    return character == u' ' || character == u'\t' || character == u'\n' || character == u'\r' ||
           character == u'\u00A0';
}

const std::u16string* TextOf(const Model::Operand& operand) {
    return boost::get<std::u16string>(&operand);
}

// Adjacent texts joined, empty texts dropped; an empty list becomes one empty text, as a
// value always has an operand.
void Normalize(Operands& operands) {
    Operands joined;
    for (Model::Operand& operand : operands) {
        const std::u16string* text = TextOf(operand);
        if (text != nullptr && text->empty()) {
            continue;
        }
        if (text != nullptr && !joined.empty() && TextOf(joined.back()) != nullptr) {
            boost::get<std::u16string>(joined.back()) += *text;
            continue;
        }
        joined.push_back(std::move(operand));
    }
    if (joined.empty()) {
        joined.emplace_back(std::u16string());
    }
    operands = std::move(joined);
}

// How much of the start of every form is the same: whole operands, then, of a text that
// differs further on, the part up to and including its last blank before the difference.
struct Split {
    std::size_t operands = 0;    // whole operands shared
    std::size_t characters = 0;  // of the next operand, a text
};

Split SharedPrefix(const std::vector<const Operands*>& forms) {
    Split split;
    const Operands& first = *forms.front();
    for (; split.operands < first.size(); ++split.operands) {
        const Model::Operand& candidate = first[split.operands];
        const bool allEqual = std::all_of(forms.begin(), forms.end(), [&](const Operands* form) {
            return split.operands < form->size() && (*form)[split.operands] == candidate;
        });
        if (allEqual) {
            continue;
        }
        const std::u16string* text = TextOf(candidate);
        if (text == nullptr) {
            return split;
        }
        std::size_t shared = text->size();
        for (const Operands* form : forms) {
            const std::u16string* other =
                split.operands < form->size() ? TextOf((*form)[split.operands]) : nullptr;
            if (other == nullptr) {
                return split;
            }
            const auto mismatch =
                std::mismatch(text->begin(), text->begin() + shared, other->begin(), other->end());
            shared = static_cast<std::size_t>(mismatch.first - text->begin());
        }
        while (shared > 0 && !IsBlank((*text)[shared - 1])) {
            --shared;
        }
        split.characters = shared;
        return split;
    }
    return split;
}

Operands Reversed(const Operands& operands) {
    Operands reversed(operands.rbegin(), operands.rend());
    for (Model::Operand& operand : reversed) {
        if (auto* text = boost::get<std::u16string>(&operand)) {
            std::reverse(text->begin(), text->end());
        }
    }
    return reversed;
}

// The first `split` of `operands`, and what remains of them.
std::pair<Operands, Operands> Cut(const Operands& operands, const Split& split) {
    Operands head(operands.begin(), operands.begin() + split.operands);
    Operands rest(operands.begin() + split.operands, operands.end());
    if (split.characters > 0) {
        std::u16string& text = boost::get<std::u16string>(rest.front());
        head.emplace_back(text.substr(0, split.characters));
        text.erase(0, split.characters);
    }
    return {std::move(head), std::move(rest)};
}

void Factor(Operands& operands);

// An invocation with its forms factored: its shared start and end, and what stays in it.
Operands FactorInvocation(Model::PluralForm invocation) {
    for (Model::Value& form : invocation.forms) {
        Factor(form.operands);
    }
    std::vector<const Operands*> forms;
    for (const Model::Value& form : invocation.forms) {
        forms.push_back(&form.operands);
    }
    if (forms.empty()) {
        return {Model::Operand(std::move(invocation))};
    }
    if (std::all_of(forms.begin(), forms.end(),
                    [&](const Operands* form) { return *form == *forms.front(); })) {
        return *forms.front();
    }
    // The shared start is the same number of operands and characters in every form.
    const Split prefixSplit = SharedPrefix(forms);
    Operands prefix;
    std::vector<Operands> rests;
    for (const Operands* form : forms) {
        auto [head, rest] = Cut(*form, prefixSplit);
        prefix = std::move(head);
        rests.push_back(Reversed(rest));
    }
    // The shared end, found as the shared start of the reversed forms.
    std::vector<const Operands*> reversedForms;
    for (const Operands& rest : rests) {
        reversedForms.push_back(&rest);
    }
    const Split suffixSplit = SharedPrefix(reversedForms);
    const Operands suffix = Reversed(Cut(rests.front(), suffixSplit).first);
    Model::PluralForm factored;
    factored.param = invocation.param;
    for (Operands& rest : rests) {
        Operands kept = Reversed(Cut(rest, suffixSplit).second);
        Normalize(kept);
        factored.forms.push_back(new Model::Value{std::move(kept)});
    }
    Operands result = prefix;
    result.emplace_back(std::move(factored));
    result.insert(result.end(), suffix.begin(), suffix.end());
    return result;
}

void Factor(Operands& operands) {
    Operands factored;
    for (Model::Operand& operand : operands) {
        if (auto* invocation = boost::get<Model::PluralForm>(&operand)) {
            Operands parts = FactorInvocation(std::move(*invocation));
            factored.insert(factored.end(), std::make_move_iterator(parts.begin()),
                            std::make_move_iterator(parts.end()));
        } else {
            factored.push_back(std::move(operand));
        }
    }
    Normalize(factored);
    operands = std::move(factored);
}

}  // namespace

Model::Value ValueOf(const Sentence& sentence) {
    Model::Value value;
    for (const Piece& piece : sentence) {
        switch (piece.kind) {
            case Piece::Kind::kText:
                value.operands.emplace_back(piece.text);
                break;
            case Piece::Kind::kParameter:
                value.operands.emplace_back(Model::Param{piece.text});
                break;
            case Piece::Kind::kReference:
                value.operands.emplace_back(Model::KeyRef{piece.text});
                break;
        }
    }
    Normalize(value.operands);
    return value;
}

Model::Value BuildValue(const SentenceTable& table) {
    // The invocations nest as the units enumerate the choices: the last discriminators
    // outermost, the catalog's plural innermost.
    std::vector<std::u16string> order(
        table.discriminators.begin() + std::min<std::size_t>(1, table.discriminators.size()),
        table.discriminators.end());
    if (!table.discriminators.empty()) {
        order.push_back(table.discriminators.front());
    }
    std::size_t expected = 1;
    for (std::size_t level = 0; level < order.size(); ++level) {
        expected *= table.forms;
    }
    if (table.forms == 0 || table.sentences.size() != expected) {
        throw std::invalid_argument("a text needs " + std::to_string(expected) +
                                    " sentences, the catalog has " +
                                    std::to_string(table.sentences.size()));
    }
    // Built from the innermost level out: each level's invocations take `forms` consecutive
    // values of the level below.
    std::vector<Model::Value> level;
    for (const Sentence& sentence : table.sentences) {
        level.push_back(ValueOf(sentence));
    }
    for (auto name = order.rbegin(); name != order.rend(); ++name) {
        std::vector<Model::Value> outer;
        for (std::size_t first = 0; first < level.size(); first += table.forms) {
            Model::PluralForm invocation;
            invocation.param = *name;
            for (std::size_t form = first; form < first + table.forms; ++form) {
                invocation.forms.push_back(new Model::Value(std::move(level[form])));
            }
            Model::Value value;
            value.operands.emplace_back(std::move(invocation));
            outer.push_back(std::move(value));
        }
        level = std::move(outer);
    }
    Model::Value value = std::move(level.front());
    Factor(value.operands);
    return value;
}

}  // namespace locmgr::analysis
