// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Platform/Files/AtomicWrite.h"
#include "Tests/Platform/Files/AtomicWriteSupport.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_literals;

TEST(AtomicWrite, createsAFile) {
    const TemporaryFolder folder;
    EXPECT_EQ(errorOfWriting("new\0bytes"s, folder / "out.pdf"), 0);
    EXPECT_EQ(folder.read("out.pdf"), "new\0bytes"s);
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
}

TEST(AtomicWrite, replacesAFileOfAnotherSize) {
    const TemporaryFolder folder;
    folder.write("out.pdf", "old bytes, more of them");
    EXPECT_EQ(errorOfWriting("new", folder / "out.pdf"), 0);
    EXPECT_EQ(folder.read("out.pdf"), "new");
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
}

TEST(AtomicWrite, writesNoBytesToo) {
    const TemporaryFolder folder;
    folder.write("out.pdf", "old");
    writeAtomically({}, URL::file(folder / "out.pdf"));
    EXPECT_EQ(folder.read("out.pdf"), "");
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
}

TEST(AtomicWrite, writesMoreThanOneCallTakes) {
    const TemporaryFolder folder;
    std::string bytes;
    for (int i = 0; bytes.size() < 100'000; ++i) bytes += std::to_string(i);
    FaultyFileSystem files;
    files.limitTransfers(4093);
    EXPECT_EQ(errorOfWriting(bytes, folder / "out.pdf", files), 0);
    EXPECT_EQ(folder.read("out.pdf"), bytes);
    EXPECT_GT(files.count(FileCall::write), 20U);
}

TEST(AtomicWrite, isNotStoppedBySignals) {
    const TemporaryFolder folder;
    folder.write("out.pdf", "old");
    FaultyFileSystem files;
    files.interruptEveryCall();
    files.limitTransfers(4);
    EXPECT_EQ(errorOfWriting("all the new bytes", folder / "out.pdf", files), 0);
    EXPECT_EQ(folder.read("out.pdf"), "all the new bytes");
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
    EXPECT_EQ(files.openFiles(), 0U);
}

TEST(AtomicWrite, failsRatherThanTryForEverWhereNothingIsWritten) {
    const TemporaryFolder folder;
    folder.write("out.pdf", "old");
    FaultyFileSystem files;
    files.limitTransfers(0);
    EXPECT_EQ(errorOfWriting("new", folder / "out.pdf", files), EIO);
    EXPECT_EQ(folder.read("out.pdf"), "old");
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
}

TEST(AtomicWrite, keepsThePermissionsOfTheFileThatItReplaces) {
    for (const mode_t mode : {0640U, 0600U, 0755U, 0444U, 0000U}) {
        const TemporaryFolder folder;
        folder.write("out.pdf", "old");
        ASSERT_EQ(::chmod((folder / "out.pdf").c_str(), mode), 0);
        EXPECT_EQ(errorOfWriting("new", folder / "out.pdf"), 0);
        EXPECT_EQ(permissionsOf(folder / "out.pdf"), mode);
    }
}

TEST(AtomicWrite, doesNotKeepWhatMakesAProgramRunAsItsOwner) {
    const TemporaryFolder folder;
    folder.write("out.pdf", "old");
    ASSERT_EQ(::chmod((folder / "out.pdf").c_str(), 07755), 0);
    EXPECT_EQ(errorOfWriting("new", folder / "out.pdf"), 0);
    EXPECT_EQ(permissionsOf(folder / "out.pdf"), 0755U);
}

/// Writes a new file that everybody may read in the end, and watches that nobody may before.
void expectHiddenUntilTheEnd(FaultyFileSystem& files) {
    const TemporaryFolder folder;
    files.pretendCreationMask(0);
    files.onEachCall([&](FileCall) {
        if (files.count(FileCall::setMode) > 0) return;
        for (const std::string& name : folder.names()) {
            EXPECT_EQ(permissionsOf(folder / name), 0600U) << name;
        }
    });
    EXPECT_EQ(errorOfWriting("new", folder / "out.pdf", files), 0);
    EXPECT_EQ(permissionsOf(folder / "out.pdf"), 0666U);
}

TEST(AtomicWrite, hidesTheBytesFromOthersUntilTheyMaySeeThem) {
    FaultyFileSystem complete;
    expectHiddenUntilTheEnd(complete);
    FaultyFileSystem withoutUnnamedFiles;
    withoutUnnamedFiles.fail(FileCall::openUnnamed, EOPNOTSUPP);
    expectHiddenUntilTheEnd(withoutUnnamedFiles);
}

TEST(AtomicWrite, replacesASymbolicLinkAndNotItsTarget) {
    const TemporaryFolder folder;
    folder.write("target.pdf", "old");
    ASSERT_EQ(::chmod((folder / "target.pdf").c_str(), 0600), 0);
    fs::create_symlink("target.pdf", folder / "out.pdf");
    FaultyFileSystem files;
    files.pretendCreationMask(0022);
    EXPECT_EQ(errorOfWriting("new", folder / "out.pdf", files), 0);
    EXPECT_EQ(folder.read("target.pdf"), "old");
    EXPECT_EQ(folder.read("out.pdf"), "new");
    EXPECT_FALSE(fs::is_symlink(folder / "out.pdf"));
    EXPECT_EQ(permissionsOf(folder / "out.pdf"), 0644U);
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf", "target.pdf"));
}

TEST(AtomicWrite, replacesADanglingSymbolicLink) {
    const TemporaryFolder folder;
    fs::create_symlink("missing.pdf", folder / "out.pdf");
    EXPECT_EQ(errorOfWriting("new", folder / "out.pdf"), 0);
    EXPECT_EQ(folder.read("out.pdf"), "new");
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
}

TEST(AtomicWrite, replacesASymbolicLinkToAFolder) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "inside");
    fs::create_symlink("inside", folder / "out.pdf");
    EXPECT_EQ(errorOfWriting("new", folder / "out.pdf"), 0);
    EXPECT_EQ(folder.read("out.pdf"), "new");
    EXPECT_TRUE(fs::is_empty(folder / "inside"));
}

