// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Merges on a file system that fails, or whose files change meanwhile.

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Tests/QuirebindCore/CoreTestSupport.h"
#include "Tests/Support/FaultyFileSystem.h"

namespace quirebind::coretest {
namespace {

using ::testing::ElementsAre;
namespace fs = std::filesystem;

/// How many descriptors this process has open.
std::ptrdiff_t openDescriptors() {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

/// Two sources, a destination that exists, and what a merge of the two gives.
class Merge {
 public:
    Merge()
        : sources_(urls({addPages(folder_, "a", 2), addPages(folder_, "b", 1)})),
          destination_(URL::file(folder_ / "out.pdf")) {
        PDFMerger::merge(sources_, destination_);
        merged_ = folder_.read("out.pdf");
        reset();
    }

    void reset() const { folder_.write("out.pdf", kOld); }

    /// Does the merge; gives whether it succeeded. Failures are those of the contract.
    bool run(FileSystem& files) const {
        try {
            PDFMerger::mergeOn(files, sources_, destination_);
            return true;
        } catch (const PDFMerger::Failure& failure) {
            EXPECT_EQ(failure.kind(), Kind::invalid);
            EXPECT_THAT(failure.name(), ::testing::AnyOf("a.pdf", "b.pdf"));
        } catch (const std::system_error& error) {
            EXPECT_EQ(error.code().category(), std::generic_category());
        }
        return false;
    }

    /// Expects that the destination is as it has to be after that, and nothing else is there.
    void expectOutcome(bool succeeded) const {
        EXPECT_EQ(folder_.read("out.pdf"), succeeded ? merged_ : kOld);
        EXPECT_THAT(folder_.names(), ElementsAre("a.pdf", "b.pdf", "out.pdf"));
    }

 private:
    inline static const std::string kOld = "what was there before";

    TemporaryFolder folder_;
    std::vector<URL> sources_;
    URL destination_;
    std::string merged_;
};

std::size_t callsOf(const Merge& merge) {
    FaultyFileSystem files;
    EXPECT_TRUE(merge.run(files));
    merge.expectOutcome(true);
    return files.count();
}

class FailingCall : public ::testing::TestWithParam<int> {};

TEST_P(FailingCall, leavesTheDestinationOldOrNew) {
    const Merge merge;
    const std::size_t calls = callsOf(merge);
    ASSERT_GT(calls, 10U);
    const auto descriptors = openDescriptors();
    for (std::size_t call = 1; call <= calls; ++call) {
        SCOPED_TRACE("call " + std::to_string(call));
        merge.reset();
        FaultyFileSystem files;
        files.failCall(call, GetParam());
        merge.expectOutcome(merge.run(files));
        EXPECT_EQ(files.openFiles(), 0U);
    }
    EXPECT_EQ(openDescriptors(), descriptors);
}

INSTANTIATE_TEST_SUITE_P(Each, FailingCall,
                         ::testing::Values(EIO, ENOSPC, EACCES, EINTR, EOPNOTSUPP, ENOMEM));

// Removing a file works: otherwise the temporary one would have to stay.
TEST(FailingCalls, leaveTheDestinationOldOrNew) {
    const Merge merge;
    const std::size_t calls = callsOf(merge);
    for (std::size_t call = 1; call <= calls; ++call) {
        SCOPED_TRACE("from call " + std::to_string(call));
        const Merge fresh;
        FaultyFileSystem files;
        files.fail(FileCall::unlink, 0);  // the first that is told counts: this one works
        files.failFrom(call, EIO);
        fresh.expectOutcome(fresh.run(files));
        EXPECT_EQ(files.openFiles(), 0U);
    }
}

TEST(InterruptedCalls, areMadeAgain) {
    const Merge merge;
    FaultyFileSystem files;
    files.interruptEveryCall();
    EXPECT_TRUE(merge.run(files));
    merge.expectOutcome(true);
}

TEST(ShortTransfers, areContinued) {
    const Merge merge;
    FaultyFileSystem files;
    files.limitTransfers(7);
    files.pretendToSync();
    EXPECT_TRUE(merge.run(files));
    merge.expectOutcome(true);
}

/// A source of more than what is read at once, whose pages' content is far apart.
std::string largeDocument() {
    std::string bytes = test::simplePDF(2, {.label = "large"});
    const std::string padding = '%' + std::string(300'000, '-') + '\n';
    // Padding behind the header moves all offsets alike; they count from the header, so what makes
    // the file large goes between the objects and the table, which is looked up by its keyword.
    const std::size_t table = bytes.rfind("\nxref\n") + 1;
    const std::size_t moved = table + padding.size();
    bytes.insert(table, padding);
    const std::size_t start = bytes.rfind("startxref\n") + 10;
    return bytes.substr(0, start) + std::to_string(moved) + "\n%%EOF\n";
}

/// Merges a small source and then a large one, to which `change` happens before its reading call
/// number `which`. Gives the failure.
std::optional<PDFMerger::Failure> failureWhenChanged(
    std::size_t which, const std::function<void(const std::string&)>& change, bool& happened) {
    const TemporaryFolder folder;
    folder.write("large.pdf", largeDocument());
    const std::string large = folder / "large.pdf";
    const std::vector<URL> sources = urls({addPages(folder, "small", 1), large});
    FaultyFileSystem files;
    std::size_t reads = 0;
    files.onEachCall([&](FileCall call) {
        if (call != FileCall::read || ++reads != which + 1) return;  // the first is the small one's
        change(large);
        happened = true;
    });
    auto failure =
        failureOf([&] { PDFMerger::mergeOn(files, sources, URL::file(folder / "out.pdf")); });
    EXPECT_EQ(fs::exists(folder / "out.pdf"), !failure);
    EXPECT_EQ(files.openFiles(), 0U);
    return failure;
}

void expectRefusalWheneverChanged(const std::function<void(const std::string&)>& change) {
    std::size_t reads = 0;
    for (bool happened = true; happened;) {
        happened = false;
        const auto failure = failureWhenChanged(reads + 1, change, happened);
        if (!happened) break;
        ++reads;
        expectFailure(failure, Kind::invalid, "large.pdf");
    }
    EXPECT_GE(reads, 2U) << "the file was read at once";
}

TEST(ChangingSource, isRefusedWhenItGrows) {
    expectRefusalWheneverChanged([](const std::string& path) {
        std::ofstream(path, std::ios::binary | std::ios::app) << "more";
    });
}

TEST(ChangingSource, isRefusedWhenItShrinks) {
    expectRefusalWheneverChanged([](const std::string& path) { fs::resize_file(path, 1000); });
    expectRefusalWheneverChanged([](const std::string& path) { fs::resize_file(path, 0); });
}

TEST(ChangingSource, isRefusedWhenItIsWrittenToWithTheSameSize) {
    expectRefusalWheneverChanged([](const std::string& path) {
        std::fstream(path, std::ios::binary | std::ios::in | std::ios::out) << "%PDF-1.7";
    });
}

TEST(ChangingSource, isRefusedWhenItsTimeChanges) {
    expectRefusalWheneverChanged([](const std::string& path) {
        fs::last_write_time(path, fs::last_write_time(path) + std::chrono::nanoseconds(1));
    });
}

// Who replaces a file by another leaves the one that is open as it was.
TEST(ChangingSource, isReadToItsEndWhenItsNameIsTakenAway) {
    bool happened = false;
    const auto failure =
        failureWhenChanged(2, [](const std::string& path) { fs::remove(path); }, happened);
    EXPECT_TRUE(happened);
    EXPECT_FALSE(failure);
}

}  // namespace
}  // namespace quirebind::coretest
