// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Tests/Platform/Files/AtomicWriteSupport.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Tests/Support/TemporaryFolder.h"

// What the state of the whole process (its user, umask, limits, root folder) does to a write: each
// in a child process, which returns the errno of its write.

namespace quirebind {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

constexpr int kWrongResult = 201;
constexpr int kNotPossibleHere = 202;

/// Writes "new" to `path` as a user whom permissions stop, in a child process. The folder of the
/// test is made that user's own before.
int errorOfWritingAsOrdinaryUser(const std::string& path) {
    return inChildProcess([&path] {
        if (!becomeOrdinaryUser()) return kNotPossibleHere;
        return errorOfWriting("new", path);
    });
}

/// Gives `path` to the user that becomeOrdinaryUser() turns root into.
void giveToOrdinaryUser(const std::string& path) {
    if (::geteuid() != 0) return;
    ASSERT_EQ(::chown(path.c_str(), kOrdinaryUser, kOrdinaryUser), 0);
}

TEST(AtomicWriteProcess, givesANewFileThePermissionsThatTheUmaskAllows) {
    const TemporaryFolder folder;
    for (const mode_t mask : {0027U, 0000U, 0077U, 0022U}) {
        const std::string path = folder / std::to_string(mask);
        const int result = inChildProcess([&] {
            ::umask(mask);
            const int error = errorOfWriting("new", path);
            return ::umask(0) == mask ? error : kWrongResult;
        });
        EXPECT_EQ(result, 0);
        EXPECT_EQ(permissionsOf(path), 0666U & ~mask);
    }
}

TEST(AtomicWriteProcess, isNotKilledByTheFileSizeLimit) {
    const TemporaryFolder folder;
    folder.write("out.pdf", "old");
    const auto writeWithLimit = [&](std::size_t size) {
        return inChildProcess([&folder, size] {
            const rlimit limit{.rlim_cur = 1000, .rlim_max = 1000};
            if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return kNotPossibleHere;
            return errorOfWriting(std::string(size, 'n'), folder / "out.pdf");
        });
    };
    EXPECT_EQ(writeWithLimit(1001), EFBIG);
    EXPECT_EQ(folder.read("out.pdf"), "old");
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
    EXPECT_EQ(writeWithLimit(1000), 0);
    EXPECT_EQ(folder.read("out.pdf"), std::string(1000, 'n'));
}

TEST(AtomicWriteProcess, reportsThatTheFolderMayNotBeWrittenTo) {
    const TemporaryFolder folder;
    folder.write("out.pdf", "old");
    giveToOrdinaryUser(folder.path());
    giveToOrdinaryUser(folder / "out.pdf");
    ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
    const int result = errorOfWritingAsOrdinaryUser(folder / "out.pdf");
    if (result == kNotPossibleHere) GTEST_SKIP() << "root cannot become another user here";
    EXPECT_EQ(result, EACCES);
    EXPECT_EQ(folder.read("out.pdf"), "old");
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
}

TEST(AtomicWriteProcess, writesToAFolderThatMayNotBeListed) {
    const TemporaryFolder folder;
    giveToOrdinaryUser(folder.path());
    ASSERT_EQ(::chmod(folder.path().c_str(), 0333), 0);
    const int result = errorOfWritingAsOrdinaryUser(folder / "out.pdf");
    ASSERT_EQ(::chmod(folder.path().c_str(), 0700), 0);
    if (result == kNotPossibleHere) GTEST_SKIP() << "root cannot become another user here";
    EXPECT_EQ(result, 0);
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
    EXPECT_EQ(permissionsOf(folder / "out.pdf") & 0600U, 0600U);
}

TEST(AtomicWriteProcess, reportsThatTheFolderMayNotBeSearched) {
    const TemporaryFolder folder;
    folder.write("out.pdf", "old");
    giveToOrdinaryUser(folder.path());
    ASSERT_EQ(::chmod(folder.path().c_str(), 0600), 0);
    const int result = errorOfWritingAsOrdinaryUser(folder / "out.pdf");
    ASSERT_EQ(::chmod(folder.path().c_str(), 0700), 0);
    if (result == kNotPossibleHere) GTEST_SKIP() << "root cannot become another user here";
    EXPECT_EQ(result, EACCES);
    EXPECT_EQ(folder.read("out.pdf"), "old");
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
}

TEST(AtomicWriteProcess, replacesAFileThatItsOwnerMayNotWriteTo) {
    const TemporaryFolder folder;
    folder.write("out.pdf", "old");
    giveToOrdinaryUser(folder.path());
    giveToOrdinaryUser(folder / "out.pdf");
    ASSERT_EQ(::chmod((folder / "out.pdf").c_str(), 0444), 0);
    const int result = errorOfWritingAsOrdinaryUser(folder / "out.pdf");
    if (result == kNotPossibleHere) GTEST_SKIP() << "root cannot become another user here";
    EXPECT_EQ(result, 0);
    EXPECT_EQ(folder.read("out.pdf"), "new");
    EXPECT_EQ(permissionsOf(folder / "out.pdf"), 0444U);
}

TEST(AtomicWriteProcess, writesToARelativePath) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "inside");
    const int result = inChildProcess([&folder] {
        if (::chdir((folder / "inside").c_str()) != 0) return kNotPossibleHere;
        const int error = errorOfWriting("new", "one.pdf");
        return error != 0 ? error : errorOfWriting("new", "../two.pdf");
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(folder.read("inside/one.pdf"), "new");
    EXPECT_EQ(folder.read("two.pdf"), "new");
    EXPECT_THAT(folder.names(), ElementsAre("inside", "two.pdf"));
}

TEST(AtomicWriteProcess, worksWithoutProc) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root may change its root folder";
    const TemporaryFolder folder;
    const int result = inChildProcess([&folder] {
        ::umask(0027);
        if (::chroot(folder.path().c_str()) != 0 || ::chdir("/") != 0) return kNotPossibleHere;
        const int error = errorOfWriting("new", "/out.pdf");
        return ::umask(0) == 0027 ? error : kWrongResult;
    });
    if (result == kNotPossibleHere) GTEST_SKIP() << "root may not change its root folder here";
    EXPECT_EQ(result, 0);
    EXPECT_EQ(folder.read("out.pdf"), "new");
    EXPECT_EQ(permissionsOf(folder / "out.pdf"), 0640U);
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
}

