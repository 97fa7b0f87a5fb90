#include "CompileCheck.h"

#include "StringLocalizing/Compiling/CompiledDictionaryProvider.h"
#include "StringLocalizing/Compiling/CyclicReferenceException.h"
#include "StringLocalizing/Compiling/ExpansionLimitException.h"
#include "StringLocalizing/Compiling/ResourceCompiler.h"
#include "ValueWalk.h"

#include <boost/make_shared.hpp>

namespace locmgr::analysis {

namespace {

namespace Model = LocalizationManager::StringLocalizing::Model;
namespace Compiling = LocalizationManager::StringLocalizing::Compiling;

// The end of the chain: a key no dictionary holds expands to nothing.
class SilentRoot : public Compiling::IExpressionProvider {
  public:
    void GetExpression(const std::u16string&, std::vector<Model::Operand>&) override {}
};

// A compiled common dictionary seen from a scope: its own failures expand to nothing.
class ShieldedParent : public Compiling::IExpressionProvider {
  public:
    explicit ShieldedParent(boost::shared_ptr<Compiling::ResourceCompiler> compiler)
        : compiler_(std::move(compiler)) {}

    void GetExpression(const std::u16string& key, std::vector<Model::Operand>& operands) override {
        std::vector<Model::Operand> expansion;
        try {
            compiler_->GetExpression(key, expansion);
        } catch (const Compiling::CyclicReferenceException&) {
            return;
        } catch (const Compiling::ExpansionLimitException&) {
            return;
        }
        operands.insert(operands.end(), expansion.begin(), expansion.end());
    }

  private:
    const boost::shared_ptr<Compiling::ResourceCompiler> compiler_;
};

// Compiles a copy of the file's texts with `compiler`, first whole as the runtime does, then,
// if that failed, key by key, so that every cycle is found, each reported once. A cycle once
// reported is cut out of the copy (its keys emptied), so that the keys that lead to it
// compile and no later key walks to it again: the keys are compiled once each, and a long
// chain into a cycle costs its length once, not once per key.
std::vector<Finding> Compile(const FileUse& use, Compiling::ResourceCompiler& compiler,
                             const boost::shared_ptr<Model::ResourceDictionary>& copy) {
    std::vector<Finding> findings;
    try {
        compiler.Compile(copy);
        return findings;
    } catch (const Compiling::CyclicReferenceException&) {
    } catch (const Compiling::ExpansionLimitException& error) {
        // Only the first: the copy budget is spent, every later key would overrun it too.
        findings.push_back(FindingAt(FindingKind::kExpansionLimit, use,
                                     EntryPosition(*use.file, error.Key()),
                                     WrittenKey(*use.file, error.Key()), error.Message()));
    }
    std::vector<std::u16string> keys;
    for (const auto& entry : *copy) {
        keys.push_back(entry.first);
    }
    for (const std::u16string& key : keys) {
        std::vector<std::u16string> members;
        std::string message;
        try {
            std::vector<Model::Operand> expansion;
            compiler.GetExpression(key, expansion);
            continue;
        } catch (const Compiling::CyclicReferenceException& error) {
            message = error.Message();
            members = error.CycleKeys();
        } catch (const Compiling::ExpansionLimitException&) {
            continue;
        }
        // Reported at the member that comes first in the file, with the message the runtime
        // gives when it meets the cycle there.
        const std::u16string* first = &members.front();
        TextPosition firstPosition = EntryPosition(*use.file, *first);
        for (const std::u16string& member : members) {
            const TextPosition position = EntryPosition(*use.file, member);
            if (position.line > 0 &&
                (firstPosition.line == 0 || position.line < firstPosition.line ||
                 (position.line == firstPosition.line && position.column < firstPosition.column))) {
                first = &member;
                firstPosition = position;
            }
        }
        try {
            std::vector<Model::Operand> expansion;
            compiler.GetExpression(*first, expansion);
        } catch (const Compiling::CyclicReferenceException& error) {
            message = error.Message();
        } catch (const Compiling::ExpansionLimitException&) {
            // Keep the message of the key that met the cycle first.
        }
        findings.push_back(FindingAt(FindingKind::kCyclicReference, use, firstPosition,
                                     WrittenKey(*use.file, *first), message));
        for (const std::u16string& member : members) {
            copy->at(member).operands.clear();
        }
    }
    return findings;
}

// A copy of the entries that compiling changes: those with references. The others compile to
// themselves and are read where they are, through a provider over the file's dictionary, so a
// large file of plain texts is not held twice.
struct CompilableCopy {
    boost::shared_ptr<Model::ResourceDictionary> copy;
    boost::shared_ptr<Compiling::IExpressionProvider> parent;
};

CompilableCopy CopyToCompile(const LocFile& file,
                             const boost::shared_ptr<Compiling::IExpressionProvider>& parent) {
    CompilableCopy compilable{boost::make_shared<Model::ResourceDictionary>(), parent};
    if (file.Dictionary()) {
        for (const auto& entry : *file.Dictionary()) {
            if (Model::HasKeyReference(entry.second)) {
                compilable.copy->insert(compilable.copy->end(), entry);
            }
        }
        compilable.parent =
            boost::make_shared<Compiling::CompiledDictionaryProvider>(file.Dictionary(), parent);
    }
    return compilable;
}

}  // namespace

CommonCompilation::CommonCompilation(const FileUse& common) {
    const boost::shared_ptr<Compiling::IExpressionProvider> root = boost::make_shared<SilentRoot>();
    const CompilableCopy compilable =
        common.file != nullptr ? CopyToCompile(*common.file, root) : CompilableCopy{nullptr, root};
    auto compiler = boost::make_shared<Compiling::ResourceCompiler>(compilable.parent);
    if (compilable.copy) {
        findings_ = Compile(common, *compiler, compilable.copy);
    } else {
        compiler->Compile(boost::make_shared<Model::ResourceDictionary>());
    }
    parent_ = boost::make_shared<ShieldedParent>(compiler);
}

std::vector<Finding> CheckCompilation(const FileUse& use, const CommonCompilation& common) {
    if (!use.file->Dictionary()) {
        return {};
    }
    const CompilableCopy compilable = CopyToCompile(*use.file, common.Parent());
    Compiling::ResourceCompiler compiler(compilable.parent);
    return Compile(use, compiler, compilable.copy);
}

KeyParameters ExpandedParameters(const LocFile& file, const CommonCompilation& common) {
    KeyParameters parameters;
    if (!file.Dictionary()) {
        return parameters;
    }
    const CompilableCopy compilable = CopyToCompile(file, common.Parent());
    Compiling::ResourceCompiler compiler(compilable.parent);
    Compile(FileUse{&file, std::string(), {}}, compiler, compilable.copy);
    for (const auto& [key, value] : *file.Dictionary()) {
        const auto compiled = compilable.copy->find(key);
        const std::vector<std::u16string> names =
            ParameterNames(compiled != compilable.copy->end() ? compiled->second : value);
        parameters[key].insert(names.begin(), names.end());
    }
    return parameters;
}

}  // namespace locmgr::analysis
