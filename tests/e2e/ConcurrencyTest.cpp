// One manager used by many threads at once, as an application's worker threads use it. A
// localizer builds its texts on its first request, under a lock that the localizers of its
// culture share; the manager switches its cached culture with nearly every request here.
// Meant to be run under ThreadSanitizer as well: it checks results, never timings.

#include "ModuleHost.h"
#include "TestSupport/ExampleTexts.h"
#include "ulo/IIO.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace localization_manager::e2e {
namespace {

using ConcurrencyTest = ModuleHostTest;

// Lets a group of threads start each round together; reusable.
class StartLine {
  public:
    explicit StartLine(int threads) : threads_(threads) {}

    void ArriveAndWait() {
        std::unique_lock<std::mutex> lock(mutex_);
        const unsigned round = round_;
        if (++arrived_ == threads_) {
            arrived_ = 0;
            ++round_;
            allArrived_.notify_all();
            return;
        }
        allArrived_.wait(lock, [&] { return round != round_; });
    }

  private:
    const int threads_;
    std::mutex mutex_;
    std::condition_variable allArrived_;
    int arrived_ = 0;
    unsigned round_ = 0;
};

using LocalizationManager::Testing::ExampleText;
using LocalizationManager::Testing::kExampleTexts;

const ExampleText& Example(std::size_t index) {
    return kExampleTexts[index % std::size(kExampleTexts)];
}

TEST_F(ConcurrencyTest, ThreadsShareOneManagerAndRaceForFirstRequests) {
    const std::string examples = LM_EXAMPLES_DIR "/localization";
    const std::string alternative = LM_EXAMPLES_DIR "/localization-alt";
    InterfacePtr<ILocalizationManager> manager =
        Manager(host::Utf8ToUtf16(examples), host::Utf8ToUtf16(alternative));
    ASSERT_TRUE(manager);
    const auto params =
        ParamResolver::Create({{"count", LocalizationManager::Testing::kExampleCount},
                               {"folders", LocalizationManager::Testing::kExampleFolders}});
    const std::uint64_t logoSize =
        std::ifstream(alternative + "/neutral/Common/logo.txt", std::ios::ate | std::ios::binary)
            .tellg();

    constexpr int kThreads = 6;
    constexpr std::size_t kRounds = 24;
    // One fresh localizer per round, whose first requests come from every thread at once.
    std::vector<InterfacePtr<ILocalizer>> raced;
    for (std::size_t round = 0; round < kRounds; ++round) {
        const ExampleText& example = Example(round);
        raced.push_back(Localizer(*manager, example.scope,
                                  MakeCulture(example.languageId, example.firstSubtag),
                                  params.Get()));
        ASSERT_TRUE(raced.back());
    }

    StartLine startLine(kThreads);
    const auto work = [&](std::size_t thread) {
        for (std::size_t round = 0; round < kRounds; ++round) {
            startLine.ArriveAndWait();
            const ExampleText& racing = Example(round);
            EXPECT_EQ(Ok(racing.text), GetText(*raced[round], racing.key));

            // Then each makes, uses and drops a localizer of its own while others still race.
            const ExampleText& own = Example(round + thread + 1);
            // No ASSERT: a thread that left early would hold the others at the start line.
            InterfacePtr<ILocalizer> localizer;
            EXPECT_EQ(
                ulo::kResultOk,
                manager->GetLocalizer(U16(own.scope), MakeCulture(own.languageId, own.firstSubtag),
                                      params.Get(), localizer.Put()));
            if (!localizer) {
                continue;
            }
            EXPECT_EQ(Ok(own.text), GetText(*localizer, own.key));
            InterfacePtr<ulo::IIO> stream;
            EXPECT_EQ(ulo::kResultOk, localizer->GetStream(U16("logo.txt"), stream.Put()));
            if (!stream) {
                continue;
            }
            std::uint64_t size = 0;
            EXPECT_EQ(ulo::kResultOk, stream->GetSize(&size));
            EXPECT_EQ(logoSize, size);
        }
    };
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back(work, thread);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_TRUE(TakeLines().empty());
}

}  // namespace
}  // namespace localization_manager::e2e
