// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Inheritable page attributes (ISO 32000-2, 7.7.3.4): a page takes them along when it is copied.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using test::PageView;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

/// A page (object 3) below a node (9) below the root (2), each with entries of its own.
std::string threeLevels(const std::string& root, const std::string& node, const std::string& page,
                        const std::string& objects = "") {
    const std::string text = replaced(
        onePageWith("{{object 9 0}}\n<< /Type /Pages /Parent 2 0 R /Kids [3 0 R] /Count 1 " + node +
                    " >>\nendobj\n" + objects),
        "/Kids [3 0 R] /Count 1", "/Kids [9 0 R] /Count 1 " + root);
    const std::size_t begin = text.find("<< /Type /Page /Parent");
    const std::size_t end = text.find("endobj", begin);
    return replaced(text, text.substr(begin, end - begin),
                    "<< /Type /Page /Parent 9 0 R /Contents 4 0 R " + page + " >>\n");
}

const std::string kResources = "/Resources << /Font << /F1 5 0 R >> >>";

/// Expects that the page is so in the fixture, by all readers, and that it is after a merge.
void expectView(const std::string& text, const PageView& view) {
    const Bench bench;
    const std::string source = bench.fixture("source.pdf", text);
    EXPECT_THAT(test::pagesByPoppler(source), ElementsAre(view));
    EXPECT_THAT(test::pagesByMuPDF(source), ElementsAre(view));
    const std::string path = bench.merge({source});
    expectSound(path, 1);
    EXPECT_THAT(test::pagesByPoppler(path), ElementsAre(view));
    EXPECT_THAT(test::pagesByMuPDF(path), ElementsAre(view));
    EXPECT_THAT(test::pageTexts(path), ElementsAre("one"));
}

const PageView kView{.mediaBox = {.right = 200, .top = 300},
                     .cropBox = {.left = 10, .bottom = 10, .right = 190, .top = 290},
                     .rotate = 90};

TEST(Inheritance, comesFromTheRoot) {
    const Bench bench;
    expectView(
        (threeLevels("/MediaBox [0 0 200 300] /CropBox [10 10 190 290] /Rotate 90 " + kResources,
                     "", "")),
        kView);
}

TEST(Inheritance, comesFromANodeBetween) {
    const Bench bench;
    expectView((threeLevels("",
                            "/MediaBox [0 0 200 300] /CropBox [10 10 190 290] "
                            "/Rotate 90 " +
                                kResources,
                            "")),
               kView);
}

TEST(Inheritance, comesFromSeveralLevelsAtOnce) {
    const Bench bench;
    expectView(
        (threeLevels("/MediaBox [0 0 200 300] /Rotate 90", "/CropBox [10 10 190 290]", kResources)),
        kView);
}

TEST(Inheritance, losesToTheNearerNode) {
    const Bench bench;
    expectView(
        (threeLevels("/MediaBox [0 0 50 50] /CropBox [1 1 2 2] /Rotate 180 "
                     "/Resources << /Font << >> >>",
                     "/MediaBox [0 0 200 300] /CropBox [10 10 190 290] /Rotate 90 " + kResources,
                     "")),
        kView);
}

TEST(Inheritance, losesToThePagesOwnValues) {
    const Bench bench;
    expectView(
        (threeLevels("/MediaBox [0 0 50 50] /CropBox [1 1 2 2] /Rotate 180 "
                     "/Resources << /Font << >> >>",
                     "",
                     "/MediaBox [0 0 200 300] /CropBox [10 10 190 290] /Rotate 90 " + kResources)),
        kView);
}

TEST(Inheritance, losesToThePagesOwnZero) {
    const Bench bench;
    PageView upright = kView;
    upright.rotate = 0;
    expectView(
        (threeLevels("/MediaBox [0 0 200 300] /CropBox [10 10 190 290] /Rotate 90 " + kResources,
                     "", "/Rotate 0")),
        upright);
}

// Null is as good as absent (ISO 32000-2, 7.3.9).
TEST(Inheritance, winsOverNullOnThePage) {
    const Bench bench;
    expectView(
        (threeLevels("/MediaBox [0 0 200 300] /CropBox [10 10 190 290] /Rotate 90 " + kResources,
                     "", "/MediaBox null /CropBox null /Rotate null /Resources null")),
        kView);
}

TEST(Inheritance, winsOverReferencesToNothingOnThePage) {
    const Bench bench;
    expectView(
        (threeLevels("/MediaBox [0 0 200 300] /CropBox [10 10 190 290] /Rotate 90 " + kResources,
                     "", "/MediaBox 77 0 R /CropBox 77 0 R /Rotate 77 0 R /Resources 77 0 R")),
        kView);
}

TEST(Inheritance, winsOverReferencesToNullOnThePage) {
    const Bench bench;
    expectView(
        (threeLevels("/MediaBox [0 0 200 300] /CropBox [10 10 190 290] /Rotate 90 " + kResources,
                     "", "/MediaBox 8 0 R /CropBox 8 0 R /Rotate 8 0 R /Resources 8 0 R",
                     "{{object 8 0}}\nnull\nendobj\n")),
        kView);
}

