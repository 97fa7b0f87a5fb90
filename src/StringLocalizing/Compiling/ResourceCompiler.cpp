#include "StringLocalizing/Compiling/ResourceCompiler.h"

#include "StringLocalizing/Compiling/CyclicReferenceException.h"
#include "StringLocalizing/Compiling/ExpansionLimitException.h"
#include "ulo/rtl/CodeContracts.h"

#include <algorithm>
#include <utility>

namespace LocalizationManager::StringLocalizing::Compiling {

namespace {

// Pops the key pushed by CompileKey on every way out, so that after a failure the visiting
// stack is what it was before the call.
class VisitGuard {
  public:
    VisitGuard(std::vector<std::u16string>& stack, const std::u16string& key) : stack_(stack) {
        stack_.push_back(key);
    }
    ~VisitGuard() { stack_.pop_back(); }

    VisitGuard(const VisitGuard&) = delete;
    VisitGuard& operator=(const VisitGuard&) = delete;

  private:
    std::vector<std::u16string>& stack_;
};

// What copying an operand costs: one for the operand and one for each character it holds.
std::size_t CopyCost(const Model::Operand& operand);

std::size_t CopyCost(const Model::Value& value) {
    std::size_t cost = 0;
    for (const Model::Operand& operand : value.operands) {
        cost += CopyCost(operand);
    }
    return cost;
}

struct CopyCostVisitor : boost::static_visitor<std::size_t> {
    std::size_t operator()(const std::u16string& text) const { return 1 + text.size(); }
    std::size_t operator()(const Model::KeyRef& reference) const {
        return 1 + reference.key.size();
    }
    std::size_t operator()(const Model::Param& param) const { return 1 + param.name.size(); }
    std::size_t operator()(const Model::PluralForm& plural) const {
        std::size_t cost = 1 + plural.param.size();
        for (const Model::Value& form : plural.forms) {
            cost += CopyCost(form);
        }
        return cost;
    }
};

std::size_t CopyCost(const Model::Operand& operand) {
    return boost::apply_visitor(CopyCostVisitor(), operand);
}

bool IsKeyReference(const Model::Operand& operand) {
    return boost::get<Model::KeyRef>(&operand) != nullptr;
}

}  // namespace

ResourceCompiler::ResourceCompiler(
    const boost::shared_ptr<IExpressionProvider>& parentExpressionProvider)
    : parentExpressionProvider_(ULO_REQUIRE_NOT_NULL(parentExpressionProvider)) {}

void ResourceCompiler::Compile(
    const boost::shared_ptr<Model::ResourceDictionary>& resourceDictionary) {
    ULO_REQUIRE_NOT_NULL(resourceDictionary);
    visitingStack_.clear();
    compiledKeys_.clear();
    expansionUnits_ = 0;
    resourceDictionary_ = resourceDictionary;
    for (auto& [key, value] : *resourceDictionary_) {
        CompileKey(key, value);
    }
}

void ResourceCompiler::GetExpression(const std::u16string& key,
                                     std::vector<Model::Operand>& operands) {
    ULO_INVARIANT_NOT_NULL(resourceDictionary_);
    const auto position = resourceDictionary_->find(key);
    if (position == resourceDictionary_->end()) {
        parentExpressionProvider_->GetExpression(key, operands);
        return;
    }
    CompileKey(position->first, position->second);
    const std::vector<Model::Operand>& compiled = position->second.operands;
    operands.insert(operands.end(), compiled.begin(), compiled.end());
    compiledKeys_.insert(key);
}

void ResourceCompiler::CompileKey(const std::u16string& key, Model::Value& value) {
    if (compiledKeys_.count(key) != 0) {
        return;
    }
    if (std::find(visitingStack_.begin(), visitingStack_.end(), key) != visitingStack_.end()) {
        throw CyclicReferenceException(visitingStack_, key);
    }
    if (visitingStack_.size() >= kMaxReferenceDepth) {
        throw ExpansionLimitException::ReferenceDepth(key);
    }
    // A value without references (every value of a dictionary compiled before) is left
    // untouched, not rebuilt: the common texts are compiled again by each new pipeline of a
    // culture while the pipelines built before read them without a lock. It visits nothing,
    // so it need not stand on the visiting stack either.
    if (std::none_of(value.operands.begin(), value.operands.end(), IsKeyReference)) {
        if (value.operands.size() > kMaxCompiledOperands) {
            throw ExpansionLimitException::OperandCount(key);
        }
        return;
    }
    const VisitGuard guard(visitingStack_, key);

    std::vector<Model::Operand> compiled;
    compiled.reserve(value.operands.size());
    for (const Model::Operand& operand : value.operands) {
        AppendVisited(key, operand, compiled);
    }
    // Only now, with every operand visited: a failure above leaves the value as it was.
    value.operands.swap(compiled);
}

void ResourceCompiler::AppendVisited(const std::u16string& key, const Model::Operand& operand,
                                     std::vector<Model::Operand>& compiled) {
    const auto* reference = boost::get<Model::KeyRef>(&operand);
    if (reference == nullptr) {
        // Text, parameters and plural forms are kept as they are; references inside plural
        // forms are not expanded.
        compiled.push_back(operand);
    } else {
        std::vector<Model::Operand> expansion;
        GetExpression(reference->key, expansion);
        for (Model::Operand& expanded : expansion) {
            ChargeExpansion(key, expanded);
            if (boost::get<Model::KeyRef>(&expanded) == nullptr) {
                compiled.push_back(std::move(expanded));
            } else {
                AppendVisited(key, expanded, compiled);
            }
        }
    }
    if (compiled.size() > kMaxCompiledOperands) {
        throw ExpansionLimitException::OperandCount(key);
    }
}

void ResourceCompiler::ChargeExpansion(const std::u16string& key, const Model::Operand& operand) {
    expansionUnits_ += CopyCost(operand);
    if (expansionUnits_ > kMaxExpansionUnits) {
        throw ExpansionLimitException::ExpansionSize(key);
    }
}

}  // namespace LocalizationManager::StringLocalizing::Compiling
