#include "CompileCheck.h"

#include "StringLocalizing/Compiling/CyclicReferenceException.h"
#include "StringLocalizing/Compiling/ExpansionLimitException.h"
#include "StringLocalizing/Compiling/ResourceCompiler.h"
#include "StringLocalizing/Model/KeyCase.h"
#include "ulo/rtl/TextConversion.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <set>

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

// The keys of the cycle in a message "Cyclic reference found:a->(b->c->b)": b and c.
std::vector<std::u16string> CycleMembers(const std::string& message) {
    const std::size_t open = message.find('(');
    const std::size_t close = message.rfind(')');
    std::vector<std::u16string> members;
    if (open == std::string::npos || close == std::string::npos || close < open) {
        return members;
    }
    const std::string chain = message.substr(open + 1, close - open - 1);
    std::size_t start = 0;
    while (start <= chain.size()) {
        const std::size_t arrow = chain.find("->", start);
        members.push_back(ulo::Utf8ToWide(chain.substr(start, arrow - start)));
        if (arrow == std::string::npos) {
            break;
        }
        start = arrow + 2;
    }
    if (members.size() > 1) {
        members.pop_back();  // the repeated key closes the chain
    }
    return members;
}

// The key named in quotes by an expansion limit message.
std::u16string KeyOfLimit(const std::string& message) {
    const std::size_t open = message.find('\'');
    const std::size_t close = open == std::string::npos ? open : message.find('\'', open + 1);
    if (close == std::string::npos) {
        return std::u16string();
    }
    return ulo::Utf8ToWide(message.substr(open + 1, close - open - 1));
}

// Compiles a copy of the file's texts with `compiler`, first whole as the runtime does, then,
// if that failed, key by key, so that every cycle is found, each reported once.
std::vector<Finding> Compile(const FileUse& use, Compiling::ResourceCompiler& compiler,
                             const boost::shared_ptr<Model::ResourceDictionary>& copy) {
    std::vector<Finding> findings;
    std::string limitMessage;
    try {
        compiler.Compile(copy);
        return findings;
    } catch (const Compiling::CyclicReferenceException&) {
    } catch (const Compiling::ExpansionLimitException& error) {
        // Only the first: the copy budget is spent, every later key would overrun it too.
        limitMessage = error.what();
    }
    if (!limitMessage.empty()) {
        const std::u16string key = KeyOfLimit(limitMessage);
        findings.push_back(FindingAt(
            FindingKind::kExpansionLimit, use, EntryPosition(*use.file, Model::LowerCaseKey(key)),
            WrittenKey(*use.file, Model::LowerCaseKey(key)), limitMessage));
    }
    std::set<std::vector<std::u16string>> cycles;
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
            message = error.what();
            members = CycleMembers(message);
        } catch (const Compiling::ExpansionLimitException&) {
            continue;
        }
        std::vector<std::u16string> sorted = members;
        std::sort(sorted.begin(), sorted.end());
        if (members.empty() || !cycles.insert(sorted).second) {
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
            message = error.what();
        } catch (const Compiling::ExpansionLimitException&) {
            // Keep the message of the key that met the cycle first.
        }
        findings.push_back(FindingAt(FindingKind::kCyclicReference, use, firstPosition,
                                     WrittenKey(*use.file, *first), message));
    }
    return findings;
}

}  // namespace

CommonCompilation::CommonCompilation(const FileUse& common) {
    auto compiler =
        boost::make_shared<Compiling::ResourceCompiler>(boost::make_shared<SilentRoot>());
    auto copy = boost::make_shared<Model::ResourceDictionary>();
    if (common.file != nullptr && common.file->Dictionary()) {
        *copy = *common.file->Dictionary();
        findings_ = Compile(common, *compiler, copy);
    } else {
        compiler->Compile(copy);
    }
    parent_ = boost::make_shared<ShieldedParent>(compiler);
}

std::vector<Finding> CheckCompilation(const FileUse& use, const CommonCompilation& common) {
    if (!use.file->Dictionary()) {
        return {};
    }
    Compiling::ResourceCompiler compiler(common.Parent());
    return Compile(use, compiler,
                   boost::make_shared<Model::ResourceDictionary>(*use.file->Dictionary()));
}

}  // namespace locmgr::analysis
