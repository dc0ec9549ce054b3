// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Page trees (ISO 32000-2, 7.7.3) of all shapes.

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

const std::string kTreeNode = "<< /Type /Pages /Kids [3 0 R] /Count 1 >>";

/// A document whose page-tree root is that, with a second page (object 7) and more objects.
std::string withRoot(const std::string& root, const std::string& objects = "") {
    return replaced(onePageWith(pageObjects(7, 500, "two") + objects), kTreeNode, root);
}

INSTANTIATE_TEST_SUITE_P(
    PageTree, ReadableFile,
    ::testing::Values(
        Kind("withTwoPages", withRoot("<< /Type /Pages /Kids [3 0 R 7 0 R] /Count 2 >>"),
             {200, 500}, {"one", "two"}),
        Kind("withIndirectKids",
             withRoot("<< /Type /Pages /Kids 9 0 R /Count 2 >>",
                      "{{object 9 0}}\n[3 0 R 7 0 R]\nendobj\n"),
             {200, 500}, {"one", "two"}),
        Kind("withIndirectCount",
             withRoot("<< /Type /Pages /Kids [3 0 R 7 0 R] /Count 9 0 R >>",
                      "{{object 9 0}}\n2\nendobj\n"),
             {200, 500}, {"one", "two"}),
        Kind("thatCountsTooMany", withRoot("<< /Type /Pages /Kids [3 0 R 7 0 R] /Count 9 >>"),
             {200, 500}, {"one", "two"}),
        Kind("thatCountsTooFew", withRoot("<< /Type /Pages /Kids [3 0 R 7 0 R] /Count 1 >>"),
             {200, 500}, {"one", "two"}),
        Kind("thatCountsNegatively", withRoot("<< /Type /Pages /Kids [3 0 R 7 0 R] /Count -2 >>"),
             {200, 500}, {"one", "two"}),
        Kind("withoutCount", withRoot("<< /Type /Pages /Kids [3 0 R 7 0 R] >>"), {200, 500},
             {"one", "two"}),
        Kind("withoutTypes",
             replaced(withRoot("<< /Kids [3 0 R 7 0 R] /Count 2 >>"), "/Type /Page /Parent",
                      "/Parent"),
             {200, 500}, {"one", "two"}),
        Kind("withTypesMixedUp", withRoot("<< /Type /Page /Kids [3 0 R 7 0 R] /Count 2 >>"),
             {200, 500}, {"one", "two"}),
        Kind("withKidsThatAreNull",
             withRoot("<< /Type /Pages /Kids [null 3 0 R 88 0 R null 7 0 R 9 0 R] /Count 2 >>",
                      "{{object 9 0}}\nnull\nendobj\n"),
             {200, 500}, {"one", "two"}),
        Kind("withAPageListedTwice",
             withRoot("<< /Type /Pages /Kids [3 0 R 7 0 R 3 0 R] /Count 3 >>"), {200, 500, 200},
             {"one", "two", "one"}),
        Kind("withANodeListedTwice",
             withRoot("<< /Type /Pages /Kids [9 0 R 9 0 R] /Count 4 >>",
                      "{{object 9 0}}\n<< /Type /Pages /Parent 2 0 R /Kids [3 0 R 7 0 R] "
                      "/Count 2 >>\nendobj\n"),
             {200, 500, 200, 500}, {"one", "two", "one", "two"}),
        Kind("withPagesAtSeveralLevels",
             withRoot("<< /Type /Pages /Kids [9 0 R 7 0 R] /Count 2 >>",
                      "{{object 9 0}}\n<< /Type /Pages /Parent 2 0 R /Kids [10 0 R 11 0 R] "
                      "/Count 1 >>\nendobj\n"
                      "{{object 10 0}}\n<< /Type /Pages /Parent 9 0 R /Kids [3 0 R] /Count 1 "
                      ">>\nendobj\n"
                      "{{object 11 0}}\n<< /Type /Pages /Parent 9 0 R /Kids [] /Count 0 "
                      ">>\nendobj\n"),
             {200, 500}, {"one", "two"}),
        Kind("withWrongParents",
             replaced(withRoot("<< /Type /Pages /Kids [3 0 R 7 0 R] /Count 2 >>"), "/Parent 2 0 R",
                      "/Parent 5 0 R"),
             {200, 500}, {"one", "two"}),
        Kind("withoutParents",
             replaced(withRoot("<< /Type /Pages /Kids [3 0 R 7 0 R] /Count 2 >>"), "/Parent 2 0 R ",
                      ""),
             {200, 500}, {"one", "two"}),
        Kind("whoseNodesContainOneAnother",
             withRoot("<< /Type /Pages /Kids [9 0 R] /Count 1 >>",
                      "{{object 9 0}}\n<< /Type /Pages /Kids [10 0 R] >>\nendobj\n"
                      "{{object 10 0}}\n<< /Type /Pages /Kids [3 0 R 9 0 R] >>\nendobj\n")),
        Kind("withADirectPage",
             withRoot("<< /Type /Pages /Kids [3 0 R << /Type /Page /MediaBox [0 0 500 300] "
                      "/Contents 8 0 R /Resources << /Font << /F1 5 0 R >> >> >>] /Count 2 >>"),
             {200, 500}, {"one", "two"}),
        Kind("withADirectNode",
             withRoot("<< /Type /Pages /Kids [<< /Type /Pages /Kids [3 0 R] /Count 1 >> 7 0 R] "
                      "/Count 2 >>"),
             {200, 500}, {"one", "two"}),
        Kind("thatIsMissing", replaced(onePageWith(), "/Pages 2 0 R", "")),
        Kind("thatIsDirect", replaced(onePageWith(), "/Pages 2 0 R", "/Pages " + kTreeNode))),
    nameOfKind);

