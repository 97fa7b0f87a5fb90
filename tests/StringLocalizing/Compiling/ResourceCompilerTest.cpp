#include "StringLocalizing/Compiling/CyclicReferenceException.h"
#include "StringLocalizing/Compiling/ExpansionLimitException.h"
#include "StringLocalizing/Compiling/ResourceCompiler.h"
#include "StringLocalizing/Compiling/RootExpressionProvider.h"
#include "StringLocalizing/Model/KeyNotFoundException.h"
#include "StringLocalizing/Model/ValueFormat.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "TestSupport/ExpectThrowMessage.h"
#include "ulo/rtl/CodeContracts.h"
#include "ulo/rtl/TextConversion.h"

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace LocalizationManager::StringLocalizing::Compiling {
namespace {

using Model::ResourceDictionary;

boost::shared_ptr<ResourceDictionary> Parse(const std::u16string& text) {
    auto dictionary = boost::make_shared<ResourceDictionary>();
    Parsing::ParseLocFile(text, u"test.lt", *dictionary);
    return dictionary;
}

std::string Dump(const ResourceDictionary& dictionary) {
    return ulo::WideToUtf8(Model::FormatDictionary(dictionary));
}

// A parent that must not be asked.
struct UnreachableParent : IExpressionProvider {
    void GetExpression(const std::u16string&, std::vector<Model::Operand>&) override {
        ADD_FAILURE() << "the parent was asked";
    }
};

// A scope compiled against a common dictionary, as the engine chains them.
struct CompiledPair {
    boost::shared_ptr<ResourceDictionary> common;
    boost::shared_ptr<ResourceDictionary> scope;
    boost::shared_ptr<ResourceCompiler> commonCompiler;
    boost::shared_ptr<ResourceCompiler> scopeCompiler;

    CompiledPair(const std::u16string& commonText, const std::u16string& scopeText)
        : common(Parse(commonText)),
          scope(Parse(scopeText)),
          commonCompiler(
              boost::make_shared<ResourceCompiler>(boost::make_shared<RootExpressionProvider>())),
          scopeCompiler(boost::make_shared<ResourceCompiler>(commonCompiler)) {}

    void Compile() {
        commonCompiler->Compile(common);
        scopeCompiler->Compile(scope);
    }
};

TEST(ResourceCompiler, ExpandsReferencesTextually) {
    const struct {
        const char* name;
        std::u16string common;
        std::u16string scope;
        std::string expectedScope;
    } cases[] = {
        {"plain values stay as they are", u"", u"a = 'x' + $p + {$n: 'one', other}\nb = ''",
         "a = 'x' + $p + {$n: 'one', other}\nb = ''\n"},
        {"chain", u"", u"a = b + '!'\nb = c\nc = 'x' + $p",
         "a = 'x' + $p + '!'\nb = 'x' + $p\nc = 'x' + $p\n"},
        {"each reference gets its own copy", u"", u"a = b + ' ' + b\nb = 'x'",
         "a = 'x' + ' ' + 'x'\nb = 'x'\n"},
        {"diamond is no cycle", u"", u"a = b + c\nb = d\nc = d + d\nd = 'x'",
         "a = 'x' + 'x' + 'x'\nb = 'x'\nc = 'x' + 'x'\nd = 'x'\n"},
        {"reference into the common texts", u"app = 'Courier'\nfull = app + ' 1.0'",
         u"title = full + ': ' + Name\nname = 'download'",
         "name = 'download'\ntitle = 'Courier' + ' 1.0' + ': ' + 'download'\n"},
        {"the scope's own key wins over the common one", u"name = 'common'",
         u"title = name\nname = 'scope'", "name = 'scope'\ntitle = 'scope'\n"},
    };
    for (const auto& testCase : cases) {
        CompiledPair pair(testCase.common, testCase.scope);
        pair.Compile();
        EXPECT_EQ(testCase.expectedScope, Dump(*pair.scope)) << testCase.name;
        EXPECT_TRUE(pair.scopeCompiler->VisitingStack().empty()) << testCase.name;
    }
}

TEST(ResourceCompiler, OnlyKeysReachedThroughReferencesCountAsCompiled) {
    CompiledPair pair(u"shared = 'x'\nunused = 'y'", u"a = b\nb = shared");
    pair.Compile();
    EXPECT_EQ((std::set<std::u16string>{u"b"}), pair.scopeCompiler->CompiledKeys());
    EXPECT_EQ((std::set<std::u16string>{u"shared"}), pair.commonCompiler->CompiledKeys());
    EXPECT_EQ(pair.scope->at(u"a"), pair.scope->at(u"b"));
}

// Each new pipeline of a culture compiles the shared common texts again while earlier ones
// read them without a lock, so a second compilation must not write to any value.
TEST(ResourceCompiler, CompilingAgainLeavesEveryValueInPlace) {
    const auto dictionary = Parse(u"a = b + '!'\nb = 'x' + $p\nc = {$n: d, 'y'}\nd = 'z'");
    ResourceCompiler(boost::make_shared<RootExpressionProvider>()).Compile(dictionary);
    std::map<std::u16string, const Model::Operand*> storage;
    for (const auto& [key, value] : *dictionary) {
        storage[key] = value.operands.data();
    }
    const std::string compiled = Dump(*dictionary);

    ResourceCompiler(boost::make_shared<RootExpressionProvider>()).Compile(dictionary);
    EXPECT_EQ(compiled, Dump(*dictionary));
    for (const auto& [key, value] : *dictionary) {
        EXPECT_EQ(storage[key], value.operands.data()) << ulo::WideToUtf8(key);
    }
}

TEST(ResourceCompiler, EmptyDictionaryNeverAsksTheParent) {
    ResourceCompiler compiler(boost::make_shared<UnreachableParent>());
    const auto dictionary = boost::make_shared<ResourceDictionary>();
    compiler.Compile(dictionary);
    EXPECT_TRUE(dictionary->empty());
}

TEST(ResourceCompiler, ReportsCyclesWithTheirChain) {
    const struct {
        std::u16string text;
        const char* message;
    } cases[] = {
        {u"x = x", "Cyclic reference found:(x->x)"},
        {u"a = b\nb = a", "Cyclic reference found:(a->b->a)"},
        {u"a = b\nb = c\nc = 'ok' + b", "Cyclic reference found:a->(b->c->b)"},
        {u"a = 'x' + {$n: a} + b\nb = 'y' + b", "Cyclic reference found:a->(b->b)"},
    };
    for (const auto& testCase : cases) {
        ResourceCompiler compiler(boost::make_shared<RootExpressionProvider>());
        EXPECT_THROW_MSG(compiler.Compile(Parse(testCase.text)), CyclicReferenceException,
                         testCase.message);
        EXPECT_TRUE(compiler.VisitingStack().empty());
    }
}

TEST(ResourceCompiler, FailureLeavesTheChainUnexpandedAndEarlierKeysExpanded) {
    const auto dictionary = Parse(u"a = 'done'\naa = a\nb = a + c\nc = a + missing\nd = a");
    ResourceCompiler compiler(boost::make_shared<RootExpressionProvider>());
    EXPECT_THROW_MSG(compiler.Compile(dictionary), Model::KeyNotFoundException,
                     "Key 'missing' not found");
    EXPECT_TRUE(compiler.VisitingStack().empty());
    EXPECT_EQ("a = 'done'\naa = 'done'\nb = a + c\nc = a + missing\nd = a\n", Dump(*dictionary));
}

TEST(ResourceCompiler, MissingKeyIsReportedByTheRoot) {
    CompiledPair pair(u"a = 'x'", u"title = a + Nowhere");
    pair.commonCompiler->Compile(pair.common);
    EXPECT_THROW_MSG(pair.scopeCompiler->Compile(pair.scope), Model::KeyNotFoundException,
                     "Key 'nowhere' not found");
}

TEST(ResourceCompiler, NullArgumentsViolateTheContract) {
    using NullArgument =
        code_contracts::NullPointerException<code_contracts::RequireViolationException>;
    EXPECT_THROW(ResourceCompiler(boost::shared_ptr<IExpressionProvider>()), NullArgument);
    ResourceCompiler compiler(boost::make_shared<RootExpressionProvider>());
    try {
        compiler.Compile(nullptr);
        FAIL() << "a null dictionary was accepted";
    } catch (const NullArgument& error) {
        EXPECT_STREQ("resourceDictionary", error.Location().CheckedText());
    }
}

// Each key refers to the previous one twice: the text doubles on every line.
std::u16string Doubling(int lines) {
    std::u16string text = u"k00 = 'x'\n";
    for (int line = 1; line <= lines; ++line) {
        auto name = [](int number) {
            const std::string digits = (number < 10 ? "0" : "") + std::to_string(number);
            return u"k" + std::u16string(digits.begin(), digits.end());
        };
        text += name(line) + u" = " + name(line - 1) + u" + " + name(line - 1) + u"\n";
    }
    return text;
}

TEST(ResourceCompiler, ExponentialFanOutStopsAtTheOperandLimit) {
    ResourceCompiler compiler(boost::make_shared<RootExpressionProvider>());
    const auto withinLimit = Parse(Doubling(16));
    compiler.Compile(withinLimit);
    EXPECT_EQ(kMaxCompiledOperands, withinLimit->at(u"k16").operands.size());

    EXPECT_THROW_MSG(compiler.Compile(Parse(Doubling(40))), ExpansionLimitException,
                     "Expansion of key 'k17' exceeds 65536 operands");
}

TEST(ResourceCompiler, CopiedTextIsBounded) {
    const std::u16string big(1u << 20, u'x');
    std::u16string text = u"big = '" + big + u"'\n";
    for (int copy = 0; copy < 40; ++copy) {
        text += u"copy" + std::u16string(1, static_cast<char16_t>(u'a' + copy % 26)) +
                std::u16string(1, static_cast<char16_t>(u'a' + copy / 26)) + u" = big\n";
    }
    ResourceCompiler compiler(boost::make_shared<RootExpressionProvider>());
    EXPECT_THROW(compiler.Compile(Parse(text)), ExpansionLimitException);
}

// A chain of `links` references: k0000 -> k0001 -> ... -> the last key, which holds text.
std::u16string Chain(int links) {
    std::u16string text;
    auto name = [](int number) {
        std::string digits = std::to_string(number);
        digits.insert(0, 4 - digits.size(), '0');
        return u"k" + std::u16string(digits.begin(), digits.end());
    };
    for (int link = 0; link < links; ++link) {
        text += name(link) + u" = " + name(link + 1) + u"\n";
    }
    return text + name(links) + u" = 'end'\n";
}

TEST(ResourceCompiler, LongReferenceChainsStopAtTheDepthLimit) {
    ResourceCompiler compiler(boost::make_shared<RootExpressionProvider>());
    const auto deepest = Parse(Chain(kMaxReferenceDepth - 1));
    compiler.Compile(deepest);
    EXPECT_EQ(u"end", boost::get<std::u16string>(deepest->at(u"k0000").operands.at(0)));

    EXPECT_THROW_MSG(compiler.Compile(Parse(Chain(9000))), ExpansionLimitException,
                     "Reference chain too long at key 'k0128': more than 128 keys refer one to "
                     "the next");
    EXPECT_TRUE(compiler.VisitingStack().empty());
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Compiling
