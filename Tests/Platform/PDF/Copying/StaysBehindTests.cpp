// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// What belongs to a document as a whole does not come along with its pages, by whatever way a page
// refers to it.

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// A page with that entry; further objects; and an outline, metadata and an information dictionary
/// at the catalog, all of which carry the word LEFT.
std::string wholeDocument(const std::string& entry, const std::string& objects = "") {
    std::string text = replaced(onePageWith(R"(
{{object 30 0}}
<< /Type /Outlines /First 31 0 R /Last 31 0 R /Count 1 /LEFT 1 >>
endobj
{{object 31 0}}
<< /Title (LEFT) /Parent 30 0 R /Dest [3 0 R /Fit] >>
endobj
{{object 32 0}}
<< /Type /Metadata /Subtype /XML /Length {{length}} /LEFT 1 >>
{{stream}}
<LEFT/>
{{endstream}}
endobj
{{object 33 0}}
<< /Title (LEFT) /Author (LEFT) >>
endobj
{{object 34 0}}
(LEFT: nobody refers to this)
endobj
)" + objects),
                                "/Type /Catalog",
                                "/Type /Catalog /Outlines 30 0 R /Metadata 32 0 R /PageMode "
                                "/UseOutlines /OpenAction [3 0 R /Fit] /LEFT 1");
    text = replaced(text, "/Root 1 0 R", "/Root 1 0 R /Info 33 0 R");
    return replaced(text, "/MediaBox", entry + " /MediaBox");
}

/// Merges the document and expects its page, and nothing of what is to stay behind.
std::string expectNothingLeft(const std::string& text) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(text);
    expectPages(merged, {200}, {"one"});
    std::string objects = everyObject(merged);
    EXPECT_THAT(objects, Not(HasSubstr("LEFT")));
    EXPECT_THAT(objects, Not(HasSubstr("/Outlines")));
    return objects;
}

TEST(StaysBehind, whatNoPageRefersTo) {
    expectNothingLeft(wholeDocument(""));
}

TEST(StaysBehind, theTreeThatAnAnnotationsPageIsIn) {
    const std::string objects = expectNothingLeft(wholeDocument(
        "/Annots [40 0 R]",
        "{{object 40 0}}\n<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /P 3 0 R /Contents (note) "
        ">>\nendobj\n"));
    EXPECT_THAT(objects, HasSubstr("note"));
}

TEST(StaysBehind, theTreeThatATemplatesParentIs) {
    const std::string objects = expectNothingLeft(replaced(
        wholeDocument("/Template 40 0 R",
                      "{{object 40 0}}\n<< /Type /Template /Parent 2 0 R /MediaBox [0 0 77 77] "
                      ">>\nendobj\n" +
                          pageObjects(42, 500, "two", "/LEFT 1")),
        "/Kids [3 0 R]", "/LEFT 1 /Kids [3 0 R]"));
    EXPECT_THAT(objects, HasSubstr("/MediaBox [ 0 0 77 77 ]"));
}

// Some older revision's tree, say, which the document has no longer.
TEST(StaysBehind, aTreeOutsideTheDocumentsOwn) {
    for (const std::string kids : {"/Kids", "/K#69ds"}) {
        const std::string objects = expectNothingLeft(wholeDocument(
            "/Template 40 0 R",
            "{{object 40 0}}\n<< /Type /Template /Parent 41 0 R /MediaBox [0 0 77 77] >>\nendobj\n"
            "{{object 41 0}}\n<< /Type /Pages /LEFT 1 " +
                kids + " [40 0 R 42 0 R] /Count 2 >>\nendobj\n" +
                pageObjects(42, 500, "two", "/LEFT 1")));
        EXPECT_THAT(objects, HasSubstr("/MediaBox [ 0 0 77 77 ]")) << kids;
    }
}

TEST(StaysBehind, theCatalogThatAnActionRefersTo) {
    const std::string objects = expectNothingLeft(wholeDocument(
        "/Annots [40 0 R]",
        "{{object 40 0}}\n<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /A << /S /GoTo /D [3 0 R "
        "/Fit] /Base 1 0 R >> >>\nendobj\n"));
    EXPECT_THAT(objects, HasSubstr("/GoTo"));
}

TEST(StaysBehind, theRootOfTheStructureThatAnElementBelongsTo) {
    const std::string objects = expectNothingLeft(replaced(
        wholeDocument("/Element 41 0 R",
                      "{{object 40 0}}\n<< /Type /StructTreeRoot /K 41 0 R /LEFT 1 >>\nendobj\n"
                      "{{object 41 0}}\n<< /Type /StructElem /S /P /P 40 0 R /Alt (alternative) "
                      ">>\nendobj\n"),
        "/Type /Catalog", "/Type /Catalog /StructTreeRoot 40 0 R"));
    // The element itself comes along, below the output's own root.
    EXPECT_THAT(objects, HasSubstr("alternative"));
    EXPECT_THAT(objects, HasSubstr("/Type /StructTreeRoot"));
    EXPECT_EQ(objects.find("/StructElem"), objects.rfind("/StructElem"));
}

TEST(StaysBehind, theElementThatIsInNoStructure) {
    const std::string objects = expectNothingLeft(replaced(
        wholeDocument(
            "/Annots [40 0 R]",
            "{{object 40 0}}\n<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /A << /S /GoTo "
            "/D [3 0 R /Fit] /SD [41 0 R /Fit] >> >>\nendobj\n{{object 41 0}}\n<< /Type "
            "/StructElem /S /P /LEFT 1 >>\nendobj\n"),
        "/Type /Catalog", "/Type /Catalog /StructTreeRoot 42 0 R"));
    EXPECT_THAT(objects, HasSubstr("/GoTo"));
}

TEST(StaysBehind, theParentOfAPageWhateverItIsSpeltLike) {
    expectNothingLeft(replaced(replaced(wholeDocument("/Old 3 0 R"), "/Parent", "/P#61rent"),
                               "/Kids [3 0 R]", "/LEFT 1 /Kids [3 0 R]"));
}

TEST(StaysBehind, whateverTheObjectsOfTheSourceAreNumbered) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(replaced(
        replaced(onePageWith(), "{{object 5 0}}", "{{object 8000000 0}}"), "5 0 R", "8000000 0 R"));
    expectPages(merged, {200}, {"one"});
    EXPECT_LT(Bench::read(merged).size(), 2000);
}

}  // namespace
}  // namespace quirebind::pdftest
