// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Of a tagged document only some pages are inserted: what belongs to the others stays behind.

#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/Structure/StructureTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// Three pages, objects 3, 7 and 9, of which the structure is the text's objects from 40 on. What
/// belongs to the second page only says SECOND.
std::string threePages(std::string_view structure) {
    std::string objects =
        replaced(kOnePage, "/Kids [3 0 R] /Count 1", "/Kids [3 0 R 7 0 R 9 0 R] /Count 3");
    objects = replaced(objects, "/Type /Catalog", "/Type /Catalog /StructTreeRoot 40 0 R");
    objects = replaced(objects, "BT /F1", "/P << /MCID 0 >> BDC BT /F1");
    objects = replaced(objects, "Tj ET", "Tj ET EMC");
    objects = replaced(objects, "/MediaBox", "/StructParents 0 /MediaBox");
    return document(objects + markedPage(7, "two", 1) + markedPage(9, "three", 2) +
                    std::string(structure));
}

/// A section on the first two pages and one on the last, in a document.
std::string sections() {
    return "{{object 40 0}}\n<< /Type /StructTreeRoot /K 41 0 R /ParentTree << /Nums [0 [44 0 R] 1 "
           "[45 0 R] 2 [46 0 R]] >> >>\nendobj\n" +
           element(41, "/S /Document /P 40 0 R /K [42 0 R 43 0 R] /T (SECOND too)") +
           element(42, "/S /Sect /P 41 0 R /K [44 0 R 45 0 R 47 0 R 48 0 R] /Alt (SECOND too)") +
           element(43, "/S /Sect /P 41 0 R /K 46 0 R /T (last)") +
           element(44, "/S /H1 /P 42 0 R /Pg 3 0 R /K 0 /T (first)") +
           element(45, "/S /P /P 42 0 R /Pg 7 0 R /K 0 /ActualText (SECOND) /Ref [44 0 R]") +
           element(46, "/S /P /P 43 0 R /K [<< /Type /MCR /MCID 0 /Pg 9 0 R >>] /Ref [45 0 R]") +
           element(47, "/S /Figure /P 42 0 R /Alt (SECOND)") +
           element(48, "/S /Figure /P 42 0 R /Pg 7 0 R");
}

TEST(PartialStructure, isThatOfThePagesThatAreThere) {
    const Bench bench;
    const std::string source = bench.fixture("source.pdf", threePages(sections()));
    const std::string both = insertPages(bench, source, {2, 0});
    expectSound(both, 2);
    EXPECT_EQ(structureOf(both),
              "Document\n  Sect\n    H1 \"first\" (block)\n      \"one\"\n  Sect \"last\"\n    P "
              "(block)\n      \"three\"\n");
    EXPECT_THAT(everyObject(both), Not(HasSubstr("SECOND")));
    EXPECT_THAT(everyObject(both), Not(HasSubstr("/Ref")));
    EXPECT_EQ(objectsWith(both, "/StructElem").size(), 5);

    const std::string second = insertPages(bench, source, {1});
    EXPECT_EQ(structureOf(second), "Document\n  Sect\n    P (block)\n      \"two\"\n    Figure\n");
    EXPECT_THAT(everyObject(second), Not(HasSubstr("(first)")));
    EXPECT_THAT(everyObject(second), HasSubstr("/ActualText (SECOND)"));
}

TEST(PartialStructure, ofAllPagesIsTheWhole) {
    const Bench bench;
    const std::string source = bench.fixture("source.pdf", threePages(sections()));
    EXPECT_EQ(structureOf(insertPages(bench, source, {2, 1, 0})), structureOf(source));
}

// The copy that is whole, and the one of a page that is inserted again.
TEST(PartialStructure, ofAPageInsertedTwiceIsThereTwice) {
    const Bench bench;
    const std::string source = bench.fixture("source.pdf", threePages(sections()));
    const std::string merged = insertPages(bench, source, {0, 1, 2, 0});
    expectSound(merged, 4);
    EXPECT_EQ(structureOf(merged),
              structureOf(source) + "Document\n  Sect\n    H1 \"first\" (block)\n      \"one\"\n");
}

TEST(PartialStructure, ofElementsThatStandInOneAnother) {
    const Bench bench;
    const std::string source = bench.fixture(
        "source.pdf",
        threePages(
            "{{object 40 0}}\n<< /Type /StructTreeRoot /K << /S /Document /K [<< /S /P /Pg 7 "
            "0 R /K 0 /T (SECOND) >> << /S /P /K [<< /S /Span /Pg 3 0 R /K 0 /T (kept) >>] "
            ">>] >> >>\nendobj\n"));
    const std::string merged = insertPages(bench, source, {0});
    EXPECT_EQ(structureOf(merged),
              "Document\n  P (block)\n    Span \"kept\" (inline)\n      \"one\"\n");
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("SECOND")));
}

TEST(PartialStructure, thatALinkLeadsToStaysBehindAllTheSame) {
    const Bench bench;
    const std::string source = bench.fixture(
        "source.pdf",
        replaced(
            threePages(sections() +
                       "{{object 50 0}}\n<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /A << /S "
                       "/GoTo /D [7 0 R /Fit] /SD [45 0 R /Fit] >> >>\nendobj\n"),
            "/MediaBox", "/Annots [50 0 R] /MediaBox"));
    const std::string merged = insertPages(bench, source, {0});
    expectSound(merged, 1);
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("SECOND")));
}

TEST(PartialStructure, ofEmptyCellsBetweenOthersStays) {
    const Bench bench;
    const std::string source = bench.fixture(
        "source.pdf",
        threePages("{{object 40 0}}\n<< /Type /StructTreeRoot /K 41 0 R >>\nendobj\n" +
                   element(41, "/S /TR /P 40 0 R /K [42 0 R 43 0 R]") +
                   element(42, "/S /TD /P 41 0 R") +
                   element(43, "/S /TD /P 41 0 R /Pg 3 0 R /K 0")));
    EXPECT_EQ(structureOf(insertPages(bench, source, {0})), structureOf(source));
}

}  // namespace
}  // namespace quirebind::pdftest
