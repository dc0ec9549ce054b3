// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "Platform/Files/FileDescriptor.h"
#include "Platform/Files/FileSystem.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind {
namespace {

TEST(NativeFileSystem, readsFromAnyOffset) {
    const TemporaryFolder folder;
    folder.write("file", "0123456789");
    FileSystem& files = FileSystem::native();
    const FileDescriptor file(
        files, files.open(AT_FDCWD, (folder / "file").c_str(), O_RDONLY | O_CLOEXEC, 0));
    ASSERT_GE(file.number(), 0);
    std::array<char, 4> buffer{};
    const auto bytes = std::as_writable_bytes(std::span(buffer));
    EXPECT_EQ(files.read(file.number(), bytes, 3), 4);
    EXPECT_EQ(std::string(buffer.data(), 4), "3456");
    EXPECT_EQ(files.read(file.number(), bytes, 8), 2);
    EXPECT_EQ(std::string(buffer.data(), 2), "89");
    EXPECT_EQ(files.read(file.number(), bytes, 10), 0);
    EXPECT_EQ(files.read(file.number(), bytes, 0), 4);
}

TEST(NativeFileSystem, refusesAnOffsetThatNoFileHas) {
    const TemporaryFolder folder;
    folder.write("file", "0123456789");
    FileSystem& files = FileSystem::native();
    const FileDescriptor file(
        files, files.open(AT_FDCWD, (folder / "file").c_str(), O_RDONLY | O_CLOEXEC, 0));
    std::array<std::byte, 4> buffer{};
    EXPECT_EQ(files.read(file.number(), buffer, std::numeric_limits<std::uint64_t>::max()),
              -EOVERFLOW);
}

TEST(NativeFileSystem, returnsTheSystemsErrorsNegated) {
    const TemporaryFolder folder;
    FileSystem& files = FileSystem::native();
    struct stat found{};
    std::array<std::byte, 4> bytes{};
    std::array<char, 4> text{};
    const std::string missing = folder / "missing";
    EXPECT_EQ(files.open(AT_FDCWD, missing.c_str(), O_RDONLY | O_CLOEXEC, 0), -ENOENT);
    EXPECT_EQ(files.linkStatus(AT_FDCWD, missing.c_str(), found), -ENOENT);
    EXPECT_EQ(files.readLink(AT_FDCWD, folder.path().c_str(), text), -EINVAL);
    EXPECT_EQ(files.rename(AT_FDCWD, missing.c_str(), missing.c_str()), -ENOENT);
    EXPECT_EQ(files.unlink(AT_FDCWD, missing.c_str()), -ENOENT);
    EXPECT_EQ(files.linkUnnamed(-1, AT_FDCWD, missing.c_str()), -ENOENT);
    EXPECT_EQ(files.duplicate(-1), -EBADF);
    EXPECT_EQ(files.close(-1), -EBADF);
    EXPECT_EQ(files.read(-1, bytes, 0), -EBADF);
    EXPECT_EQ(files.write(-1, bytes), -EBADF);
    EXPECT_EQ(files.status(-1, found), -EBADF);
    EXPECT_EQ(files.setMode(-1, 0600), -EBADF);
    EXPECT_EQ(files.sync(-1), -EBADF);
}

TEST(NativeFileSystem, knowsTheUmaskWithoutChangingIt) {
    for (const mode_t mask : {0000U, 0022U, 0027U, 0077U, 0777U}) {
        const int result = inChildProcess([mask] {
            ::umask(mask);
            const bool isRight = FileSystem::native().creationMask() == mask;
            return isRight && ::umask(0) == mask ? 0 : 1;
        });
        EXPECT_EQ(result, 0) << mask;
    }
}

TEST(NativeFileSystem, knowsTheFileSizeLimit) {
    const int result = inChildProcess([] {
        const rlimit limit{.rlim_cur = 12'345, .rlim_max = 12'345};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
        return FileSystem::native().fileSizeLimit() == 12'345 ? 0 : 1;
    });
    EXPECT_EQ(result, 0);
    rlimit own{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &own), 0);
    if (own.rlim_cur != RLIM_INFINITY) GTEST_SKIP() << "these tests run with a file size limit";
    EXPECT_EQ(FileSystem::native().fileSizeLimit(), std::numeric_limits<std::int64_t>::max());
}

}  // namespace
}  // namespace quirebind
