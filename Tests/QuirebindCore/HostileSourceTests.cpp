// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Sources that are files, but not as others are.

#include <filesystem>
#include <fstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Tests/QuirebindCore/CoreTestSupport.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/MemoryLimit.h"

namespace quirebind::coretest {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kMegabyte = std::uintmax_t{1} << 20U;

// To look at each byte of this would take minutes. Sanitizers end the program where it asks for
// more memory than the machine has.
constexpr std::uintmax_t kLargeHole = (test::kMemoryLimitsWork ? 500'000 : 3'000) * kMegabyte;

// They have bytes but no size, or a size but no bytes.
TEST(HostileSource, ofTheSystemIsRefused) {
    for (const std::string path : {"/proc/self/maps", "/proc/self/mem", "/proc/self/environ",
                                   "/proc/kcore", "/proc/kmsg", "/sys/power/state"}) {
        if (!fs::exists(path)) continue;
        expectFailure(failureOfOpening(path), Kind::invalid, fs::path(path).filename());
    }
}

TEST(HostileSource, thatIsAHoleIsRefused) {
    const TemporaryFolder folder;
    folder.write("hole.pdf", "%PDF-1.7\n");
    fs::resize_file(folder / "hole.pdf", 32 * kMegabyte);
    expectFailure(failureOfOpening(folder / "hole.pdf"), Kind::invalid, "hole.pdf");
}

TEST(HostileSource, thatIsALargeHoleIsRefused) {
    const TemporaryFolder folder;
    folder.write("hole.pdf", "%PDF-1.7\n");
    std::error_code error;
    fs::resize_file(folder / "hole.pdf", kLargeHole, error);
    if (error) GTEST_SKIP() << "the file system has no such files: " << error.message();
    expectFailure(failureOfOpening(folder / "hole.pdf"), Kind::invalid, "hole.pdf");
}

TEST(HostileSource, withALargeHoleInAStreamIsRefused) {
    const TemporaryFolder folder;
    folder.write("hole.pdf", "%PDF-1.7\n1 0 obj<<>>stream\n");
    std::error_code error;
    fs::resize_file(folder / "hole.pdf", kLargeHole, error);
    if (error) GTEST_SKIP() << "the file system has no such files: " << error.message();
    expectFailure(failureOfOpening(folder / "hole.pdf"), Kind::invalid, "hole.pdf");
}

TEST(HostileSource, withALargeHoleIsMergedByItsTable) {
    const TemporaryFolder folder;
    const std::string page = test::simplePDF(1, {.label = "a"});
    folder.write("a.pdf", page);
    const std::string path = folder / "a.pdf";
    std::error_code error;
    fs::resize_file(path, kLargeHole, error);
    if (error) GTEST_SKIP() << "the file system has no such files: " << error.message();
    std::ofstream(path, std::ios::binary | std::ios::app) << page.substr(page.rfind("startxref"));
    merge({path}, folder / "out.pdf");
    EXPECT_TRUE(test::pageCounts(folder / "out.pdf").allAre(1));
}

TEST(HostileSource, withAHoleBehindItsEndIsWhole) {
    const TemporaryFolder folder;
    const std::string path = addPages(folder, "a", 3);
    fs::resize_file(path, 32 * kMegabyte);
    merge({path, addPages(folder, "b", 1)}, folder / "out.pdf");
    EXPECT_TRUE(test::pageCounts(folder / "out.pdf").allAre(4));
}

TEST(HostileSource, thatMayNotBeReadIsRefused) {
    const TemporaryFolder folder;
    const std::string path = addPages(folder, "a", 1);
    fs::permissions(path, fs::perms::none);
    fs::permissions(folder.path(), fs::perms::all);
    const int result = inChildProcess([&] {
        if (!becomeOrdinaryUser()) return 3;
        const auto failure = failureOfOpening(path);
        if (!failure) return 1;
        return failure->kind() == Kind::invalid && failure->name() == "a.pdf" ? 0 : 2;
    });
    if (result == 3) GTEST_SKIP() << "this user cannot become another";
    EXPECT_EQ(result, 0);
}

TEST(HostileSource, behindALoopOfFoldersIsRefused) {
    const TemporaryFolder folder;
    fs::create_directory_symlink("two", folder / "one");
    fs::create_directory_symlink("one", folder / "two");
    expectFailure(failureOfOpening(folder / "one/a.pdf"), Kind::invalid, "a.pdf");
    const std::string good = addPages(folder, "a", 1);
    EXPECT_ANY_THROW(merge({good}, folder / "one/out.pdf"));
    EXPECT_THAT(folder.names(), ::testing::ElementsAre("a.pdf", "one", "two"));
}

TEST(HostileSource, isReadThroughALinkOfALink) {
    const TemporaryFolder folder;
    static_cast<void>(addPages(folder, "a", 2));
    fs::create_symlink("a.pdf", folder / "b.pdf");
    fs::create_symlink("b.pdf", folder / "c.pdf");
    merge({folder / "c.pdf"}, folder / "out.pdf");
    EXPECT_TRUE(test::pageCounts(folder / "out.pdf").allAre(2));
    // Through links too, a source is no destination.
    expectFailure(failureOfMerging({folder / "c.pdf"}, folder / "a.pdf"), Kind::sourceOverwrite);
}

}  // namespace
}  // namespace quirebind::coretest