TEST(Inheritance, winsOverNullAtANodeBetween) {
    const Bench bench;
    expectView(
        (threeLevels("/MediaBox [0 0 200 300] /CropBox [10 10 190 290] /Rotate 90 " + kResources,
                     "/MediaBox null /CropBox null /Rotate null /Resources null", "")),
        kView);
}

TEST(Inheritance, winsOverReferencesToNothingAtANodeBetween) {
    const Bench bench;
    expectView(
        (threeLevels("/MediaBox [0 0 200 300] /CropBox [10 10 190 290] /Rotate 90 " + kResources,
                     "/MediaBox 77 0 R /CropBox 77 0 R /Rotate 77 0 R /Resources 77 0 R", "")),
        kView);
}

TEST(Inheritance, mayBeIndirect) {
    const Bench bench;
    expectView(
        (threeLevels("/MediaBox 10 0 R /CropBox 11 0 R /Rotate 12 0 R /Resources 13 0 R", "", "",
                     "{{object 10 0}}\n[0 0 200 300]\nendobj\n"
                     "{{object 11 0}}\n[10 10 190 290]\nendobj\n{{object 12 0}}\n90\nendobj\n"
                     "{{object 13 0}}\n<< /Font 14 0 R >>\nendobj\n"
                     "{{object 14 0}}\n<< /F1 5 0 R >>\nendobj\n")),
        kView);
}

TEST(Inheritance, mayBeSpeltWithEscapes) {
    const Bench bench;
    expectView((threeLevels("/Medi#61Box [0 0 200 300] /Cr#6fpBox [10 10 190 290] /R#6ftate 90 " +
                                kResources,
                            "", "/Med#69aBox null")),
               kView);
}

TEST(Inheritance, doesNotReachKeysThatAreNotInheritable) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(threeLevels(
        "/MediaBox [0 0 200 300] /TrimBox [20 20 30 30] /UserUnit 2 /Secret (root) " + kResources,
        "", ""));
    expectSound(merged, 1);
    const std::string page = test::pageDictionaries(merged).at(0);
    for (const char* const key : {"/TrimBox", "/UserUnit", "/Secret"}) {
        EXPECT_THAT(page, Not(HasSubstr(key)));
    }
}

// Whatever a page has besides stays on it.
TEST(Page, keepsItsOtherEntries) {
    const Bench bench;
    const std::string entries =
        "/TrimBox [20 20 180 280] /BleedBox [15 15 185 285] /ArtBox [30 30 170 270] /UserUnit 2.5 "
        "/Group << /S /Transparency /CS /DeviceRGB >> /Tabs /S /Dur 3 /Custom#20Key (kept) "
        "/LastModified (D:20200101) /Metadata 8 0 R";
    const std::string merged = bench.mergeFixture(
        threeLevels("", "", "/MediaBox [0 0 200 300] " + kResources + " " + entries,
                    "{{object 8 0}}\n<< /Type /Metadata /Subtype /XML /Length {{length}} >>\n"
                    "{{stream}}\n<x/>\n{{endstream}}\nendobj\n"));
    expectSound(merged, 1);
    const std::string page = test::pageDictionaries(merged).at(0);
    for (const char* const entry :
         {"/TrimBox [ 20 20 180 280 ]", "/BleedBox [ 15 15 185 285 ]", "/ArtBox [ 30 30 170 270 ]",
          "/UserUnit 2.5", "/Group << /CS /DeviceRGB /S /Transparency >>", "/Tabs /S", "/Dur 3",
          "/Custom#20Key (kept)", "/LastModified (D:20200101)", "/Metadata "}) {
        EXPECT_THAT(page, HasSubstr(entry));
    }
}

// Written out on each page, the resources of the root would make this file 100 times as large.
TEST(Inheritance, doesNotMultiplyLargeValues) {
    const Bench bench;
    std::string kids;
    std::string pages;
    std::vector<double> widths;
    std::vector<std::string> texts;
    for (int i = 0; i < 100; ++i) {
        const std::string text = "p" + std::to_string(i);
        kids += std::to_string(100 + 2 * i) + " 0 R ";
        pages += replaced(pageObjects(100 + 2 * i, 300 + i, text), kResources, "");
        widths.push_back(300 + i);
        texts.push_back(text);
    }
    const std::string large = "/Resources << /Font << /F1 5 0 R >> /Large (" +
                              std::string(20000, 'x') + ") /Two [5 0 R] >>";
    const std::string source =
        bench.fixture("a.pdf", replaced(onePageWith(pages), "/Kids [3 0 R] /Count 1",
                                        "/Kids [" + kids + "] /Count 100 " + large));
    const std::string merged = bench.merge({source});
    expectPages(merged, widths, texts);
    EXPECT_LT(Bench::read(merged).size(), Bench::read(source).size() + 10000);
}

TEST(Inheritance, ofWhatThePageOverridesBringsNothingAlong) {
    const Bench bench;
    const std::string unused =
        "/Resources << /XObject << /Unused 8 0 R >> /Long (" + std::string(100, 'x') + ") >>";
    const std::string merged = bench.mergeFixture(
        threeLevels("/MediaBox [0 0 200 300] " + unused, "", kResources,
                    "{{object 8 0}}\n<< /Type /XObject /Unused true >>\nendobj\n"));
    expectSound(merged, 1);
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("Unused")));
}

}  // namespace
}  // namespace quirebind::pdftest
