#pragma once

#include "StringLocalizing/Compiling/IExpressionProvider.h"
#include "StringLocalizing/Model/ResourceDictionary.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace LocalizationManager::StringLocalizing::Compiling {

// Expands the key references of a resource dictionary in place: every KeyRef is replaced by
// the compiled operands of the key it names (copies: the expansion is textual). Keys that the
// dictionary lacks are asked of the parent provider, so a scope's compiler has the common
// dictionary's compiler as parent, and that one the RootExpressionProvider.
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
    // the chain holds and ExpansionLimitException past the expansion limits. After a failure
    // the values compiled so far stay expanded and those on the failing chain keep their
    // references.
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
    // `value` is the dictionary's value of `key`.
    void CompileKey(const std::u16string& key, Model::Value& value);
    void AppendVisited(const std::u16string& key, const Model::Operand& operand,
                       std::vector<Model::Operand>& compiled);
    void ChargeExpansion(const std::u16string& key, const Model::Operand& operand);

    // Declared in this order so that they are released in the reverse one: the visiting
    // stack first, the parent last.
    const boost::shared_ptr<IExpressionProvider> parentExpressionProvider_;
    boost::shared_ptr<Model::ResourceDictionary> resourceDictionary_;
    std::set<std::u16string> compiledKeys_;
    std::vector<std::u16string> visitingStack_;
    std::size_t expansionUnits_ = 0;
};

}  // namespace LocalizationManager::StringLocalizing::Compiling
