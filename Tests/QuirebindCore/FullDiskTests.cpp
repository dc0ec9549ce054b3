// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Merges onto file systems that are too small for them.

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#if defined(__linux__)
#include <sched.h>
#include <sys/mount.h>
#endif

#include "Tests/QuirebindCore/CoreTestSupport.h"
#include "Tests/Support/ChildProcess.h"

namespace quirebind::coretest {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;

// What a child process, which cannot fail a test, tells of a merge.
enum Outcome : int { merged, refused, wrongError, destinationLost, somethingLeft, noMount };

#if defined(__linux__)
/// Mounts an empty file system of that size at `folder`, for this process alone.
bool mountDisk(const std::string& folder, const std::string& options) {
    const unsigned user = ::geteuid();
    if (user != 0) {
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
        std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
    } else if (::unshare(CLONE_NEWNS) != 0 ||
               ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
        return false;
    }
    return ::mount("disk", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}
#else
bool mountDisk(const std::string& /*folder*/, const std::string& /*options*/) {
    return false;
}
#endif

std::string bytesOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Merges `source` onto a disk of its own, over a file "old".
Outcome mergeOntoDisk(const std::string& source, const std::string& disk,
                      const std::string& options) {
    if (!mountDisk(disk, options)) return noMount;
    const fs::path destination = fs::path(disk) / "out.pdf";
    std::ofstream(destination) << "old";
    Outcome outcome = merged;
    try {
        merge({source, source}, destination);
    } catch (const std::system_error& error) {
        outcome = error.code() == std::errc::no_space_on_device ? refused : wrongError;
    }
    const bool isOld = bytesOf(destination) == "old";
    if (isOld != (outcome != merged)) return destinationLost;
    if (outcome == merged && !bytesOf(destination).ends_with("%%EOF\n")) return destinationLost;
    const auto left = std::distance(fs::directory_iterator(disk), fs::directory_iterator());
    return left == 1 ? outcome : somethingLeft;
}

class FullDisk : public ::testing::Test {
 protected:
    /// Merges onto a disk with these options, in a child process.
    [[nodiscard]] int merge(const std::string& options) const {
        return inChildProcess([&] { return mergeOntoDisk(source_, folder_ / "disk", options); });
    }

 private:
    TemporaryFolder folder_;
    std::string source_ = addPages(folder_, "a", 400);
    bool made_ = fs::create_directory(folder_ / "disk");
};

TEST_F(FullDisk, keepsTheOldFile) {
    if (merge("size=8m") == noMount) GTEST_SKIP() << "nothing may be mounted here";
    EXPECT_EQ(merge("size=8m"), merged);
    bool everRefused = false;
    constexpr int kStep = 16;
    constexpr int kMost = 1024;
    for (int size = kStep; size <= kMost; size += kStep) {
        const int outcome = merge("size=" + std::to_string(size) + "k");
        EXPECT_TRUE(outcome == merged || outcome == refused) << size << " kB: " << outcome;
        everRefused = everRefused || outcome == refused;
    }
    EXPECT_TRUE(everRefused);
}

TEST_F(FullDisk, withoutRoomForAnotherNameKeepsTheOldFile) {
    // The root folder and the old file.
    const int outcome = merge("size=8m,nr_inodes=2");
    if (outcome == noMount) GTEST_SKIP() << "nothing may be mounted here";
    EXPECT_EQ(outcome, refused);
}

}  // namespace
}  // namespace quirebind::coretest
