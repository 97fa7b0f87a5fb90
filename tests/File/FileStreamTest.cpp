#include "File/FileStream.h"
#include "File/TempTree.h"
#include "TestSupport/ExpectThrowMessage.h"
#include "ulo/rtl/CodeContracts.h"
#include "ulo/rtl/File.h"
#include "ulo/rtl/Utf8Decoder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fcntl.h>
#include <future>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using LocalizationManager::UloCallFailedException;
using LocalizationManager::File::GetFileContent;
using LocalizationManager::Testing::TempTree;

// what() of the failure, or "" when the call succeeds.
std::string FailureOf(const std::u16string& path) {
    try {
        GetFileContent(path);
    } catch (const UloCallFailedException& error) {
        return error.what();
    }
    return "";
}

bool EndsWith(const std::string& text, const std::string& suffix) {
    return text.size() >= suffix.size() &&
           text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

struct ContentCase {
    const char* name;
    std::string bytes;
    std::u16string expected;
};

TEST(FileStreamTest, DecodesFileContent) {
    const ContentCase cases[] = {
        {"one byte", "a", u"a"},
        {"mark without text", std::string("\xEF\xBB\xBF") + "k = 'v'", u"k = 'v'"},
        {"one byte of a mark is text", "\xEF", u"\xFFFD"},
        {"two bytes of a mark are text", "\xEF\xBB", u"\xFFFD"},
        {"a mark later on is text", "a\xEF\xBB\xBF", u"a\xFEFF"},
        {"spare capacity is cut", "caf\xC3\xA9", u"caf\u00E9"},
        {"trailing NULs are cut", std::string("ab\0\0", 4), u"ab"},
        {"inner NULs stay", std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
        // NULs alone keep their length, spare capacity included: established behaviour.
        {"NULs alone stay", std::string(3, '\0'), std::u16string(3, u'\0')},
        {"NULs after a mark", std::string("\xEF\xBB\xBF\0\0", 5), std::u16string(5, u'\0')},
        {"invalid UTF-8 is replaced", "a\xFFz\xC3", u"a\xFFFDz\xFFFD"},
        {"astral character", "\xF0\x9F\x98\x80!", u"\xD83D\xDE00!"},
    };
    TempTree tree;
    for (const ContentCase& test : cases) {
        SCOPED_TRACE(test.name);
        tree.File("file.lt", test.bytes);
        EXPECT_EQ(test.expected, GetFileContent(tree.Path("file.lt")));
    }
}

// Decoding a piece at a time must give what decoding the whole file gives, whatever sequence,
// well-formed or not, a piece boundary cuts.
TEST(FileStreamTest, PiecesDecodeAsTheWholeFile) {
    using LocalizationManager::File::kReadPieceBytes;
    const std::string sequences[] = {
        "\xC3\xA9",              // two bytes
        "\xE2\x82\xAC",          // three
        "\xF0\x9F\x98\x80",      // four
        "\xE2\x82",              // cut short
        "\xF0\x9F\x98",          // cut short by one
        "\x80\x80\x80\x80\x80",  // stray continuation bytes
        "\xC3",                  // a lead alone
        "\xED\xA0\x80",          // an encoded surrogate
        "\xEF\xBB\xBF",          // a mark that is text
    };
    TempTree tree;
    for (const std::string& sequence : sequences) {
        for (std::size_t shift = 0; shift <= 6; ++shift) {
            for (const bool withMark : {false, true}) {
                // The sequence ends `shift` bytes after the first and the second boundary.
                std::string bytes = withMark ? "\xEF\xBB\xBF" : "";
                for (const std::size_t boundary : {kReadPieceBytes, 2 * kReadPieceBytes - 4}) {
                    bytes.resize(boundary + shift - sequence.size(), 'a');
                    bytes += sequence;
                }
                bytes += "z";
                const std::size_t skip = withMark ? 3 : 0;
                std::u16string expected(bytes.size(), u'\0');
                expected.resize(ulo::DecodeUtf8(bytes.data() + skip, bytes.size() - skip,
                                                expected.data(), expected.size()));
                tree.File("file.lt", bytes);
                const std::u16string text = GetFileContent(tree.Path("file.lt"));
                EXPECT_TRUE(text == expected)
                    << "sequence of " << sequence.size() << " bytes, shift " << shift
                    << (withMark ? ", after a mark" : "");
            }
        }
    }
}

TEST(FileStreamTest, EmptyFileGivesEmptyText) {
    TempTree tree;
    tree.File("empty.lt");
    EXPECT_EQ(u"", GetFileContent(tree.Path("empty.lt")));
}

TEST(FileStreamTest, FileOfMarkAloneFailsToDecode) {
    TempTree tree;
    tree.File("mark.lt", "\xEF\xBB\xBF");
    EXPECT_THROW_MSG(GetFileContent(tree.Path("mark.lt")), std::runtime_error,
                     "MultiByteToWideChar conversion failed");
}

TEST(FileStreamTest, MissingFileNamesTheOpenCheck) {
    TempTree tree;
    EXPECT_THROW_MSG(
        GetFileContent(tree.Path("missing.lt")), UloCallFailedException,
        "Contract Violation! Violated argument 'file.Create(ulo::text::Cast<ulo::string16_t>"
        "(filename).c_str(), ulo::file_flags::ReadAccess | ulo::file_flags::ShareRead, "
        "ulo::file_flags::OpenExisting, 0)' at std::u16string "
        "LocalizationManager::File::GetFileContent(const std::u16string&) at "
        "file/FileStream:107Description: Cannot open file, error: File not found");
}

TEST(FileStreamTest, WhatCannotBeOpenedFailsWithItsCode) {
    TempTree tree;
    tree.Directory("dir.lt").File("plain", "x");
    const struct {
        std::u16string path;
        const char* error;
    } cases[] = {
        {tree.Path("dir.lt"), "Access denied"},
        {tree.Path(), "Access denied"},
        {u"/dev/null", "Access denied"},
        {tree.Path("missing/file.lt"), "File not found"},
        {tree.Path("plain/file.lt"), "Path not found"},
        {u"", "File not found"},
        {tree.Path() + u"/\xD800.lt", "Invalid path name"},  // a lone surrogate
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.error);
        const std::string failure = FailureOf(test.path);
        EXPECT_TRUE(EndsWith(failure, std::string("Cannot open file, error: ") + test.error))
            << failure;
    }
}

TEST(FileStreamTest, FifoFailsWithoutWaitingForAWriter) {
    TempTree tree;
    tree.Fifo("pipe.lt");
    const std::u16string path = tree.Path("pipe.lt");
    auto failure = std::async(std::launch::async, [&path] { return FailureOf(path); });
    if (failure.wait_for(std::chrono::seconds(10)) == std::future_status::timeout) {
        // Let the blocked reader go (a writer comes and leaves at once), so the test ends.
        const int writer = ::open((ulo::WideToUtf8(path)).c_str(), O_WRONLY | O_NONBLOCK);
        ::close(writer);
        failure.wait();
        FAIL() << "opening a FIFO waited for a writer";
    }
    EXPECT_TRUE(EndsWith(failure.get(), "Cannot open file, error: Access denied"));
}

TEST(FileStreamTest, UnreadableFileFailsToOpen) {
    TempTree tree;
    tree.File("secret.lt", "k = 'v'");
    const std::u16string path = tree.Path("secret.lt");
    ASSERT_EQ(0, ::chmod(ulo::WideToUtf8(path).c_str(), 0));
    if (ulo::File().Open(path) == ulo::kResultOk) {
        GTEST_SKIP() << "this user reads files whatever their permissions (root)";
    }
    EXPECT_TRUE(EndsWith(FailureOf(path), "Cannot open file, error: Access denied"));
}

}  // namespace
