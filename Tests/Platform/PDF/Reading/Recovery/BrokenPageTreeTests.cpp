// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Page trees (ISO 32000-2, 7.7.3) that are broken: what is left of them is merged where it is all
// of the document, and nothing where it is not.

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/PDF/PDFDocument.h"
#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::ElementsAre;

const std::string kNode = "<< /Type /Pages /Kids [3 0 R] /Count 1 >>";

/// A document whose page-tree root is that, with a second page (object 7) and more objects.
std::string withRoot(const std::string& root, const std::string& objects = "") {
    return replaced(onePageWith(pageObjects(7, 500, "two") + objects), kNode, root);
}

std::string withPages(const std::string& pages, const std::string& objects = "") {
    return replaced(withRoot("<< /Type /Pages /Kids [3 0 R 7 0 R] /Count 2 >>", objects),
                    "/Pages 2 0 R", "/Pages " + pages);
}

/// The same without any section to find the objects by.
std::string withoutTable(const std::string& text) {
    return text.substr(0, text.find("{{xref}}"));
}

/// Neither a catalog nor a tree, and no page says that it was ever in one.
std::string loosePages() {
    std::string text = onePageWith(pageObjects(7, 500, "two"));
    text = replaced(text, "<< /Type /Catalog /Pages 2 0 R >>", "null");
    text = replaced(text, kNode, "null");
    text = replaced(replaced(text, "/Parent 2 0 R", ""), "/Parent 2 0 R", "");
    return withoutTable(text);
}

INSTANTIATE_TEST_SUITE_P(
    BrokenPageTree, ReadableFile,
    ::testing::Values(
        Kind("thatLeadsBackIntoItself",
             withRoot("<< /Type /Pages /Kids [3 0 R 2 0 R 7 0 R] /Count 2 >>"), {200, 500},
             {"one", "two"}),
        Kind("whoseNodesLeadBack",
             withRoot("<< /Type /Pages /Kids [9 0 R 7 0 R] /Count 2 >>",
                      "{{object 9 0}}\n<< /Type /Pages /Parent 2 0 R /Kids [3 0 R 2 0 R 9 0 R] "
                      "/Count 1 >>\nendobj\n"),
             {200, 500}, {"one", "two"}),
        Kind("withKidsThatAreNoPages",
             withRoot("<< /Type /Pages /Kids [17 (x) 3 0 R /Page true 9 0 R 7 0 R] /Count 2 >>",
                      "{{object 9 0}}\n[1 2 3]\nendobj\n"),
             {200, 500}, {"one", "two"}),
        Kind("withKidsThatAreNoPagesAndNoCount",
             withRoot("<< /Type /Pages /Kids [17 3 0 R 7 0 R] >>"), {200, 500}, {"one", "two"}),
        Kind("whoseKidsAreOnePage", withRoot("<< /Type /Pages /Kids 3 0 R /Count 1 >>")),
        Kind("whoseKidsAreReferencesToReferences",
             withRoot("<< /Type /Pages /Kids [9 0 R 7 0 R] /Count 2 >>",
                      "{{object 9 0}}\n3 0 R\nendobj\n"),
             {200, 500}, {"one", "two"}),
        Kind("whoseCatalogNamesAPage", withPages("7 0 R"), {200, 500}, {"one", "two"}),
        Kind("whoseCatalogNamesTheOnlyPage",
             replaced(replaced(onePageWith(), "/Pages 2 0 R", "/Pages 3 0 R"), "/Parent 2 0 R ",
                      "")),
        Kind("whoseCatalogNamesANodeBelowTheRoot",
             withPages("9 0 R",
                       "{{object 9 0}}\n<< /Type /Pages /Parent 2 0 R /Kids [3 0 R] /Count 1 "
                       ">>\nendobj\n"),
             {200, 500}, {"one", "two"}),
        Kind("thatIsItsOwnParent",
             withRoot("<< /Type /Pages /Parent 2 0 R /Kids [3 0 R 7 0 R] /Count 2 >>"), {200, 500},
             {"one", "two"}),
        Kind("whoseCatalogNamesNone", replaced(withPages("2 0 R"), "/Pages 2 0 R", ""), {200, 500},
             {"one", "two"}),
        Kind("whoseCatalogNamesWhatIsNotThere", withPages("88 0 R"), {200, 500}, {"one", "two"}),
        Kind("whoseCatalogNamesTheFont", withPages("5 0 R"), {200, 500}, {"one", "two"}),
        Kind("whoseCatalogIsMissing",
             replaced(withPages("2 0 R"), "/Type /Catalog", "/Type /Outlines"), {200, 500},
             {"one", "two"}),
        Kind("whoseCatalogAndTableAreMissing",
             withoutTable(replaced(withPages("2 0 R"), "/Type /Catalog", "/Type /Outlines")),
             {200, 500}, {"one", "two"}),
        Kind("ofLoosePages", loosePages(), {200, 500}, {"one", "two"})),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    BrokenPageTree, RefusedFile,
    ::testing::Values(
        Kind("thatIsOnlyItself", withRoot("<< /Type /Pages /Kids [2 0 R] /Count 1 >>")),
        Kind("withoutKids", withRoot("<< /Type /Pages /Count 2 >>")),
        Kind("whoseKidsAreANumber", withRoot("<< /Type /Pages /Kids 17 /Count 2 >>")),
        Kind("whoseKidsAreAllNull", withRoot("<< /Type /Pages /Kids [null 88 0 R] /Count 2 >>")),
        Kind("thatIsAnEmptyDictionary", withRoot("<< >>")),
        Kind("withANodeWithoutKids",
             withRoot("<< /Type /Pages /Kids [3 0 R 9 0 R] /Count 2 >>",
                      "{{object 9 0}}\n<< /Type /Pages /Parent 2 0 R /Count 1 >>\nendobj\n")),
        Kind("withANodeWithoutKidsThatHasResources",
             withRoot("<< /Type /Pages /Kids [3 0 R 9 0 R] /Count 2 >>",
                      "{{object 9 0}}\n<< /Type /Pages /Parent 2 0 R /Count 1 "
                      "/Resources << >> >>\nendobj\n")),
        // The tree is lost, and nobody knows of how many pages these are the ones that are left.
        Kind("whosePagesAreLeft", withoutTable(replaced(onePageWith(), kNode, "null")))),
    nameOfKind);

