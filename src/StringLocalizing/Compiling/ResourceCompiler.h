#pragma once

#include "StringLocalizing/Compiling/IExpressionProvider.h"
#include "StringLocalizing/Model/ResourceDictionary.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

namespace LocalizationManager::StringLocalizing::Compiling {

// Expands the key references of a resource dictionary in place: every KeyRef is replaced by
// the compiled operands of the key it names (copies: the expansion is textual). Keys that the
// dictionary lacks are asked of the parent provider, so a scope's compiler has the common
// texts as parent, and those the RootExpressionProvider.
//
// Chains of references of any length compile: the keys under way are kept on an explicit
// stack, not on the call stack. What the references copy is bounded (see
// ExpansionLimitException).
//
// Use: construct, then Compile once per dictionary; a compiler serves as parent only after its
// own Compile. Not thread-safe: Compile changes the dictionary, which nobody may read
// meanwhile. Shares ownership of its parent and of the dictionary.
class ResourceCompiler : public IExpressionProvider {
  public:
    // Throws the null-pointer contract exception for a null parent.
    explicit ResourceCompiler(
        const boost::shared_ptr<IExpressionProvider>& parentExpressionProvider);

    ResourceCompiler(const ResourceCompiler&) = delete;
    ResourceCompiler& operator=(const ResourceCompiler&) = delete;

    // Compiles every key of `resourceDictionary` in key order; afterwards no value holds a
    // KeyRef. Throws the null-pointer contract exception for a null dictionary,
    // CyclicReferenceException for a cycle, Model::KeyNotFoundException for a key no link of
    // the chain holds and ExpansionLimitException when the references copy too much. After a
    // failure the values compiled so far stay expanded and those on the failing chain keep
    // their references.
    void Compile(const boost::shared_ptr<Model::ResourceDictionary>& resourceDictionary);

    // Appends the compiled operands of `key`: compiled here if this dictionary holds it,
    // otherwise asked of the parent.
    void GetExpression(const std::u16string& key, std::vector<Model::Operand>& operands) override;

    // Keys compiled because a reference reached them (not those reached only by the walk of
    // Compile). For tests and diagnostics.
    const std::set<std::u16string>& CompiledKeys() const noexcept { return compiledKeys_; }

    // Keys whose compilation is under way, outermost first; empty between calls.
    const std::vector<std::u16string>& VisitingStack() const noexcept { return visitingStack_; }

  private:
    // A key under way: its value, the next of its operands to visit and what it compiled to
    // so far.
    struct Frame {
        Model::Value* value;
        std::size_t nextOperand;
        std::vector<Model::Operand> compiled;
    };

    // `value` is the dictionary's value of `key`.
    void CompileKey(const std::u16string& key, Model::Value& value);
    // Visits the next operand of the innermost key under way; may start a key.
    void VisitNextOperand();
    void StartKey(const std::u16string& key, Model::Value& value);
    // Ends the innermost key under way and hands its operands to the key that referred to it.
    void FinishKey();
    // Appends what a reference of the key under way copies, charged against the bound.
    void AppendExpansion(const std::vector<Model::Operand>& expansion, Frame& frame);
    void AppendExpansion(std::vector<Model::Operand>&& expansion, Frame& frame);
    void Charge(const Model::Operand& operand);
    void AbandonKeys() noexcept;

    // Declared in this order so that they are released in the reverse one: the visiting
    // stack first, the parent last.
    const boost::shared_ptr<IExpressionProvider> parentExpressionProvider_;
    boost::shared_ptr<Model::ResourceDictionary> resourceDictionary_;
    std::set<std::u16string> compiledKeys_;
    std::vector<std::u16string> visitingStack_;
    std::vector<Frame> frames_;                         // parallel to visitingStack_
    std::unordered_set<const Model::Value*> visiting_;  // the values of visitingStack_
    std::size_t expansionUnits_ = 0;
};

}  // namespace LocalizationManager::StringLocalizing::Compiling
