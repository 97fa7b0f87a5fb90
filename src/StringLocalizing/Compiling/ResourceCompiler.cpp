#include "StringLocalizing/Compiling/ResourceCompiler.h"

#include "StringLocalizing/Compiling/CyclicReferenceException.h"
#include "StringLocalizing/Compiling/ExpansionLimitException.h"
#include "ulo/rtl/CodeContracts.h"

#include <stdexcept>
#include <utility>

namespace LocalizationManager::StringLocalizing::Compiling {

namespace {

// What copying an operand costs against the expansion bound.
std::size_t CopyCost(const Model::Operand& operand);

struct CopyCostVisitor : boost::static_visitor<std::size_t> {
    std::size_t operator()(const std::u16string& text) const {
        return kExpansionUnitsPerOperand + text.size();
    }
    std::size_t operator()(const Model::KeyRef& reference) const {
        return kExpansionUnitsPerOperand + reference.key.size();
    }
    std::size_t operator()(const Model::Param& param) const {
        return kExpansionUnitsPerOperand + param.name.size();
    }
    std::size_t operator()(const Model::PluralForm& plural) const {
        std::size_t cost = kExpansionUnitsPerOperand + plural.param.size();
        for (const Model::Value& form : plural.forms) {
            for (const Model::Operand& operand : form.operands) {
                cost += CopyCost(operand);
            }
        }
        return cost;
    }
};

std::size_t CopyCost(const Model::Operand& operand) {
    return boost::apply_visitor(CopyCostVisitor(), operand);
}

}  // namespace

ResourceCompiler::ResourceCompiler(
    const boost::shared_ptr<IExpressionProvider>& parentExpressionProvider)
    : parentExpressionProvider_(ULO_REQUIRE_NOT_NULL(parentExpressionProvider)) {}

void ResourceCompiler::Compile(
    const boost::shared_ptr<Model::ResourceDictionary>& resourceDictionary) {
    ULO_REQUIRE_NOT_NULL(resourceDictionary);
    AbandonKeys();
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
    // A value without references (every value of a dictionary compiled before) is left
    // untouched, not rebuilt, and never stands on the visiting stack.
    if (compiledKeys_.count(key) != 0 || !Model::HasKeyReference(value)) {
        return;
    }
    // Keys are compiled one at a time: a parent never asks its child, so nothing calls back
    // into this compiler while a key is under way.
    if (!frames_.empty()) {
        throw std::logic_error("a key was compiled while another was under way");
    }
    try {
        StartKey(key, value);
        while (!frames_.empty()) {
            VisitNextOperand();
        }
    } catch (...) {
        // The values on the failing chain keep their references.
        AbandonKeys();
        throw;
    }
}

void ResourceCompiler::StartKey(const std::u16string& key, Model::Value& value) {
    if (visiting_.count(&value) != 0) {
        throw CyclicReferenceException(visitingStack_, key);
    }
    visiting_.insert(&value);
    visitingStack_.push_back(key);
    frames_.push_back(Frame{&value, 0, {}});
    frames_.back().compiled.reserve(value.operands.size());
}

void ResourceCompiler::VisitNextOperand() {
    Frame& frame = frames_.back();
    if (frame.nextOperand == frame.value->operands.size()) {
        FinishKey();
        return;
    }
    const Model::Operand& operand = frame.value->operands[frame.nextOperand];
    const auto* reference = boost::get<Model::KeyRef>(&operand);
    if (reference == nullptr) {
        // Text, parameters and plural forms are kept as they are; references inside plural
        // forms are not expanded.
        frame.compiled.push_back(operand);
        ++frame.nextOperand;
        return;
    }
    const auto position = resourceDictionary_->find(reference->key);
    if (position == resourceDictionary_->end()) {
        std::vector<Model::Operand> expansion;
        parentExpressionProvider_->GetExpression(reference->key, expansion);
        AppendExpansion(std::move(expansion), frame);
        ++frame.nextOperand;
        return;
    }
    const auto& [key, value] = *position;
    if (compiledKeys_.count(key) != 0 || !Model::HasKeyReference(value)) {
        AppendExpansion(value.operands, frame);
        compiledKeys_.insert(key);
        ++frame.nextOperand;
        return;
    }
    // The referring key goes on once this one is compiled (FinishKey).
    StartKey(key, position->second);
}

void ResourceCompiler::FinishKey() {
    Frame finished = std::move(frames_.back());
    // Only now, with every operand visited: a failure before leaves the value as it was.
    finished.value->operands.swap(finished.compiled);
    visiting_.erase(finished.value);
    frames_.pop_back();
    std::u16string key = std::move(visitingStack_.back());
    visitingStack_.pop_back();
    if (frames_.empty()) {
        return;
    }
    Frame& referring = frames_.back();
    AppendExpansion(finished.value->operands, referring);
    compiledKeys_.insert(std::move(key));
    ++referring.nextOperand;
}

void ResourceCompiler::AppendExpansion(const std::vector<Model::Operand>& expansion, Frame& frame) {
    for (const Model::Operand& operand : expansion) {
        Charge(operand);
        frame.compiled.push_back(operand);
    }
}

void ResourceCompiler::AppendExpansion(std::vector<Model::Operand>&& expansion, Frame& frame) {
    for (Model::Operand& operand : expansion) {
        Charge(operand);
        frame.compiled.push_back(std::move(operand));
    }
}

void ResourceCompiler::Charge(const Model::Operand& operand) {
    expansionUnits_ += CopyCost(operand);
    if (expansionUnits_ > kMaxExpansionUnits) {
        throw ExpansionLimitException(visitingStack_.back());
    }
}

void ResourceCompiler::AbandonKeys() noexcept {
    frames_.clear();
    visitingStack_.clear();
    visiting_.clear();
}

}  // namespace LocalizationManager::StringLocalizing::Compiling