/// Two pages, the first of which begins like that.
std::string withFirstPage(const std::string& beginning, const std::string& objects = "") {
    return replaced(withRoot("<< /Type /Pages /Kids [3 0 R 7 0 R] /Count 2 >>", objects),
                    "/Type /Page /Parent", beginning + " /Parent");
}

// What has content and no kids is a page, whatever else it says: some reader shows it.
INSTANTIATE_TEST_SUITE_P(
    PageLikeANode, ReadableFile,
    ::testing::Values(
        Kind("byItsKids", withFirstPage("/Type /Page /Kids []"), {200, 500}, {"one", "two"}),
        Kind("byItsIndirectKids", withFirstPage("/Type /Page /Kids 9 0 R", object(9, "[]")),
             {200, 500}, {"one", "two"}),
        Kind("byKidsThatAreNotThere", withFirstPage("/Type /Page /Kids 88 0 R /Count 1"),
             {200, 500}, {"one", "two"}),
        Kind("byItsType", withFirstPage("/Type /Pages"), {200, 500}, {"one", "two"}),
        Kind("byItsTypeAndNullKids", withFirstPage("/Type /Pages /Kids null"), {200, 500},
             {"one", "two"}),
        Kind("byItsKidsWithoutAType", withFirstPage("/Kids []"), {200, 500}, {"one", "two"}),
        Kind("byItsKidsAmongAnnotations", withFirstPage("/Type /Page /Kids [null] /Annots []"),
             {200, 500}, {"one", "two"}),
        Kind("thatIsOneByItsKids",
             withRoot("<< /Type /Pages /Kids [9 0 R 10 0 R] /Count 2 >>",
                      object(9,
                             "<< /Type /Page /Kids 11 0 R /Contents 4 0 R /MediaBox "
                             "[0 0 200 300] /Resources << /Font << /F1 5 0 R >> >> >>") +
                          object(10,
                                 "<< /Type /Page /Kids 12 0 R /Contents 4 0 R /MediaBox "
                                 "[0 0 200 300] /Resources << /Font << /F1 5 0 R >> >> >>") +
                          object(11, "[]") + object(12, "[7 0 R]")),
             {200, 500}, {"one", "two"}),
        Kind("amongEmptyNodesWithResources",
             withRoot("<< /Type /Pages /Kids [9 0 R 3 0 R 7 0 R] /Count 2 >>",
                      object(9,
                             "<< /Type /Pages /Parent 2 0 R /Kids [] /Count 0 "
                             "/Resources << >> /MediaBox [0 0 99 99] >>")),
             {200, 500}, {"one", "two"})),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    PageTree, RefusedFile,
    ::testing::Values(Kind("thatContainsItselfInThePlaceOfAPage",
                           withRoot("<< /Type /Pages /Kids [3 0 R 2 0 R] /Count 2 >>")),
                      Kind("withANumberForAPage",
                           withRoot("<< /Type /Pages /Kids [3 0 R 9 0 R] /Count 2 >>",
                                    "{{object 9 0}}\n42\nendobj\n"))),
    nameOfKind);

/// One page below so many nodes, each of which adds a key.
std::string chain(int depth) {
    constexpr int kFirstNode = 100;
    std::ostringstream nodes;
    for (int i = 0; i < depth; ++i) {
        const bool last = i + 1 == depth;
        nodes << "{{object " << kFirstNode + i << " 0}}\n<< /Type /Pages /Kids ["
              << (last ? 3 : kFirstNode + i + 1) << " 0 R] /Count 1 /Rotate " << i % 4 * 90
              << " >>\nendobj\n";
    }
    return replaced(onePageWith(nodes.str()), "/Kids [3 0 R]",
                    "/Kids [" + std::to_string(kFirstNode) + " 0 R]");
}

TEST(PageTree, mayBeAThousandNodesDeep) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(chain(1000));
    expectSound(merged, 1);
    // The nearest of all the nodes above the page decides.
    EXPECT_EQ(test::pagesByMuPDF(merged).at(0).rotate, 999 % 4 * 90);
    EXPECT_EQ(test::pageTexts(merged).at(0), "one");
}

}  // namespace
}  // namespace quirebind::pdftest
