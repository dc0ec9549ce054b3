// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The engine on the command line.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/QuirebindCore/CoreTestSupport.h"

namespace quirebind::coretest {
namespace {

using ::testing::HasSubstr;

test::RunResult mergePDFs(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), QUIREBIND_MERGE_PDFS);
    return test::run(arguments);
}

void expectComplaint(const test::RunResult& result, const std::string& complaint) {
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, complaint + "\n");
}

TEST(MergePDFs, saysNothingWhenItSucceeds) {
    const TemporaryFolder folder;
    const auto result =
        mergePDFs({folder / "out.pdf", addPages(folder, "a", 2), addPages(folder, "b", 1)});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(test::pageCounts(folder / "out.pdf").allAre(3));
}

TEST(MergePDFs, saysWhyItRefuses) {
    const TemporaryFolder folder;
    folder.write("text.pdf", "no PDF");
    const std::string a = addPages(folder, "a", 1);
    const std::string out = folder / "out.pdf";
    expectComplaint(mergePDFs({out, a, folder / "text.pdf"}),
                    "Could not read every page of text.pdf.");
    expectComplaint(mergePDFs({out, addLocked(folder, "locked", 1)}),
                    "locked.pdf is locked. Unlock it in Preview before adding it.");
    expectComplaint(mergePDFs({out}), "Add PDFs containing at least one page.");
    expectComplaint(mergePDFs({a, a}),
                    "Choose a different output file to preserve your original PDFs.");
    expectComplaint(mergePDFs({folder / "no folder/out.pdf", a}), "No such file or directory");
}

TEST(MergePDFs, sendsNoCommandsToTheTerminal) {
    const TemporaryFolder folder;
    folder.write("\x1b[2J\n\x7f.pdf", "no PDF");
    expectComplaint(mergePDFs({folder / "out.pdf", folder / "\x1b[2J\n\x7f.pdf"}),
                    "Could not read every page of ?[2J??.pdf.");
}

TEST(MergePDFs, tellsHowItIsUsed) {
    const auto result = mergePDFs({});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr("usage: merge-pdfs OUT IN..."));
}

}  // namespace
}  // namespace quirebind::coretest
