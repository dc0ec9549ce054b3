// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Damaged sources, as the users of the engine meet them.

#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/QuirebindCore/CoreTestSupport.h"

namespace quirebind::coretest {
namespace {

/// A page tree with those entries, and one page, which is nobody's kid unless they say so.
std::string documentOf(const std::string& tree, const std::string& end = "{{startxref}}\n%%EOF\n") {
    return test::fixturePDF(
        "{{header 1.7}}\n{{object 1 0}}\n<< /Type /Catalog /Pages 2 0 R >>\n"
        "endobj\n{{object 2 0}}\n<< /Type /Pages " +
        tree +
        " >>\nendobj\n{{object 3 0}}\n<< /Type /Page /Parent 2 0 R "
        "/MediaBox [0 0 200 300] >>\nendobj\n{{xref}}\n"
        "trailer\n<< /Size {{size}} /Root 1 0 R >>\n" +
        end);
}

const std::string kBroken = "startxref\n1\n%%EOF\n";

TEST(DamagedSource, isJoinedAmongOthers) {
    const TemporaryFolder folder;
    const std::string whole = test::simplePDF(3, {.label = "damaged"});
    folder.write("damaged.pdf", whole.substr(0, whole.find("\nxref\n") + 1));
    const std::string merged = folder / "merged.pdf";
    merge({addPages(folder, "a", 2), folder / "damaged.pdf", addPages(folder, "b", 1),
           folder / "damaged.pdf"},
          merged);
    EXPECT_EQ(test::qpdfCheck(merged).exitCode, 0);
    EXPECT_THAT(test::pageTexts(merged),
                ::testing::ElementsAre("a-1", "a-2", "damaged-1", "damaged-2", "damaged-3", "b-1",
                                       "damaged-1", "damaged-2", "damaged-3"));
}

TEST(DamagedSource, isInvalidWhereAPageIsLost) {
    const TemporaryFolder folder;
    folder.write("lost.pdf", documentOf("/Kids [3 0 R 4 0 R] /Count 2", ""));
    expectFailure(failureOfOpening(folder / "lost.pdf"), Kind::invalid, "lost.pdf");
}

// That a part of a page is lost is seen when it is copied.
TEST(DamagedSource, isInvalidWhereAPartOfAPageIsLost) {
    const TemporaryFolder folder;
    std::string bytes = test::simplePDF(2, {.label = "part"});
    const std::size_t font = bytes.find(" 0 obj", bytes.find("/Type /Font") - 12);
    ASSERT_NE(font, std::string::npos);
    bytes.replace(font, 6, "......");
    folder.write("part.pdf", bytes);
    const std::string merged = folder / "merged.pdf";
    expectFailure(failureOfMerging({addPages(folder, "a", 1), folder / "part.pdf"}, merged),
                  Kind::invalid, "part.pdf");
    EXPECT_FALSE(std::filesystem::exists(merged));
}

TEST(DamagedSource, isInvalidWhereNoPageIsLeft) {
    const TemporaryFolder folder;
    folder.write("none.pdf", documentOf("/Kids [] /Count 1"));
    expectFailure(failureOfOpening(folder / "none.pdf"), Kind::invalid, "none.pdf");
    folder.write("loop.pdf", documentOf("/Kids [2 0 R] /Count 1"));
    expectFailure(failureOfOpening(folder / "loop.pdf"), Kind::invalid, "loop.pdf");
    folder.write("both.pdf", documentOf("/Kids [] /Count 0", kBroken));
    expectFailure(failureOfOpening(folder / "both.pdf"), Kind::invalid, "both.pdf");
}

TEST(SoundSource, isEmptyWhereItHasNoPages) {
    const TemporaryFolder folder;
    folder.write("empty.pdf", documentOf("/Kids [] /Count 0"));
    expectFailure(failureOfOpening(folder / "empty.pdf"), Kind::empty);
}

}  // namespace
}  // namespace quirebind::coretest
