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
#include <vector>

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

// Compiling a compiled dictionary again writes to no value: neither rebuilt nor moved.
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
    using Keys = std::vector<std::u16string>;
    const struct {
        std::u16string text;
        const char* message;
        Keys chain;
        Keys cycle;
    } cases[] = {
        {u"x = x", "Cyclic reference found:(x->x)", {u"x", u"x"}, {u"x"}},
        {u"a = b\nb = a", "Cyclic reference found:(a->b->a)", {u"a", u"b", u"a"}, {u"a", u"b"}},
        {u"a = b\nb = c\nc = 'ok' + b",
         "Cyclic reference found:a->(b->c->b)",
         {u"a", u"b", u"c", u"b"},
         {u"b", u"c"}},
        {u"a = 'x' + {$n: a} + b\nb = 'y' + b",
         "Cyclic reference found:a->(b->b)",
         {u"a", u"b", u"b"},
         {u"b"}},
    };
    for (const auto& testCase : cases) {
        ResourceCompiler compiler(boost::make_shared<RootExpressionProvider>());
        try {
            compiler.Compile(Parse(testCase.text));
            ADD_FAILURE() << testCase.message << " was not reported";
        } catch (const CyclicReferenceException& error) {
            EXPECT_EQ(testCase.message, error.Message());
            EXPECT_EQ(testCase.chain, error.Chain()) << testCase.message;
            EXPECT_EQ(testCase.cycle, error.CycleKeys()) << testCase.message;
        }
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

TEST(ResourceCompiler, ExponentialFanOutStopsAtTheExpansionBound) {
    ResourceCompiler compiler(boost::make_shared<RootExpressionProvider>());
    const auto withinBound = Parse(Doubling(16));
    compiler.Compile(withinBound);
    EXPECT_EQ(std::size_t{1} << 16, withinBound->at(u"k16").operands.size());

    const auto tooLarge = Parse(Doubling(40));
    try {
        compiler.Compile(tooLarge);
        FAIL() << "an exponential expansion was compiled";
    } catch (const ExpansionLimitException& error) {
        EXPECT_EQ(
            "Expansion of key 'k19' exceeds the limit of 33554432 characters copied by key "
            "references",
            error.Message());
        EXPECT_EQ(u"k19", error.Key());
        EXPECT_EQ(kMaxExpansionUnits, error.Limit());
    }
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

TEST(ResourceCompiler, TextsWrittenOutInFullCostNothing) {
    // 70,000 pieces of one text: no reference copies them.
    std::u16string pieces = u"many = 'a'";
    for (int piece = 1; piece < 70000; ++piece) {
        pieces += u" + 'a'";
    }
    const auto dictionary = Parse(pieces + u"\nshort = 'x'\nref = short");
    ResourceCompiler(boost::make_shared<RootExpressionProvider>()).Compile(dictionary);
    EXPECT_EQ(70000u, dictionary->at(u"many").operands.size());
    EXPECT_EQ(u"x", boost::get<std::u16string>(dictionary->at(u"ref").operands.at(0)));
}

// `links` keys, each referring to the next: k000000 -> k000001 -> ...; the last holds
// `lastText`, which may refer back.
std::u16string Chain(int links, const std::u16string& lastText) {
    auto name = [](int number) {
        std::string digits = std::to_string(number);
        digits.insert(0, 6 - digits.size(), '0');
        return u"k" + std::u16string(digits.begin(), digits.end());
    };
    std::u16string text;
    for (int link = 0; link + 1 < links; ++link) {
        text += name(link) + u" = " + name(link + 1) + u"\n";
    }
    return text + name(links - 1) + u" = " + lastText + u"\n";
}

TEST(ResourceCompiler, ReferenceChainsOfAnyLengthCompile) {
    constexpr int kLinks = 100000;
    ResourceCompiler compiler(boost::make_shared<RootExpressionProvider>());
    const auto chain = Parse(Chain(kLinks, u"'end'"));
    compiler.Compile(chain);
    for (const auto& [key, value] : *chain) {
        ASSERT_EQ(u"end", *Model::PlainText(value)) << ulo::WideToUtf8(key);
    }

    try {
        compiler.Compile(Parse(Chain(kLinks, u"k000000")));
        FAIL() << "a cycle through every key was compiled";
    } catch (const CyclicReferenceException& error) {
        EXPECT_EQ(static_cast<std::size_t>(kLinks), error.CycleKeys().size());
        EXPECT_EQ(0u, error.CycleStart());
        EXPECT_EQ(0u, error.Message().find("Cyclic reference found:(k000000->k000001->"));
    }
    EXPECT_TRUE(compiler.VisitingStack().empty());
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Compiling
