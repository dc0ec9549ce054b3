// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Merging: what is written, and that nothing is where a merge is refused.

#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Tests/QuirebindCore/CoreTestSupport.h"
#include "Tests/QuirebindCore/WrittenDocument.h"

namespace quirebind::coretest {
namespace {

using ::testing::ElementsAre;
namespace fs = std::filesystem;

/// Expects that the merge fails with the system's own error and message and changes nothing.
void expectSystemError(const TemporaryFolder& folder, const std::vector<std::string>& sources,
                       const std::string& destination, int error) {
    const auto before = folder.names();
    try {
        merge(sources, destination);
        ADD_FAILURE() << "there was no error";
    } catch (const std::system_error& failure) {
        EXPECT_EQ(failure.code(), std::error_code(error, std::generic_category()));
        EXPECT_EQ(failure.what(), std::generic_category().message(error));
    }
    EXPECT_EQ(folder.names(), before);
}

TEST(Merge, joinsItsSourcesInTheirOrder) {
    const TemporaryFolder folder;
    merge({addPages(folder, "b", 2), addPages(folder, "a", 1), addPages(folder, "c", 3)},
          folder / "out.pdf");
    EXPECT_TRUE(test::pageCounts(folder / "out.pdf").allAre(6));
    EXPECT_THAT(test::pageTexts(folder / "out.pdf"),
                ElementsAre("b-1", "b-2", "a-1", "c-1", "c-2", "c-3"));
    EXPECT_EQ(test::qpdfCheck(folder / "out.pdf").exitCode, 0);
}

TEST(Merge, copiesASingleSource) {
    const TemporaryFolder folder;
    merge({addPages(folder, "a", 2)}, folder / "out.pdf");
    EXPECT_THAT(test::pageTexts(folder / "out.pdf"), ElementsAre("a-1", "a-2"));
}

TEST(Merge, copiesASourceAsOftenAsItIsListed) {
    const TemporaryFolder folder;
    const std::string a = addPages(folder, "a", 2);
    const std::string b = addPages(folder, "b", 1);
    merge({a, b, a, a}, folder / "out.pdf");
    EXPECT_THAT(test::pageTexts(folder / "out.pdf"),
                ElementsAre("a-1", "a-2", "b-1", "a-1", "a-2", "a-1", "a-2"));
}

TEST(Merge, joinsDocumentsThatOnlyTheirOwnersMayChange) {
    const TemporaryFolder folder;
    const std::string plain = addPages(folder, "a", 2);
    std::vector<std::string> sources{plain};
    for (const std::string bits : {"40", "128", "256"}) {
        sources.push_back(folder / bits);
        const auto result =
            test::run({"qpdf", "--allow-weak-crypto", "--encrypt", "", "owner", bits,
                       bits == "40" ? "--modify=n" : "--modify=none", "--", plain, sources.back()});
        ASSERT_TRUE(result.succeeded()) << result.err;
    }
    merge(sources, folder / "out.pdf");
    EXPECT_THAT(test::pageTexts(folder / "out.pdf"),
                ElementsAre("a-1", "a-2", "a-1", "a-2", "a-1", "a-2", "a-1", "a-2"));
    EXPECT_EQ(test::qpdfCheck(folder / "out.pdf").exitCode, 0);
    EXPECT_EQ(test::run({"qpdf", "--is-encrypted", folder / "out.pdf"}).exitCode, 2);
}

TEST(Merge, ofNothingIsRefused) {
    const TemporaryFolder folder;
    expectFailure(failureOfMerging({}, folder / "out.pdf"), Kind::empty);
    EXPECT_THAT(folder.names(), ElementsAre());
    // Whatever the destination is: there is nothing to write.
    expectFailure(failureOfMerging({}, folder / "no folder/out.pdf"), Kind::empty);
}

TEST(Merge, leavesItsSourcesAlone) {
    const TemporaryFolder folder;
    const std::string a = addPages(folder, "a", 2);
    const std::string bytes = folder.read("a.pdf");
    struct stat before{};
    ASSERT_EQ(::stat(a.c_str(), &before), 0);
    merge({a}, folder / "out.pdf");
    struct stat after{};
    ASSERT_EQ(::stat(a.c_str(), &after), 0);
    EXPECT_EQ(folder.read("a.pdf"), bytes);
    EXPECT_EQ(after.st_mtim.tv_sec, before.st_mtim.tv_sec);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    EXPECT_EQ(after.st_ctim.tv_nsec, before.st_ctim.tv_nsec);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
}

TEST(Merge, worksWithSourcesThatMayOnlyBeRead) {
    const TemporaryFolder folder;
    const std::string a = addPages(folder, "a", 1);
    fs::permissions(a, fs::perms::owner_read);
    merge({a}, folder / "out.pdf");
    EXPECT_TRUE(test::pageCounts(folder / "out.pdf").allAre(1));
}

/// A merge of three sources of which the second is that, with a destination that exists.
void expectRefusalOfTheSecond(const TemporaryFolder& folder, const std::string& second, Kind kind,
                              const std::string& name) {
    const std::vector<std::string> sources{addPages(folder, "first", 2), second,
                                           addPages(folder, "third", 2)};
    const auto before = folder.names();
    expectFailure(failureOfMerging(sources, folder / "new.pdf"), kind, name);
    EXPECT_EQ(folder.names(), before);

    folder.write("old.pdf", "what was there before");
    const auto beforeOld = folder.names();
    expectFailure(failureOfMerging(sources, folder / "old.pdf"), kind, name);
    EXPECT_EQ(folder.read("old.pdf"), "what was there before");
    EXPECT_EQ(folder.names(), beforeOld);
}

TEST(Merge, writesNothingWhereASourceIsLocked) {
    const TemporaryFolder folder;
    expectRefusalOfTheSecond(folder, addLocked(folder, "locked", 2), Kind::locked, "locked.pdf");
}

TEST(Merge, writesNothingWhereASourceHasNoPages) {
    const TemporaryFolder folder;
    expectRefusalOfTheSecond(folder, addPages(folder, "none", 0), Kind::empty, "");
}

TEST(Merge, writesNothingWhereASourceCannotBeRead) {
    const TemporaryFolder folder;
    folder.write("text.pdf", "no PDF");
    expectRefusalOfTheSecond(folder, folder / "text.pdf", Kind::invalid, "text.pdf");
}

TEST(Merge, writesNothingWhereASourceIsMissing) {
    const TemporaryFolder folder;
    expectRefusalOfTheSecond(folder, folder / "missing.pdf", Kind::invalid, "missing.pdf");
}

// The damage is in an object that only copying meets.
TEST(Merge, writesNothingWhereAPageIsDamaged) {
    const TemporaryFolder folder;
    std::string bytes = test::simplePDF(3);
    const std::size_t at = bytes.find("9 0 obj\n");
    ASSERT_NE(at, std::string::npos);
    bytes.replace(at, 1, "8");
    folder.write("damaged.pdf", bytes);
    expectRefusalOfTheSecond(folder, folder / "damaged.pdf", Kind::invalid, "damaged.pdf");
}

TEST(Merge, reportsTheFirstSourceThatIsRefused) {
    const TemporaryFolder folder;
    folder.write("text.pdf", "no PDF");
    const std::string locked = addLocked(folder, "locked", 1);
    const std::string missing = folder / "missing.pdf";
    expectFailure(failureOfMerging({locked, folder / "text.pdf", missing}, folder / "out.pdf"),
                  Kind::locked, "locked.pdf");
    expectFailure(failureOfMerging({missing, locked}, folder / "out.pdf"), Kind::invalid,
                  "missing.pdf");
}

TEST(Merge, reportsASourceBeforeTheDestination) {
    const TemporaryFolder folder;
    expectFailure(failureOfMerging({folder / "missing.pdf"}, folder / "no folder/out.pdf"),
                  Kind::invalid, "missing.pdf");
}

TEST(Merge, reportsAMissingFolderAsTheSystemDoes) {
    const TemporaryFolder folder;
    expectSystemError(folder, {addPages(folder, "a", 1)}, folder / "no folder/out.pdf", ENOENT);
}

TEST(Merge, reportsAFolderInThePlaceOfTheDestinationAsTheSystemDoes) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "out.pdf");
    expectSystemError(folder, {addPages(folder, "a", 1)}, folder / "out.pdf", EISDIR);
}

