// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Platform/Files/SymlinkResolver.h"
#include "Platform/Files/URL.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind {
namespace {

namespace fs = std::filesystem;

class Symlinks : public testing::Test {
 protected:
    void link(const std::string& target, std::string_view name) const {
        fs::create_symlink(target, folder_ / name);
    }

    void makeFolder(std::string_view name) const { fs::create_directories(folder_ / name); }

    /// Resolves a path in the temporary folder.
    [[nodiscard]] std::string resolved(std::string_view name) const {
        return std::string(URL::file(folder_ / name).resolvingSymlinksInPath().path());
    }

    TemporaryFolder folder_;  // NOLINT(*-non-private-member-variables-in-classes): the test's own
};

TEST_F(Symlinks, areFollowedToAFile) {
    folder_.write("file", "x");
    link("file", "relative");
    link(folder_ / "file", "absolute");
    link("absolute", "twice");
    for (const std::string_view name : {"file", "relative", "absolute", "twice"}) {
        EXPECT_EQ(resolved(name), folder_ / "file") << name;
    }
}

TEST_F(Symlinks, areFollowedInTheMiddleOfAPath) {
    makeFolder("a/b");
    folder_.write("a/b/file", "x");
    makeFolder("c");
    link("../a/b", "c/link");
    link(folder_ / "c", "d");
    EXPECT_EQ(resolved("d/link/file"), folder_ / "a/b/file");
    EXPECT_EQ(resolved("./d//link/./file"), folder_ / "a/b/file");
    EXPECT_EQ(resolved("d/link/"), folder_ / "a/b");
}

TEST_F(Symlinks, agreeWithTheSystemOnWhatExists) {
    makeFolder("a/b/c");
    folder_.write("a/b/file", "x");
    link("b/c/..", "a/up");
    // The root's parent is the root.
    std::string ups = "..";
    for (int i = 0; i < 30; ++i) ups += "/..";
    link(ups + folder_.path(), "a/b/far");
    link("a/up/file", "file");
    link("..", "a/parent");
    for (const std::string_view name :
         {"file", "a/up/file", "a/up/../b/file", "a/parent/a/parent/file", "a/b/far/a/b/file",
          "a/b/c/../../up/c", "a/./parent/./a/"}) {
        EXPECT_EQ(resolved(name), fs::canonical(folder_ / name).string()) << name;
    }
}

TEST_F(Symlinks, leadParentComponentsFromWhereTheyEnd) {
    makeFolder("deep/inside");
    folder_.write("deep/file", "right");
    folder_.write("file", "wrong");
    link("deep/inside", "link");
    EXPECT_EQ(resolved("link/../file"), folder_ / "deep/file");
    EXPECT_EQ(URL::file(folder_ / "link/../file").standardizedFileURL().path(), folder_ / "file");
}

TEST_F(Symlinks, leaveTheRestOfAPathThatDoesNotExist) {
    makeFolder("real");
    link("real", "link");
    EXPECT_EQ(resolved("link/new.pdf"), folder_ / "real/new.pdf");
    EXPECT_EQ(resolved("link/no/../such//file/"), folder_ / "real/no/../such//file/");
    EXPECT_EQ(resolved("no/../link"), folder_ / "no/../link");
}

TEST_F(Symlinks, leaveTheRestOfADanglingLink) {
    link("gone", "dangling");
    link("/nowhere-at-all/x", "far");
    EXPECT_EQ(resolved("dangling"), folder_ / "gone");
    EXPECT_EQ(resolved("dangling/../b"), folder_ / "gone/../b");
    EXPECT_EQ(resolved("far/b"), "/nowhere-at-all/x/b");
}

TEST_F(Symlinks, leaveTheRestAfterAFileThatIsNoFolder) {
    folder_.write("file", "x");
    link("file", "link");
    EXPECT_EQ(resolved("link/../b"), folder_ / "file/../b");
    EXPECT_EQ(resolved("link/."), folder_ / "file/.");
    EXPECT_EQ(resolved("link/"), folder_ / "file/");
}

TEST_F(Symlinks, inACircleEndTheWalk) {
    link("b", "a");
    link("a", "b");
    link("self", "self");
    link("deeper/x", "deeper");
    const std::string circle = resolved("a/tail");
    EXPECT_TRUE(circle == folder_ / "a/tail" || circle == folder_ / "b/tail") << circle;
    EXPECT_EQ(resolved("self/../tail"), folder_ / "self/../tail");
    EXPECT_TRUE(resolved("deeper").starts_with(folder_ / "deeper/x/x"));
}

TEST_F(Symlinks, areFollowedFortyTimes) {
    folder_.write("0", "x");
    for (int i = 1; i <= 41; ++i) link(std::to_string(i - 1), std::to_string(i));
    EXPECT_EQ(resolved("40"), folder_ / "0");
    EXPECT_EQ(resolved("41"), folder_ / "1");
}

TEST_F(Symlinks, withLongTargetsAreFollowedWhole) {
    const std::string name(250, 'n');
    const std::string longPath = name + "/" + name + "/" + name;
    makeFolder(longPath);
    link(longPath, "link");
    EXPECT_EQ(resolved("link/x"), folder_ / longPath + "/x");
    // Targets of all sizes about that of the first buffer.
    for (std::size_t size = 254; size <= 258; ++size) {
        const std::string target = std::string(size - 3, '/').replace(0, 1, ".") + "end";
        makeFolder("end");
        link(target, std::to_string(size));
        EXPECT_EQ(resolved(std::to_string(size)), folder_ / "end") << size;
    }
}

TEST_F(Symlinks, ofAnyNameAreFollowed) {
    makeFolder("a b");
    makeFolder("\xE9\xFF");
    link("a b", "with blank");
    link("\xE9\xFF", "\xFE\n");
    EXPECT_EQ(resolved("with blank/x y"), folder_ / "a b/x y");
    EXPECT_EQ(resolved("\xFE\n/\xFD"), folder_ / "\xE9\xFF/\xFD");
}

TEST_F(Symlinks, areNotLookedForBehindAZeroByte) {
    link("elsewhere", "link");
    const std::string path = folder_ / std::string_view("link\0tail", 9);
    EXPECT_EQ(URL::file(path).resolvingSymlinksInPath().path(), path);
}

TEST_F(Symlinks, areFollowedFromTheWorkingFolder) {
    folder_.write("file", "x");
    makeFolder("inside");
    link("../file", "inside/link");
    const int result = inChildProcess([this] {
        if (::chdir((folder_ / "inside").c_str()) != 0) return 2;
        if (URL::file("link").resolvingSymlinksInPath().path() != folder_ / "file") return 3;
        if (URL::file("../inside/new").resolvingSymlinksInPath().path() != folder_ / "inside/new") {
            return 4;
        }
        return URL::file("").resolvingSymlinksInPath().path().empty() ? 0 : 5;
    });
    EXPECT_EQ(result, 0);
}

TEST_F(Symlinks, areLeftAloneWhereTheWorkingFolderIsGone) {
    makeFolder("inside");
    const int result = inChildProcess([this] {
        if (::chdir((folder_ / "inside").c_str()) != 0) return 2;
        if (::rmdir((folder_ / "inside").c_str()) != 0) return 3;
        return URL::file("a/../b").resolvingSymlinksInPath().path() == "a/../b" ? 0 : 4;
    });
    EXPECT_EQ(result, 0);
}

TEST_F(Symlinks, inAFolderThatMayNotBeSearchedStayAsTheyAre) {
    makeFolder("closed");
    folder_.write("file", "x");
    link("../file", "closed/link");
    ASSERT_EQ(::chmod(folder_.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod((folder_ / "closed").c_str(), 0600), 0);
    constexpr int kNoPermissions = 100;
    const int result = inChildProcess([this] {
        if (!becomeOrdinaryUser()) return kNoPermissions;
        return resolved("closed/link/../x") == folder_ / "closed/link/../x" ? 0 : 1;
    });
    if (result == kNoPermissions) GTEST_SKIP() << "root cannot become another user here";
    EXPECT_EQ(result, 0);
}

TEST_F(Symlinks, thatCannotBeReadStayAsTheyAre) {
    makeFolder("real");
    link("real", "link");
    for (const int error : {EACCES, EIO, EINVAL, ENOENT, ELOOP, ENAMETOOLONG}) {
        for (const FileCall call : {FileCall::linkStatus, FileCall::readLink}) {
            FaultyFileSystem files;
            files.fail(call, error);
            const URL url = URL::file(folder_ / "link/../x");
            EXPECT_EQ(url.resolvingSymlinksInPath(files), url) << nameOf(call) << ' ' << error;
        }
    }
}

TEST_F(Symlinks, areFollowedInSpiteOfSignals) {
    makeFolder("real");
    link("real", "link");
    FaultyFileSystem files;
    files.interruptEveryCall();
    EXPECT_EQ(URL::file(folder_ / "link/x").resolvingSymlinksInPath(files).path(),
              folder_ / "real/x");
}

TEST_F(Symlinks, areFollowedForPathsOneAfterAnother) {
    makeFolder("real");
    makeFolder("other");
    link("real", "link");
    link("other/y", "real/x");
    SymlinkResolver resolver(FileSystem::native());
    const std::vector<std::pair<std::string, std::string>> paths{
        {"link/a", "real/a"},       {"link/b", "real/b"},
        {"link/x", "real/other/y"}, {"link/..", ""},
        {"other/a", "other/a"},     {"link/a", "real/a"},
        {"lost/../a", "lost/../a"}, {"lost/../b", "lost/../b"},
        {"link/", "real"},          {"link/.", "real"},
        {"link//a", "real/a"},
    };
    for (const auto& [path, expected] : paths) {
        const URL url = URL::file(folder_ / path);
        EXPECT_EQ(url.resolvingSymlinksInPath(resolver), url.resolvingSymlinksInPath()) << path;
        EXPECT_EQ(url.resolvingSymlinksInPath(resolver).path(),
                  expected.empty() ? folder_.path() : folder_ / expected)
            << path;
    }
}

TEST_F(Symlinks, doNotMatterToAPathOfAnyLength) {
    const std::string tail(std::size_t{1} << 16U, 'x');
    EXPECT_EQ(resolved(tail), folder_ / tail);
    std::string dots;
    for (int i = 0; i < 50'000; ++i) dots += "./";
    EXPECT_EQ(resolved(dots + "x"), folder_ / "x");
}

}  // namespace
}  // namespace quirebind