TEST(AtomicWrite, leavesOtherHardLinksWhole) {
    const TemporaryFolder folder;
    folder.write("source.pdf", "old");
    fs::create_hard_link(folder / "source.pdf", folder / "out.pdf");
    EXPECT_EQ(errorOfWriting("new", folder / "out.pdf"), 0);
    EXPECT_EQ(folder.read("source.pdf"), "old");
    EXPECT_EQ(folder.read("out.pdf"), "new");
}

TEST(AtomicWrite, followsLinksInTheFoldersPath) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "deep/inside");
    fs::create_directory_symlink("deep/inside", folder / "link");
    EXPECT_EQ(errorOfWriting("1", folder / "link/one.pdf"), 0);
    // ".." of what the link leads to, as the system understands it.
    EXPECT_EQ(errorOfWriting("2", folder / "link/../two.pdf"), 0);
    EXPECT_EQ(folder.read("deep/inside/one.pdf"), "1");
    EXPECT_EQ(folder.read("deep/two.pdf"), "2");
}

void expectAnyNameWorks(FaultyFileSystem& files) {
    const TemporaryFolder folder;
    const std::string longest = std::string(251, 'n') + ".pdf";
    for (const std::string& name : {longest, "caf\xE9 \xFF\xFE.pdf"s, "with blank"s, "a\nb"s,
                                    "%20"s, "-rf"s, "...pdf"s, ".hidden"s}) {
        EXPECT_EQ(errorOfWriting(name, folder / name, files), 0) << name;
        EXPECT_EQ(folder.read(name), name);
    }
    EXPECT_EQ(folder.names().size(), 8U);
}

TEST(AtomicWrite, writesToAnyNameThatTheFileSystemAllows) {
    FaultyFileSystem complete;
    expectAnyNameWorks(complete);
    FaultyFileSystem withoutUnnamedFiles;
    withoutUnnamedFiles.fail(FileCall::openUnnamed, EOPNOTSUPP);
    expectAnyNameWorks(withoutUnnamedFiles);
}

TEST(AtomicWrite, refusesANameThatIsTooLong) {
    const TemporaryFolder folder;
    EXPECT_EQ(errorOfWriting("new", folder / std::string(256, 'n')), ENAMETOOLONG);
    EXPECT_EQ(errorOfWriting("new", folder / std::string(5000, 'n') + "/x"), ENAMETOOLONG);
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(AtomicWrite, refusesAFolderBeforeItWritesAnything) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "out.pdf");
    for (const std::string_view path :
         {"out.pdf", "out.pdf/", "out.pdf/.", "out.pdf/..", "new/", ".", "..", "./"}) {
        FaultyFileSystem files;
        EXPECT_EQ(errorOfWriting("new", folder / path, files), EISDIR) << path;
        EXPECT_EQ(files.count(FileCall::write), 0U);
    }
    for (const std::string path : {"/", "//", ".", "..", "x/"}) {
        EXPECT_EQ(errorOfWriting("new", path), EISDIR) << path;
    }
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
    EXPECT_TRUE(fs::is_empty(folder / "out.pdf"));
}

