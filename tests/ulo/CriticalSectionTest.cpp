#include "ulo/rtl/CriticalSection.h"

#include <gtest/gtest.h>

#include <future>

namespace {

bool TryEnterFromAnotherThread(ulo::CriticalSection& section) {
    return std::async(std::launch::async,
                      [&section] {
                          const bool entered = section.TryEnter();
                          if (entered) {
                              section.Leave();
                          }
                          return entered;
                      })
        .get();
}

TEST(CriticalSectionTest, OwnerMayEnterAgainOthersWaitForTheLastLeave) {
    ulo::CriticalSection section;
    {
        ulo::CriticalSectionLock outer(section);
        ulo::CriticalSectionLock inner(section);
        EXPECT_TRUE(section.TryEnter());
        section.Leave();
        EXPECT_FALSE(TryEnterFromAnotherThread(section));
    }
    EXPECT_TRUE(TryEnterFromAnotherThread(section));
}

}  // namespace
