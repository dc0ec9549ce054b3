// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Files that are too large to be read at once are read in pieces, which end anywhere.

#include <string>

#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"

namespace quirebind::pdftest {
namespace {

std::string unusedStream(int number, int size) {
    return "{{object " + std::to_string(number) + " 0}}\n<< /Length " + std::to_string(size) +
           " >>\n{{stream}}\n{{fill " + std::to_string(size) + " 78}}\n{{endstream}}\nendobj\n";
}

/// One page behind `size` bytes of a stream that nobody refers to, and far before the end. What
/// belongs together is far apart, and longer than what is looked at first.
std::string pageBehind(int size) {
    const std::string blanks(100, ' ');
    std::string text = onePageWith(unusedStream(91, 100000));
    text = replaced(text, "{{object 1 0}}", unusedStream(90, size) + "{{object 1 0}}");
    text = replaced(text, "/Contents 4 0 R", "/Contents 4" + blanks + "0 %" + blanks + "\nR");
    text = replaced(text, ">>\n{{stream}}\nBT",
                    "/Long (" + std::string(2000, 'x') + ") >>" + blanks + "\n{{stream}}\nBT");
    return replaced(text, "{{object 5 0}}\n", "{{object 5 0}}\n" + blanks);
}

TEST(LargeFile, isReadAlikeWhereverItsPiecesEnd) {
    const Bench bench;
    const std::string expected =
        Bench::read(bench.merge({bench.fixture("small.pdf", pageBehind(1))}, "small-merged.pdf"));
    // The page's objects lie across every place where a piece of any size may end.
    constexpr int kPiece = 16384;
    constexpr int kObjects = 3500;
    for (int size = 17 * kPiece - kObjects; size < 17 * kPiece; size += 17) {
        const std::string merged = bench.merge({bench.fixture("large.pdf", pageBehind(size))});
        ASSERT_EQ(Bench::read(merged), expected) << size;
    }
}

TEST(LargeFile, keepsItsPageWholeInTheEyesOfOthers) {
    const Bench bench;
    expectPages(bench.mergeFixture(pageBehind(1000000)), {200}, {"one"});
}

}  // namespace
}  // namespace quirebind::pdftest
