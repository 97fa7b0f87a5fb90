// The module runs on the threads of its host, whose stacks may be small. Requests at the
// nesting limits of both file formats, and the error reports past them, must fit in the stack
// that the host documentation asks for.

#include "File/TempTree.h"
#include "ModuleHost.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <functional>
#include <pthread.h>
#include <string>

namespace localization_manager::e2e {
namespace {

using LocalizationManager::Testing::TempTree;

// The stack a host thread must give the module's calls (README, "Threads"). The sanitizers
// make every frame larger.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t kSanitizerFactor = 4;
#else
constexpr std::size_t kSanitizerFactor = 1;
#endif
constexpr std::size_t kDocumentedStack = std::size_t{256} << 10;

// Runs `work` on a new thread with a stack of `bytes` and waits for it.
void RunOnStack(std::size_t bytes, const std::function<void()>& work) {
    pthread_attr_t attributes;
    ASSERT_EQ(0, pthread_attr_init(&attributes));
    ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, bytes));
    pthread_t thread;
    auto run = [](void* argument) -> void* {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    ASSERT_EQ(0,
              pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work)));
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

// `levels` plural invocations, each the first of two forms of the one around it.
std::string NestedPlurals(int levels) {
    std::string text = "'x'";
    for (int level = 0; level < levels; ++level) {
        text = "{$n: " + text + ", 'y'}";
    }
    return text;
}

// A rule whose condition stands in `levels` parentheses.
std::string NestedRule(int levels) {
    return std::string(levels, '(') + "n == 1" + std::string(levels, ')') + ";\nn != 1;\n";
}

using StackTest = ModuleHostTest;

TEST_F(StackTest, RequestsAtTheNestingLimitsFitTheDocumentedStack) {
    TempTree tree;
    tree.File("root/neutral/Locs/common.lt", "app = 'x'\n")
        .File("root/neutral/Locs/deepest.lt", "a = " + NestedPlurals(32) + "\n")
        .File("root/neutral/Locs/deeper.lt", "a = " + NestedPlurals(33) + "\n")
        .File("root/en/Plural.rule", NestedRule(32))
        .File("root/de/Plural.rule", NestedRule(33));
    InterfacePtr<ILocalizationManager> manager = Manager(tree.Path("root"));
    ASSERT_TRUE(manager);
    const auto params = ParamResolver::Create({{"n", "1"}});
    TextResult deepest, deeper, deeperRule;
    RunOnStack(kDocumentedStack * kSanitizerFactor, [&] {
        deepest =
            GetText(*Localizer(*manager, "deepest", MakeCulture(kEnglish), params.Get()), "a");
        deeper = GetText(*Localizer(*manager, "deeper", MakeCulture(kEnglish), params.Get()), "a");
        deeperRule =
            GetText(*Localizer(*manager, "deepest", MakeCulture(kGerman), params.Get()), "a");
    });
    EXPECT_EQ(Ok("x"), deepest);
    EXPECT_EQ(ulo::kResultUnspecifiedError, deeper.code);
    EXPECT_EQ(ulo::kResultUnspecifiedError, deeperRule.code);
    const std::vector<std::string> lines = TakeLines();
    ASSERT_EQ(2u, lines.size());
    EXPECT_NE(std::string::npos,
              lines[0].find("expecting <at most 32 nested plural form invocations>"))
        << lines[0];
    EXPECT_NE(std::string::npos, lines[1].find("Plural.rule line 1")) << lines[1];
}

}  // namespace
}  // namespace localization_manager::e2e
