#include "ValueWalk.h"

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;

// Calls the handlers for each operand of `value` and of the forms below it, in text order.
template <typename OnReference, typename OnParameter, typename OnPlural>
void Walk(const Model::Value& value, int pluralDepth, OnReference& onReference,
          OnParameter& onParameter, OnPlural& onPlural) {
    for (const Model::Operand& operand : value.operands) {
        if (const auto* reference = boost::get<Model::KeyRef>(&operand)) {
            onReference(*reference, pluralDepth);
        } else if (const auto* param = boost::get<Model::Param>(&operand)) {
            onParameter(param->name);
        } else if (const auto* plural = boost::get<Model::PluralForm>(&operand)) {
            onPlural(*plural);
            onParameter(plural->param);
            for (const Model::Value& form : plural->forms) {
                Walk(form, pluralDepth + 1, onReference, onParameter, onPlural);
            }
        }
    }
}

auto Ignore = [](const auto&...) {};

}  // namespace

std::vector<const Model::PluralForm*> PluralInvocations(const Model::Value& value) {
    std::vector<const Model::PluralForm*> plurals;
    auto onPlural = [&plurals](const Model::PluralForm& plural) { plurals.push_back(&plural); };
    Walk(value, 0, Ignore, Ignore, onPlural);
    return plurals;
}

std::vector<ReferenceUse> References(const Model::Value& value) {
    std::vector<ReferenceUse> references;
    auto onReference = [&references](const Model::KeyRef& reference, int depth) {
        references.push_back({reference.key, depth > 0});
    };
    Walk(value, 0, onReference, Ignore, Ignore);
    return references;
}

std::vector<std::u16string> ParameterNames(const Model::Value& value) {
    std::vector<std::u16string> names;
    auto onParameter = [&names](const std::u16string& name) { names.push_back(name); };
    Walk(value, 0, Ignore, onParameter, Ignore);
    return names;
}

}  // namespace locmgr::analysis
