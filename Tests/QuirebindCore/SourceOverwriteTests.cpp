// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The destination is never one of the sources, by whatever path either is given.

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "QuirebindCore/MergeOn.h"
#include "Tests/QuirebindCore/CoreTestSupport.h"
#include "Tests/Support/FaultyFileSystem.h"

namespace quirebind::coretest {
namespace {

namespace fs = std::filesystem;

/// A folder with the sources a.pdf and b.pdf, and what they were.
class Sources {
 public:
    Sources() : a_(addPages(folder_, "a", 1)), b_(addPages(folder_, "b", 2)) {
        bytesOfA_ = folder_.read("a.pdf");
        bytesOfB_ = folder_.read("b.pdf");
    }

    [[nodiscard]] const TemporaryFolder& folder() const { return folder_; }
    [[nodiscard]] const std::string& a() const { return a_; }
    [[nodiscard]] const std::string& b() const { return b_; }

    void expectUntouched() const {
        EXPECT_EQ(folder_.read("a.pdf"), bytesOfA_);
        EXPECT_EQ(folder_.read("b.pdf"), bytesOfB_);
    }

    /// Expects that a merge of these into that is refused and changes nothing.
    void expectRefusal(const std::vector<std::string>& sources,
                       const std::string& destination) const {
        const auto before = folder_.names();
        expectFailure(failureOfMerging(sources, destination), Kind::sourceOverwrite);
        expectUntouched();
        EXPECT_EQ(folder_.names(), before);
    }

 private:
    TemporaryFolder folder_;
    std::string a_;
    std::string b_;
    std::string bytesOfA_;
    std::string bytesOfB_;
};

TEST(SourceOverwrite, isRefusedForEverySource) {
    const Sources sources;
    sources.expectRefusal({sources.a()}, sources.a());
    sources.expectRefusal({sources.a(), sources.b()}, sources.a());
    sources.expectRefusal({sources.a(), sources.b()}, sources.b());
    sources.expectRefusal({sources.a(), sources.b(), sources.a()}, sources.b());
}

TEST(SourceOverwrite, isRefusedBeforeAnySourceIsOpened) {
    const Sources sources;
    sources.folder().write("text.pdf", "no PDF");
    sources.expectRefusal(
        {sources.folder() / "none.pdf", sources.folder() / "text.pdf", sources.a()}, sources.a());
    sources.expectRefusal({sources.a(), sources.folder() / "none.pdf"}, sources.a());
    // A source that is not there yet is one all the same.
    sources.expectRefusal({sources.a(), sources.folder() / "none.pdf"},
                          sources.folder() / "none.pdf");
}

TEST(SourceOverwrite, isRefusedThroughDots) {
    const Sources sources;
    const std::string name = fs::path(sources.folder().path()).filename().string();
    sources.expectRefusal({sources.a()}, sources.folder() / "./a.pdf");
    sources.expectRefusal({sources.a()}, sources.folder() / "../" + name + "/a.pdf");
    sources.expectRefusal({sources.folder() / ".//a.pdf"}, sources.a());
    sources.expectRefusal({sources.a()}, sources.folder() / "nowhere/../a.pdf");
}

TEST(SourceOverwrite, isRefusedThroughARelativePath) {
    const Sources sources;
    const fs::path before = fs::current_path();
    fs::current_path(sources.folder().path());
    sources.expectRefusal({sources.a()}, "a.pdf");
    sources.expectRefusal({"./b.pdf", "a.pdf"}, sources.b());
    sources.expectRefusal({"a.pdf"}, "./a.pdf");
    fs::current_path(before);
}

TEST(SourceOverwrite, isRefusedThroughLinksToTheFile) {
    const Sources sources;
    fs::create_symlink("a.pdf", sources.folder() / "link.pdf");
    fs::create_symlink(sources.folder() / "link.pdf", sources.folder() / "second.pdf");
    sources.expectRefusal({sources.a()}, sources.folder() / "link.pdf");
    sources.expectRefusal({sources.a()}, sources.folder() / "second.pdf");
    sources.expectRefusal({sources.folder() / "second.pdf"}, sources.a());
    sources.expectRefusal({sources.folder() / "second.pdf"}, sources.folder() / "link.pdf");
}

TEST(SourceOverwrite, isRefusedThroughLinksToTheFolder) {
    const Sources sources;
    fs::create_directory(sources.folder() / "inner");
    fs::create_symlink(sources.folder().path(), sources.folder() / "inner/outer");
    sources.expectRefusal({sources.a()}, sources.folder() / "inner/outer/a.pdf");
    sources.expectRefusal({sources.folder() / "inner/outer/b.pdf"},
                          sources.folder() / "inner/../b.pdf");
}

TEST(SourceOverwrite, isNotRefusedForADifferentFileOfTheSameName) {
    const Sources sources;
    fs::create_directory(sources.folder() / "inner");
    merge({sources.a()}, sources.folder() / "inner/a.pdf");
    EXPECT_TRUE(test::pageCounts(sources.folder() / "inner/a.pdf").allAre(1));
    sources.expectUntouched();
}

// Another name of the same file is not seen through. The source is whole all the same: the name is
// given to a new file.
TEST(SourceOverwrite, ofAHardLinkLeavesTheSourceWhole) {
    const Sources sources;
    fs::create_hard_link(sources.a(), sources.folder() / "hard.pdf");
    merge({sources.a(), sources.b()}, sources.folder() / "hard.pdf");
    sources.expectUntouched();
    EXPECT_TRUE(test::pageCounts(sources.folder() / "hard.pdf").allAre(3));
}

/// The folder "first" can also be reached as "second", as one that is mounted there would.
class MountedTwice : public FaultyFileSystem {
 public:
    int open(int folder, const char* path, int flags, mode_t mode) override {
        return FaultyFileSystem::open(folder, mounted(path).c_str(), flags, mode);
    }
    int linkStatus(int folder, const char* name, struct stat& result) override {
        return FaultyFileSystem::linkStatus(folder, mounted(name).c_str(), result);
    }

 private:
    static std::string mounted(std::string path) {
        constexpr std::string_view kSecond = "second";
        if (const std::size_t at = path.find(kSecond); at != std::string::npos)
            path.replace(at, kSecond.size(), "first");
        return path;
    }
};

TEST(SourceOverwrite, isRefusedWhereAFolderIsMountedTwice) {
    const TemporaryFolder folder;
    fs::create_directory(folder.path() + "/first");
    const std::string name = folder.path() + "/first/a.pdf";
    fs::rename(addPages(folder, "a", 1), name);
    const std::string bytes = folder.read("first/a.pdf");
    const URL first = URL::file(name);
    const URL second = URL::file(folder.path() + "/second/a.pdf");
    MountedTwice files;
    for (const bool hasHardLink : {false, true}) {
        if (hasHardLink) fs::create_hard_link(name, folder.path() + "/first/hard.pdf");
        for (const auto& [source, destination] :
             {std::pair(first, second), std::pair(second, first)}) {
            const auto failure =
                failureOf([&] { PDFMerger::mergeOn(files, std::vector{source}, destination); });
            expectFailure(failure, Kind::sourceOverwrite);
            EXPECT_EQ(folder.read("first/a.pdf"), bytes);
        }
    }
}

}  // namespace
}  // namespace quirebind::coretest
