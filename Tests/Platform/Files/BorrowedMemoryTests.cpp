// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Pages of memory that are those of a file.

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/Files/FileDescriptor.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Tests/Support/MemoryLimit.h"
#include "Tests/Support/SomeText.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind {
namespace {

const std::size_t kPage = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
constexpr std::size_t kFileSize = 3'000'000;

/// An open file, and a buffer that ends with room for what the file has from an offset on.
class Borrowing : public ::testing::Test {
 protected:
    /// The end of the buffer, `count` bytes, which begins where the byte `offset` of the file does
    /// in its page.
    std::span<char> room(std::uint64_t offset, std::size_t count) {
        while (buffer_.size() % kPage != offset % kPage) buffer_.append("-");
        own_ = std::string(buffer_.text());
        return buffer_.extend(count);
    }

    /// Borrows what it can, and copies the rest. Gives how many bytes are borrowed.
    std::size_t fill(std::uint64_t offset, std::span<char> place) {
        const auto pages = buffer_.borrow(files_, file_.number(), offset, place);
        const auto before =
            pages.empty() ? place.size() : static_cast<std::size_t>(pages.data() - place.data());
        const std::string_view bytes = std::string_view(bytes_).substr(offset, place.size());
        std::ranges::copy(bytes.substr(0, before), place.begin());
        const std::size_t behind = before + pages.size();
        if (behind < place.size())
            std::ranges::copy(bytes.substr(behind), place.subspan(behind).begin());
        return pages.size();
    }

    void shorten(std::size_t size) const { std::filesystem::resize_file(folder_ / "lender", size); }

    const std::string bytes_ = test::someText(kFileSize);
    TemporaryFolder folder_;
    FaultyFileSystem files_;
    FileDescriptor file_{files_, files_.open(AT_FDCWD, writtenFile().c_str(), O_RDONLY, 0)};
    ByteBuffer buffer_;
    std::string own_;

 private:
    std::string writtenFile() const {
        folder_.write("lender", bytes_);
        return folder_ / "lender";
    }
};

TEST_F(Borrowing, givesTheBytesOfTheFile) {
    constexpr std::uint64_t kOffset = 12'345;
    constexpr std::size_t kCount = 1'000'000;
    buffer_.append("beginning");
    const std::size_t borrowed = fill(kOffset, room(kOffset, kCount));
#if defined(__linux__)
    EXPECT_GT(borrowed, kCount - 2 * kPage);
#endif
    EXPECT_LE(borrowed, kCount);
    buffer_.append("end");
    EXPECT_TRUE(buffer_.text() == own_ + bytes_.substr(kOffset, kCount) + "end");
}

TEST_F(Borrowing, staysWhenTheBufferGrowsOrMovesAndTheFileIsGone) {
    (void)fill(0, room(0, 1'000'000));
    file_ = FileDescriptor();
    std::filesystem::remove(folder_ / "lender");
    const std::string more = test::someText(20'000'000);
    buffer_.append(more);
    const ByteBuffer moved = std::move(buffer_);
    EXPECT_TRUE(moved.text() == own_ + bytes_.substr(0, 1'000'000) + more);
}

TEST_F(Borrowing, happensAgainAndAgain) {
    std::string expected;
    for (std::uint64_t offset = 0; offset < 2'000'000; offset += 77'777) {
        const auto place = room(offset, 600'000);
        expected += own_.substr(expected.size());
        (void)fill(offset, place);
        expected += bytes_.substr(offset, 600'000);
    }
    EXPECT_TRUE(buffer_.text() == expected);
}

TEST_F(Borrowing, isNotPossibleWherePagesBeginElsewhere) {
    const auto place = room(100, 1'000'000);
    EXPECT_TRUE(buffer_.borrow(files_, file_.number(), 101, place).empty());
    EXPECT_EQ(files_.count(FileCall::map), 0U);
}

TEST_F(Borrowing, needsAWholePage) {
    (void)room(0, 1'000'000);
    const auto place = room(1, 2 * kPage - 2);
    EXPECT_TRUE(buffer_.borrow(files_, file_.number(), 1, place).empty());
}

TEST_F(Borrowing, thatFailsLeavesMemory) {
    files_.fail(FileCall::map, ENODEV);
    EXPECT_EQ(fill(0, room(0, 1'000'000)), 0U);
    EXPECT_TRUE(buffer_.text() == own_ + bytes_.substr(0, 1'000'000));
}

TEST_F(Borrowing, isNotPossibleBeyondTheEndOfTheFile) {
    shorten(10 * kPage);
    EXPECT_EQ(fill(0, room(0, 1'000'000)), 0U);
    EXPECT_TRUE(buffer_.text() == own_ + bytes_.substr(0, 1'000'000));
}

TEST_F(Borrowing, endsWhereThePagesAreTakenBack) {
    (void)fill(0, room(0, 600'000));
    buffer_.append("tail");
    const std::size_t size = buffer_.size();
    (void)fill(0, room(0, 1'000'000));
    buffer_.shrink(size);
    shorten(0);  // what is written next does not need the file
    buffer_.append(bytes_);
    EXPECT_TRUE(buffer_.text().substr(size - 4) == "tail" + bytes_);
}

TEST_F(Borrowing, tellsWhatIsLost) {
    const std::size_t borrowed = fill(0, room(0, 1'000'000));
    const std::size_t begin = own_.size();
    buffer_.append("end");
    std::string copy;
    EXPECT_EQ(buffer_.view(begin + 5000, 100, copy), std::string_view(bytes_).substr(5000, 100));
    shorten(kPage);
    EXPECT_EQ(buffer_.view(begin, 100, copy), std::string_view(bytes_).substr(0, 100));
    EXPECT_EQ(buffer_.view(buffer_.size() - 3, 3, copy), "end");
    if (borrowed == 0) GTEST_SKIP() << "this system does not lend pages of files";
    EXPECT_EQ(buffer_.view(begin + 5000, 100, copy), "");
    EXPECT_EQ(buffer_.view(begin + kPage - 50, 100, copy), "");
}

TEST_F(Borrowing, isLeftOutWhereThereAreFewAddresses) {
    if (!test::kMemoryLimitsWork)
        GTEST_SKIP() << "sanitizers map more memory than any limit that would matter";
    const int result = inChildProcess([&] {
        test::limitMemory(std::size_t{80} << 20U);
        const bool borrowsNone = fill(0, room(0, 1'000'000)) == 0;
        buffer_.append(bytes_);
        return borrowsNone && buffer_.text() == own_ + bytes_.substr(0, 1'000'000) + bytes_ ? 0 : 1;
    });
    EXPECT_EQ(result, 0);
}

}  // namespace
}  // namespace quirebind
