// One manager used by many threads at once, as an application's worker threads use it. A
// localizer builds its texts on its first request, under a lock that the localizers of its
// culture share; the manager switches its cached culture with nearly every request here.
// Meant to be run under ThreadSanitizer as well: it checks results, never timings.

#include "ModuleHost.h"
#include "ulo/IIO.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <fstream>
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

struct Request {
    Culture culture;
    const char* scope;
    const char* key;
    const char* text;
};

TEST_F(ConcurrencyTest, ThreadsShareOneManagerAndRaceForFirstRequests) {
    const std::string examples = LM_EXAMPLES_DIR "/localization";
    const std::string alternative = LM_EXAMPLES_DIR "/localization-alt";
    InterfacePtr<ILocalizationManager> manager =
        Manager(host::Utf8ToUtf16(examples), host::Utf8ToUtf16(alternative));
    ASSERT_TRUE(manager);
    const auto params = ParamResolver::Create({{"count", "3"}, {"folders", "2"}});
    const std::vector<Request> requests = {
        {MakeCulture(kRussian), "download", "summary", "3 файла в 2 папках."},
        {MakeCulture(kGerman), "download", "windowTitle",
         "Herunterladen – File Courier Enterprise"},
        {MakeCulture(kEnglish, "US"), "settings", "theme", "Color scheme"},
        {MakeCulture(kEnglish, "GB"), "download", "status", "Loaded 3 files."},
        {MakeCulture(kSerbianLatin), "settings", "title", "Podešavanja"},
        {MakeCulture(kGerman), "settings", "resetConfirm",
         "Einstellungen von File Courier zurücksetzen?"},
        {MakeCulture(kEnglish, "US"), "download", "cleanup",
         "3 files were removed from 2 folders."},
        {MakeCulture(kRussian), "settings", "limit", "Хранить в списке не более 3 загрузок"},
    };
    const std::uint64_t logoSize =
        std::ifstream(alternative + "/neutral/Common/logo.txt", std::ios::ate | std::ios::binary)
            .tellg();

    constexpr int kThreads = 6;
    constexpr std::size_t kRounds = 24;
    // One fresh localizer per round, whose first requests come from every thread at once.
    std::vector<InterfacePtr<ILocalizer>> raced;
    for (std::size_t round = 0; round < kRounds; ++round) {
        const Request& request = requests[round % requests.size()];
        raced.push_back(Localizer(*manager, request.scope, request.culture, params.Get()));
        ASSERT_TRUE(raced.back());
    }

    StartLine startLine(kThreads);
    const auto work = [&](std::size_t thread) {
        for (std::size_t round = 0; round < kRounds; ++round) {
            startLine.ArriveAndWait();
            const Request& racing = requests[round % requests.size()];
            EXPECT_EQ(Ok(racing.text), GetText(*raced[round], racing.key));

            // Then each makes, uses and drops a localizer of its own while others still race.
            const Request& own = requests[(round + thread + 1) % requests.size()];
            // No ASSERT: a thread that left early would hold the others at the start line.
            InterfacePtr<ILocalizer> localizer;
            EXPECT_EQ(ulo::kResultOk, manager->GetLocalizer(U16(own.scope), own.culture,
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
