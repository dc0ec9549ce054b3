// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <array>
#include <cerrno>
#include <cstddef>
#include <span>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Platform/Files/OpenToRead.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind {
namespace {

/// The first bytes of an open file.
std::string beginOf(const FileDescriptor& file) {
    std::array<char, 16> buffer{};
    const auto bytes = std::as_writable_bytes(std::span(buffer));
    const ssize_t size = FileSystem::native().read(file.number(), bytes, 0);
    return size < 0 ? "(error)" : std::string(buffer.data(), static_cast<std::size_t>(size));
}

TEST(OpenToRead, opensAFile) {
    const TemporaryFolder folder;
    folder.write("file", "content");
    FaultyFileSystem files;
    files.interruptEveryCall();
    const FileDescriptor file = openToRead(URL::file(folder / "file"), files);
    ASSERT_GE(file.number(), 0);
    EXPECT_EQ(beginOf(file), "content");
}

TEST(OpenToRead, ownsNothingWhereThereIsNoSuchFile) {
    const TemporaryFolder folder;
    folder.write("file", "content");
    FileSystem& files = FileSystem::native();
    EXPECT_LT(openToRead(URL::file(folder / "missing"), files).number(), 0);
    EXPECT_LT(openToRead(URL::parse("https://example.org/file"), files).number(), 0);
    const std::string cutShort = (folder / "file") + std::string("\0.pdf", 5);
    EXPECT_LT(openToRead(URL::file(cutShort), files).number(), 0) << "no file has that name";
}

TEST(OpenToRead, doesNotWaitForAWriter) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
    FileSystem& files = FileSystem::native();
    EXPECT_GE(openToRead(URL::file(folder / "fifo"), files).number(), 0);
}

TEST(FileDescriptor, isDuplicatedForAnotherOwner) {
    const TemporaryFolder folder;
    folder.write("file", "content");
    FaultyFileSystem files;
    files.interruptEveryCall();
    FileDescriptor file = openToRead(URL::file(folder / "file"), files);
    const FileDescriptor other = file.duplicate();
    ASSERT_GE(other.number(), 0);
    EXPECT_NE(other.number(), file.number());
    file = {};
    EXPECT_EQ(beginOf(other), "content");
    EXPECT_EQ(files.openFiles(), 1U);
}

TEST(FileDescriptor, isDuplicatedToNothingWhereThatCannotBe) {
    const TemporaryFolder folder;
    folder.write("file", "content");
    FaultyFileSystem files;
    files.fail(FileCall::duplicate, EMFILE);
    const FileDescriptor file = openToRead(URL::file(folder / "file"), files);
    EXPECT_LT(file.duplicate().number(), 0);
    EXPECT_LT(FileDescriptor().duplicate().number(), 0);
    EXPECT_EQ(beginOf(file), "content");
}

}  // namespace
}  // namespace quirebind