/// The calls of a whole write over an old file, several of them writes.
std::vector<FileCall> callsOfAWrite() {
    const TemporaryFolder folder;
    folder.write("out.pdf", "old bytes");
    FaultyFileSystem files;
    files.limitTransfers(4);
    EXPECT_EQ(errorOfWriting("new bytes", folder / "out.pdf", files), 0);
    return files.history();
}

/// Does the same write in a child process, which is killed before its call number `moment` (from
/// 0).
int killWhileWriting(const std::string& path, std::size_t moment) {
    return inChildProcess([&path, moment] {
        FaultyFileSystem files;
        files.limitTransfers(4);
        files.onEachCall([&](FileCall) {
            if (files.count() == moment) static_cast<void>(::raise(SIGKILL));
        });
        return errorOfWriting("new bytes", path, files);
    });
}

TEST(AtomicWriteProcess, killedAtAnyMomentLeavesTheOldFileOrTheNewOne) {
    const std::vector<FileCall> calls = callsOfAWrite();
    const bool isUnnamed = std::ranges::find(calls, FileCall::linkUnnamed) != calls.end();
    const auto renaming =
        static_cast<std::size_t>(std::ranges::find(calls, FileCall::rename) - calls.begin());
    for (std::size_t moment = 0; moment < calls.size(); ++moment) {
        SCOPED_TRACE(nameOf(calls[moment]));
        const TemporaryFolder folder;
        folder.write("out.pdf", "old bytes");
        EXPECT_EQ(killWhileWriting(folder / "out.pdf", moment), -SIGKILL);
        EXPECT_EQ(folder.read("out.pdf"), moment > renaming ? "new bytes" : "old bytes");
        // The temporary file has a name between being linked and being renamed, or all the time.
        const bool hasName = moment <= renaming && (!isUnnamed || moment + 2 > renaming);
        if (!hasName) {
            EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
        }
    }
}

TEST(AtomicWriteProcess, killedAtAnyMomentLeavesNothingOrTheNewFile) {
    std::vector<FileCall> calls;
    {
        const TemporaryFolder folder;
        if (!hasUnnamedFiles(folder.path())) {
            GTEST_SKIP() << "the file system of " << folder.path() << " has no unnamed files";
        }
        FaultyFileSystem files;
        files.limitTransfers(4);
        EXPECT_EQ(errorOfWriting("new bytes", folder / "out.pdf", files), 0);
        calls = files.history();
    }
    std::size_t finished = 0;
    for (std::size_t moment = 0; moment < calls.size(); ++moment) {
        SCOPED_TRACE(nameOf(calls[moment]));
        const TemporaryFolder folder;
        EXPECT_EQ(killWhileWriting(folder / "out.pdf", moment), -SIGKILL);
        if (folder.names().empty()) continue;
        ++finished;
        EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
        EXPECT_EQ(folder.read("out.pdf"), "new bytes");
    }
    EXPECT_GT(finished, 0U);
    EXPECT_LT(finished, calls.size());
}

}  // namespace
}  // namespace quirebind
