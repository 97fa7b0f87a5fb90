// A request allocates nothing of its own: a lookup folds its key and puts its text together in
// buffers on its stack. Global operator new is replaced in this test program to count.

#include "StringLocalizing/Model/PluralFormRules.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Pipeline/PipelineSteps.h"
#include "StringLocalizing/Resolving/KeyResolver.h"
#include "StringLocalizing/Resolving/PluralResolver.h"
#include "StringLocalizing/Resolving/RootStringProvider.h"
#include "StringLocalizing/Resolving/StringProvider.h"
#include "ulo/rtl/TextConversion.h"

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<long> allocations{0};
}  // namespace

void* operator new(std::size_t size) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

// The standard library allocates some buffers with the non-throwing form and frees them with
// the plain delete below, so that form must come from malloc too.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    allocations.fetch_add(1, std::memory_order_relaxed);
    return std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace LocalizationManager::StringLocalizing::Resolving {
namespace {

// Answers every parameter with a number short enough to need no allocation of its own.
class NumberResolver : public IParamResolver {
  public:
    std::u16string ResolveParam(const std::u16string&) override { return u"22"; }
};

boost::shared_ptr<Model::CompactTexts> Parse(const std::u16string& text) {
    auto texts = boost::make_shared<Model::CompactTexts>(text);
    Parsing::ParseLocFile(texts->Source(), u"test.lt", *texts);
    return texts;
}

TEST(RequestAllocation, ALookupAllocatesNothingOfItsOwn) {
    const auto common = Parse(u"files = {$n: 'файл', 'файла', 'файлов'}\n");
    const auto scope = Parse(
        u"plain = 'Loaded'\nstatus = 'Загружено ' + $n + ' ' + files\n"
        u"a_key_of_more_than_sixteen_units = 'long key'\n");
    Pipeline::CompileCommonTexts(common);
    Pipeline::CompileScopeTexts(scope, common);
    const auto params = boost::make_shared<NumberResolver>();
    const auto keys = boost::make_shared<KeyResolver>(
        params, boost::make_shared<PluralResolver>(params, Model::PluralFormRuleId{26, ""},
                                                   Model::CreatePluralFormRules()));
    const StringProvider provider(keys, scope,
                                  boost::make_shared<RootStringProvider>(keys, common));

    const struct {
        const char16_t* key;
        const char16_t* text;
    } cases[] = {
        {u"plain", u"Loaded"},
        {u"PLAIN", u"Loaded"},  // folded on the stack
        {u"Status", u"Загружено 22 файла"},
        {u"FILES", u"файла"},  // from the common texts
        {u"A_Key_Of_More_Than_Sixteen_Units", u"long key"},
    };
    for (const auto& expected : cases) {
        TextBuffer buffer;
        const long before = allocations.load();
        const std::u16string_view text = provider.GetStringView(expected.key, buffer);
        const long allocated = allocations.load() - before;
        EXPECT_EQ(expected.text, text) << ulo::WideToUtf8(expected.key);
        EXPECT_EQ(0, allocated) << ulo::WideToUtf8(expected.key);
    }
}

}  // namespace
}  // namespace LocalizationManager::StringLocalizing::Resolving