TEST(Merge, reportsAFileInThePlaceOfTheFolderAsTheSystemDoes) {
    const TemporaryFolder folder;
    const std::string a = addPages(folder, "a", 1);
    expectSystemError(folder, {a}, a + "/out.pdf", ENOTDIR);
}

TEST(Merge, replacesAFileButKeepsItsMode) {
    const TemporaryFolder folder;
    folder.write("out.pdf", std::string(100'000, 'x'));
    fs::permissions(folder / "out.pdf", static_cast<fs::perms>(0640));
    merge({addPages(folder, "a", 1)}, folder / "out.pdf");
    EXPECT_TRUE(test::pageCounts(folder / "out.pdf").allAre(1));
    EXPECT_EQ(fs::status(folder / "out.pdf").permissions(), static_cast<fs::perms>(0640));
    EXPECT_THAT(folder.names(), ElementsAre("a.pdf", "out.pdf"));
}

TEST(Merge, replacesALinkNotWhatItLeadsTo) {
    const TemporaryFolder folder;
    folder.write("target.txt", "untouched");
    fs::create_symlink("target.txt", folder / "out.pdf");
    merge({addPages(folder, "a", 1)}, folder / "out.pdf");
    EXPECT_FALSE(fs::is_symlink(folder / "out.pdf"));
    EXPECT_TRUE(test::pageCounts(folder / "out.pdf").allAre(1));
    EXPECT_EQ(folder.read("target.txt"), "untouched");
}

TEST(Merge, worksWithAnyNames) {
    const TemporaryFolder folder;
    const std::vector<std::string> names{"with blanks.pdf", "\xC3\xBC\xFF.pdf", "-rf",
                                         "100%.PDF",        "new\nline",        "no suffix"};
    for (const std::string& name : names) {
        folder.write(name, test::simplePDF(1));
        merge({folder / name}, folder / "out of " + name);
        EXPECT_TRUE(test::pageCounts(folder / "out of " + name).allAre(1)) << name;
    }
}

TEST(Merge, isTheSameFileEachTime) {
    const TemporaryFolder folder;
    const std::string a = addPages(folder, "a", 5);
    merge({a, a}, folder / "1.pdf");
    merge({a, a}, folder / "2.pdf");
    EXPECT_EQ(folder.read("1.pdf"), folder.read("2.pdf"));
}

TEST(Merge, worksWithManyPagesThatShareWhatIsLong) {
    constexpr std::size_t kFirst = 11;
    constexpr std::size_t kPages = 5000;
    WrittenDocument file("", "", references(kFirst, kFirst + kPages));
    file.object(4, "[0 0 9 9]");
    for (const std::size_t resources : {std::size_t{5}, std::size_t{6}})
        file.object(resources, "<</XObject<<" + repeated("/Image 7 0 R ", 100'000) + ">>>>");
    file.object(7, "null");
    for (std::size_t i = 0; i < kPages; ++i) {
        file.object(kFirst + i,
                    "<</Type/Page/Parent 2 0 R/MediaBox 4 0 R/CropBox 4 0 R/Resources " +
                        reference(5 + i % 2) + ">>");
    }
    const TemporaryFolder folder;
    folder.write("a.pdf", file.finished());
    merge({folder / "a.pdf"}, folder / "out.pdf");
    EXPECT_TRUE(test::pageCounts(folder / "out.pdf").allAre(static_cast<int>(kPages)));
}

}  // namespace
}  // namespace quirebind::coretest