TEST(AtomicWrite, refusesAMissingFolder) {
    const TemporaryFolder folder;
    EXPECT_EQ(errorOfWriting("new", folder / "missing/out.pdf"), ENOENT);
    EXPECT_EQ(errorOfWriting("new", ""), ENOENT);
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(AtomicWrite, refusesAFileInThePlaceOfTheFolder) {
    const TemporaryFolder folder;
    folder.write("file", "old");
    EXPECT_EQ(errorOfWriting("new", folder / "file/out.pdf"), ENOTDIR);
    EXPECT_EQ(folder.read("file"), "old");
}

TEST(AtomicWrite, refusesAZeroByteRatherThanWriteElsewhere) {
    const TemporaryFolder folder;
    folder.write("out", "old");
    EXPECT_EQ(errorOfWriting("new", folder / "out\0.pdf"s), EINVAL);
    EXPECT_EQ(errorOfWriting("new", folder / "o\0ut/x"s), EINVAL);
    EXPECT_EQ(folder.read("out"), "old");
    EXPECT_THAT(folder.names(), ElementsAre("out"));
}

TEST(AtomicWrite, refusesWhatIsNoFile) {
    const TemporaryFolder folder;
    for (const std::string& text : {"https://example.org/out.pdf"s, ""s, folder / "out.pdf"}) {
        try {
            writeAtomically({}, URL::parse(text));
            ADD_FAILURE() << text;
        } catch (const std::system_error& error) {
            EXPECT_EQ(error.code(), std::errc::operation_not_supported) << text;
        }
    }
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(AtomicWrite, leavesAPipeWhatItIs) {
    const TemporaryFolder folder;
    const std::string pipe = folder / "out.pdf";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    FaultyFileSystem files;
    EXPECT_EQ(errorOfWriting("new", pipe, files), EOPNOTSUPP);
    EXPECT_EQ(files.count(FileCall::write), 0U);
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
}

TEST(AtomicWrite, refusesMoreThanTheFileSizeLimitBeforeItWritesAnything) {
    const TemporaryFolder folder;
    folder.write("out.pdf", "old");
    FaultyFileSystem files;
    files.pretendFileSizeLimit(5);
    EXPECT_EQ(errorOfWriting("123456", folder / "out.pdf", files), EFBIG);
    EXPECT_EQ(files.count(FileCall::write), 0U);
    EXPECT_EQ(folder.read("out.pdf"), "old");
    EXPECT_EQ(errorOfWriting("12345", folder / "out.pdf", files), 0);
    EXPECT_EQ(folder.read("out.pdf"), "12345");
}

TEST(AtomicWrite, showsNoNewNameWhileItWrites) {
    const TemporaryFolder folder;
    if (!hasUnnamedFiles(folder.path())) {
        GTEST_SKIP() << "the file system of " << folder.path() << " has no files without a name";
    }
    folder.write("out.pdf", "old");
    FaultyFileSystem files;
    files.limitTransfers(2);
    std::size_t looks = 0;
    files.onEachCall([&](FileCall) {
        if (files.count(FileCall::linkUnnamed) > 0) return;
        EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
        ++looks;
    });
    EXPECT_EQ(errorOfWriting("many new bytes", folder / "out.pdf", files), 0);
    EXPECT_GT(looks, files.count(FileCall::write));
    EXPECT_EQ(files.count(FileCall::linkUnnamed), 1U);
}

TEST(AtomicWrite, neverGivesANewFileAnyNameButItsOwn) {
    const TemporaryFolder folder;
    if (!hasUnnamedFiles(folder.path())) {
        GTEST_SKIP() << "the file system of " << folder.path() << " has no files without a name";
    }
    FaultyFileSystem files;
    bool hasAppeared = false;
    files.onEachCall([&](FileCall) {
        if (!hasAppeared && folder.names().empty()) return;
        hasAppeared = true;
        EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
        EXPECT_EQ(folder.read("out.pdf"), "new bytes");
    });
    EXPECT_EQ(errorOfWriting("new bytes", folder / "out.pdf", files), 0);
    EXPECT_TRUE(hasAppeared);
}

}  // namespace
}  // namespace quirebind
