// The common texts of a culture are shared by its localizers, which read them without a lock
// once built. Localizers built while "common.lt" was empty, or while the common texts failed
// to compile, go on answering while other localizers of the culture build theirs. Meant for
// ThreadSanitizer: a reader that could see the common texts while they change is reported
// there; elsewhere these tests check the answers only.

#include "File/TempTree.h"
#include "ModuleHost.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace localization_manager::e2e {
namespace {

using LocalizationManager::Testing::TempTree;

constexpr int kBuilders = 2;
constexpr int kBuildsPerThread = 12;

class CommonTextsRaceTest : public ModuleHostTest {
  protected:
    // A localizer built over an empty "common.lt" asks for a key that only a later common
    // file holds, over and over, while `kBuilders` threads build localizers of the same
    // culture over the common file `laterCommon` and ask each for "x". Returns every traced
    // line.
    std::vector<std::string> RaceReaderAgainstBuilders(const std::string& laterCommon,
                                                       const TextResult& builtAnswer) {
        TempTree tree;
        tree.File("root/neutral/Locs/common.lt", "; nothing yet\n")
            .File("root/neutral/Locs/early.lt", "own = 'early'\n")
            .File("root/neutral/Locs/late.lt", "x = shared\n");
        InterfacePtr<ILocalizationManager> manager = Manager(tree.Path("root"));
        const Culture culture = MakeCulture(kRussian);
        InterfacePtr<ILocalizer> early = Localizer(*manager, "early", culture);
        if (!early) {
            return {};
        }
        EXPECT_EQ(Ok("early"), GetText(*early, "own"));
        tree.File("root/neutral/Locs/common.lt", laterCommon);

        std::atomic<int> buildersLeft{kBuilders};
        std::thread reader([&] {
            do {
                // The early localizer keeps the common texts it was built on: none.
                EXPECT_EQ(ulo::kResultUnspecifiedError, GetText(*early, "shared").code);
                EXPECT_EQ(Ok("early"), GetText(*early, "own"));
            } while (buildersLeft.load() > 0);
        });
        std::vector<std::thread> builders;
        for (int builder = 0; builder < kBuilders; ++builder) {
            builders.emplace_back([&] {
                for (int build = 0; build < kBuildsPerThread; ++build) {
                    InterfacePtr<ILocalizer> late;
                    EXPECT_EQ(ulo::kResultOk,
                              manager->GetLocalizer(U16("late"), culture, nullptr, late.Put()));
                    if (late) {
                        EXPECT_EQ(builtAnswer, GetText(*late, "x"));
                    }
                }
                --buildersLeft;
            });
        }
        for (std::thread& builder : builders) {
            builder.join();
        }
        reader.join();
        return TakeLines();
    }
};

TEST_F(CommonTextsRaceTest, LaterPipelinesLoadCommonTextsWhileEarlierOnesRead) {
    for (const std::string& line :
         RaceReaderAgainstBuilders("shared = 'now there'\n", Ok("now there"))) {
        EXPECT_EQ(
            "localization manager error: cannot get string for key shared error: Key "
            "'shared' not found",
            line);
    }
}

TEST_F(CommonTextsRaceTest, FailingCommonCompilesAreRetriedWhileEarlierPipelinesRead) {
    const std::vector<std::string> lines = RaceReaderAgainstBuilders(
        "shared = loop\nloop = shared\n", {ulo::kResultUnspecifiedError, {}});
    int failedBuilds = 0;
    for (const std::string& line : lines) {
        if (line.find("cannot create string localizer") != std::string::npos) {
            ++failedBuilds;
            EXPECT_EQ(
                "localization manager error: cannot create string localizer for scope late "
                "culture ru-, error: Cyclic reference found:(loop->shared->loop)",
                line);
        }
    }
    // Every build tried again, and failed the same way.
    EXPECT_EQ(kBuilders * kBuildsPerThread, failedBuilds);
}

}  // namespace
}  // namespace localization_manager::e2e