TEST(PageTree, withoutPagesIsEmptyWhereItIsSound) {
    const Bench bench;
    for (const std::string root :
         {"<< /Type /Pages /Kids [] /Count 0 >>", "<< /Type /Pages /Kids [] >>",
          "<< /Type /Pages /Kids [null] /Count 0 >>", "<< /Type /Pages /Count 0 >>"}) {
        const auto document =
            PDFDocument::open(URL::file(bench.fixture("empty.pdf", withRoot(root))));
        ASSERT_TRUE(document) << root;
        EXPECT_EQ(document->pageCount(), 0U) << root;
    }
}

// Readers show such a page in US Letter size, and it shall stay so in whatever it is merged into.
TEST(Page, withoutAMediaBoxIsOfLetterSize) {
    const test::PageBox letter{.right = 612, .top = 792};
    const test::PageView view{.mediaBox = letter, .cropBox = letter};
    for (const std::string box : {"", "/MediaBox null", "/MediaBox [0 0 200]", "/MediaBox /Large",
                                  "/MediaBox [/a /b /c /d]", "/MediaBox 88 0 R"}) {
        const Bench bench;
        const std::string merged =
            bench.mergeFixture(replaced(onePageWith(), "/MediaBox [0 0 200 300]", box));
        expectSound(merged, 1);
        EXPECT_THAT(test::pagesByPoppler(merged), ElementsAre(view)) << box;
        EXPECT_THAT(test::pagesByMuPDF(merged), ElementsAre(view)) << box;
        EXPECT_THAT(test::pageTexts(merged), ElementsAre("one")) << box;
    }
}

TEST(Page, withAnUnusableMediaBoxInheritsOne) {
    const Bench bench;
    const std::string text =
        replaced(onePageWith(), "/MediaBox [0 0 200 300]", "/MediaBox [0 0 200]");
    const std::string merged = bench.mergeFixture(
        replaced(text, "/Kids [3 0 R]", "/Kids [3 0 R] /MediaBox [0 0 400 300]"));
    expectPages(merged, {400}, {"one"});
}

}  // namespace
}  // namespace quirebind::pdftest
