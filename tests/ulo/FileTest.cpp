#include "File/TempTree.h"
#include "ulo/rtl/File.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

namespace {

using LocalizationManager::Testing::TempTree;
using ulo::SeekOrigin;

class FileTest : public testing::Test {
  protected:
    void SetUp() override {
        tree_.File("digits", "0123456789");
        ASSERT_EQ(ulo::kResultOk, file_.Open(tree_.Path("digits")));
    }

    // The rest of the file from the current position.
    std::string ReadRest() {
        char buffer[32] = {};
        std::uint32_t bytesRead = 0;
        EXPECT_EQ(ulo::kResultOk, file_.Read(buffer, sizeof buffer, bytesRead));
        return std::string(buffer, bytesRead);
    }

    TempTree tree_;
    ulo::File file_;
};

TEST_F(FileTest, ReadsSizeAndContent) {
    std::uint64_t size = 0;
    EXPECT_EQ(ulo::kResultOk, file_.GetSize(size));
    EXPECT_EQ(10u, size);

    char buffer[4] = {};
    std::uint32_t bytesRead = 99;
    EXPECT_EQ(ulo::kResultOk, file_.Read(buffer, 4, bytesRead));
    EXPECT_EQ("0123", std::string(buffer, bytesRead));
    EXPECT_EQ("456789", ReadRest());
    EXPECT_EQ("", ReadRest());  // at the end: success, nothing read
}

TEST_F(FileTest, SeeksFromEachOrigin) {
    const struct {
        std::int64_t offset;
        SeekOrigin origin;
        std::uint64_t position;
    } moves[] = {
        {3, SeekOrigin::Begin, 3},          {2, SeekOrigin::Current, 5},
        {-1, SeekOrigin::Current, 4},       {-2, SeekOrigin::End, 8},
        {0, SeekOrigin::End, 10},           {20, SeekOrigin::Begin, 20},
        {1, static_cast<SeekOrigin>(7), 1},  // an unknown origin counts from the beginning
    };
    for (const auto& move : moves) {
        SCOPED_TRACE(move.position);
        std::uint64_t newPosition = 0;
        EXPECT_EQ(ulo::kResultOk, file_.Seek(move.offset, move.origin, &newPosition));
        EXPECT_EQ(move.position, newPosition);
        std::uint64_t position = 0;
        EXPECT_EQ(ulo::kResultOk, file_.GetPosition(position));
        EXPECT_EQ(move.position, position);
    }
    EXPECT_EQ("123456789", ReadRest());

    EXPECT_EQ(ulo::kResultOk, file_.Seek(6, SeekOrigin::Begin, nullptr));
    EXPECT_EQ("6789", ReadRest());
    EXPECT_EQ(ulo::kResultPlatformInvalidPathName, file_.Seek(-11, SeekOrigin::End, nullptr));
}

TEST_F(FileTest, ClosedFileReportsInvalidHandle) {
    ulo::File moved = std::move(file_);
    EXPECT_TRUE(moved.IsOpen());
    EXPECT_FALSE(file_.IsOpen());
    moved.Close();
    moved.Close();

    for (ulo::File* file : {&file_, &moved}) {
        std::uint64_t value = 7;
        std::uint32_t bytesRead = 7;
        char buffer[1];
        EXPECT_EQ(ulo::kResultPlatformInvalidHandle, file->GetSize(value));
        EXPECT_EQ(ulo::kResultPlatformInvalidHandle, file->GetPosition(value));
        EXPECT_EQ(ulo::kResultPlatformInvalidHandle, file->Seek(0, SeekOrigin::Begin, &value));
        EXPECT_EQ(ulo::kResultPlatformInvalidHandle, file->Read(buffer, 1, bytesRead));
        EXPECT_EQ(7u, value);
        EXPECT_EQ(7u, bytesRead);
    }
}

}  // namespace
