#include "CaptureStandardError.h"
#include "localization_manager/host/Tracer.h"
#include "ulo/ResultCode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace localization_manager::host {
namespace {

using testing::CaptureStandardError;

struct Line {
    std::int32_t level;
    std::string text;
    bool operator==(const Line& other) const { return level == other.level && text == other.text; }
};

// Commits `text` in pieces of at most `piece` bytes, as components append formatted parts.
std::int32_t Trace(ulo::ITracer& tracer, std::int32_t level, const std::string& text,
                   std::size_t piece = 7, std::uint32_t sizeHint = 16) {
    ulo::ITraceRecord* record = nullptr;
    const std::int32_t begun = tracer.BeginRecord(level, sizeHint, &record);
    if (begun != ulo::kResultOk) {
        return begun;
    }
    for (std::size_t offset = 0; offset < text.size(); offset += piece) {
        const std::string part = text.substr(offset, piece);
        EXPECT_EQ(ulo::kResultOk, record->Append(part.data(), part.size()));
    }
    return tracer.CommitRecord(record);
}

std::string LongLine(std::size_t size) {
    std::string line;
    for (std::size_t index = 0; line.size() < size; ++index) {
        line += "segment " + std::to_string(index) + "; ";
    }
    line.resize(size);
    return line;
}

TEST(TracerTest, LongLineReachesStandardErrorWholeWithOneLineFeed) {
    const std::string line = LongLine(10 * 1024);
    CaptureStandardError captured;
    auto tracer = Tracer::Create();
    ASSERT_EQ(ulo::kResultOk, Trace(*tracer, ulo::ITracer::kErrorLevel, line, 100, 8));
    EXPECT_EQ(line + "\n", captured.Text());
}

TEST(TracerTest, SinkGetsEachCommittedRecordWithItsLevel) {
    std::vector<Line> lines;
    auto tracer = Tracer::Create(
        [&lines](std::int32_t level, std::string_view text) {
            lines.push_back({level, std::string(text)});
        },
        100);

    EXPECT_EQ(ulo::kResultOk, Trace(*tracer, 300, "localization manager error: first"));
    // Below the minimum level nothing is recorded, and the component is told so.
    // Any non-null value, to see that it is cleared.
    ulo::ITraceRecord* refused = reinterpret_cast<ulo::ITraceRecord*>(&lines);
    EXPECT_EQ(ulo::kResultFalse, tracer->BeginRecord(99, 10, &refused));
    EXPECT_EQ(nullptr, refused);
    // A discarded record never reaches the sink.
    ulo::ITraceRecord* discarded = nullptr;
    ASSERT_EQ(ulo::kResultOk, tracer->BeginRecord(300, 0, &discarded));
    discarded->Append("dropped", 7);
    tracer->DiscardRecord(discarded);
    // An empty record is still a line; an embedded line feed stays part of it.
    EXPECT_EQ(ulo::kResultOk, Trace(*tracer, 100, ""));
    EXPECT_EQ(ulo::kResultOk, Trace(*tracer, 200, "report\n  ^- here"));
    const std::string huge = LongLine(100 * 1000);
    EXPECT_EQ(ulo::kResultOk, Trace(*tracer, 300, huge, 4096, 0));

    EXPECT_THAT(
        lines, ::testing::ElementsAre(Line{300, "localization manager error: first"}, Line{100, ""},
                                      Line{200, "report\n  ^- here"}, Line{300, huge}));
}

TEST(TracerTest, BadCallsAndAThrowingSinkGiveCodesNotCrashes) {
    auto tracer = Tracer::Create(
        [](std::int32_t, std::string_view) { throw std::runtime_error("sink broke"); });
    EXPECT_EQ(ulo::kResultInvalidArgument, tracer->BeginRecord(300, 0, nullptr));
    EXPECT_EQ(ulo::kResultInvalidArgument, tracer->CommitRecord(nullptr));
    tracer->DiscardRecord(nullptr);

    ulo::ITraceRecord* record = nullptr;
    ASSERT_EQ(ulo::kResultOk, tracer->BeginRecord(300, 0, &record));
    EXPECT_EQ(ulo::kResultOk, record->Append(nullptr, 0));
    EXPECT_EQ(ulo::kResultInvalidArgument, record->Append(nullptr, 3));
    EXPECT_EQ(ulo::kResultUnexpected, tracer->CommitRecord(record));
    // The tracer still works after its sink threw.
    EXPECT_EQ(ulo::kResultUnexpected, Trace(*tracer, 300, "again"));
}

TEST(TracerTest, LinesOfConcurrentThreadsNeverInterleave) {
    constexpr int kThreads = 8;
    constexpr int kLinesPerThread = 200;
    auto lineOf = [](int thread, int line) {
        // Long enough to need several appends and, on a pipe, possibly several writes.
        return "thread " + std::to_string(thread) + " line " + std::to_string(line) + " " +
               std::string(600 + thread * 50, static_cast<char>('a' + thread));
    };
    CaptureStandardError captured;
    auto tracer = Tracer::Create();
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int line = 0; line < kLinesPerThread; ++line) {
                Trace(*tracer, 300, lineOf(thread, line), 13);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    std::vector<int> nextLine(kThreads, 0);
    std::istringstream text(captured.Text());
    int count = 0;
    for (std::string line; std::getline(text, line); ++count) {
        int thread = -1;
        ASSERT_EQ(1, std::sscanf(line.c_str(), "thread %d", &thread)) << line.substr(0, 40);
        ASSERT_TRUE(thread >= 0 && thread < kThreads);
        // Each thread's lines arrive whole and in its own order.
        ASSERT_EQ(lineOf(thread, nextLine[thread]++), line);
    }
    EXPECT_EQ(kThreads * kLinesPerThread, count);
}

TEST(TracerTest, LivesUntilTheLastReferenceGoes) {
    auto alive = std::make_shared<int>(0);
    std::weak_ptr<int> watch = alive;
    auto tracer = Tracer::Create([alive = std::move(alive)](std::int32_t, std::string_view) {});
    ulo::ITracer* componentsReference = tracer.Get();
    EXPECT_EQ(2u, componentsReference->AddRef());
    tracer.Reset();
    EXPECT_FALSE(watch.expired());
    EXPECT_EQ(ulo::kResultOk, Trace(*componentsReference, 300, "still here"));
    EXPECT_EQ(0u, componentsReference->Release());
    EXPECT_TRUE(watch.expired());
}

}  // namespace
}  // namespace localization_manager::host
