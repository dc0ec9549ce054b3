// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Files of several cross-reference sections: updated ones, hybrid ones and linearized ones
// (ISO 32000-2, 7.5.6, 7.5.8.4 and annex F).

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const std::string kUpdateTrailer =
    "\ntrailer\n<< /Size {{size}} /Root 1 0 R /Prev {{prev}} >>\n{{startxref}}\n%%EOF\n";

/// A document of one page, and an update.
std::string updated(const std::string& objects, const std::string& first = std::string(kOnePage)) {
    return document(first) + objects + "{{xref}}" + kUpdateTrailer;
}

std::string updatedByStream(const std::string& objects) {
    return document(kOnePage) + objects +
           "{{xrefstream 20 0}}\n/Root 1 0 R /Prev {{prev}}\n{{endxrefstream}}\n"
           "{{startxref}}\n%%EOF\n";
}

const std::string kWiderPage =
    "{{object 3 0}}\n<< /Type /Page /Parent 2 0 R /MediaBox [0 0 400 300] /Contents 4 0 R "
    "/Resources << /Font << /F1 5 0 R >> >> >>\nendobj\n";

const std::string kSecondPage =
    "{{object 2 0}}\n<< /Type /Pages /Kids [3 0 R 7 0 R] /Count 2 >>\nendobj\n" +
    pageObjects(7, 500, "two");

const std::string kTrailerOfSecond =
    "\ntrailer\n<< /Size {{size}} /Root 1 0 R /Prev {{offset table}} >>\nstartxref\n"
    "{{offset second}}\n%%EOF\n";

INSTANTIATE_TEST_SUITE_P(
    UpdatedFile, ReadableFile,
    ::testing::Values(
        Kind("withAnObjectReplaced", updated(kWiderPage), {400}),
        Kind("withAnObjectReplacedByAStream", updatedByStream(kWiderPage), {400}),
        Kind("withAPageAdded", updated(kSecondPage), {200, 500}, {"one", "two"}),
        Kind("withAPageAddedByAStream", updatedByStream(kSecondPage), {200, 500}, {"one", "two"}),
        Kind("withAPageAddedAndAnotherReplaced",
             updated(kSecondPage) + kWiderPage + "{{xref}}" + kUpdateTrailer, {400, 500},
             {"one", "two"}),
        Kind("withAPageDeleted", updated(kSecondPage) + "{{free 7 1}}\n{{xref}}" + kUpdateTrailer),
        Kind("whoseSectionsLeadInACircle",
             replaced(replaced(document(kOnePage), "/Root 1 0 R",
                               "/Root 1 0 R /Prev "
                               "{{offset second}}"),
                      "{{xref}}", "{{label table}}\n{{xref}}") +
                 kWiderPage + "{{label second}}\n{{xref}}" + kTrailerOfSecond,
             {400}),
        Kind("whoseSectionLeadsToItself", replaced(replaced(document(kOnePage), "/Root 1 0 R",
                                                            "/Root 1 0 R /Prev {{offset table}}"),
                                                   "{{xref}}", "{{label table}}\n{{xref}}")),
        Kind("whoseFirstSectionIsSaidToBeAtZero",
             replaced(document(kOnePage), "/Root 1 0 R", "/Root 1 0 R /Prev 0")),
        Kind("whoseLastTrailerHasNoRoot",
             replaced(updated(kWiderPage), "/Root 1 0 R /Prev", "/Prev"), {400})),
    nameOfKind);

TEST(UpdatedFile, hasNullWhereAnObjectWasDeleted) {
    const Bench bench;
    const std::string annotated =
        replaced(kOnePage, "/MediaBox", "/Annots [8 0 R] /MediaBox") +
        "{{object 8 0}}\n<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /Contents (note) "
        ">>\nendobj\n";
    const std::string merged = bench.mergeFixture(updated("{{free 8 1}}\n", annotated));
    expectPages(merged, {200}, {"one"});
    EXPECT_THAT(test::pageDictionaries(merged).at(0), HasSubstr("/Annots [ null ]"));
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("note")));
}

// Object 8 is reused: a reference with the old generation still means nothing.
TEST(UpdatedFile, hasNullWhereANumberWasUsedAgain) {
    const Bench bench;
    const std::string annotated =
        replaced(kOnePage, "/MediaBox", "/Old 8 0 R /New 8 1 R /MediaBox") +
        "{{object 8 0}}\n(first)\nendobj\n";
    const std::string merged =
        bench.mergeFixture(updated("{{object 8 1}}\n(second)\nendobj\n", annotated));
    expectSound(merged, 1);
    EXPECT_THAT(test::pageDictionaries(merged).at(0), Not(HasSubstr("/Old")));
    EXPECT_THAT(everyObject(merged), HasSubstr("(second)"));
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("(first)")));
}

// Objects 2, 3 and 5 are only in an object stream, which the table does not know of.
std::string hybrid(const std::string& beforeTable, const std::string& trailerEntries = "") {
    return "{{header 1.5}}\n{{object 1 0}}\n<< /Type /Catalog /Pages 2 0 R >>\nendobj\n" +
           std::string(
               kOnePage.substr(kOnePage.find("{{object 4 0}}"),
                               kOnePage.find("{{object 5 0}}") - kOnePage.find("{{object 4 0}}"))) +
           R"({{objectstream 6 0 filter=/FlateDecode}}
{{object 2}}
<< /Type /Pages /Kids [3 0 R] /Count 1 >>
{{object 3}}
<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] /Contents 4 0 R
   /Resources << /Font << /F1 5 0 R >> >> >>
{{object 5}}
<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>
{{endobjectstream}}
{{xrefstream 7 0 hybrid filter=/FlateDecode}}
{{endxrefstream}}
)" + beforeTable +
           "{{xref}}\ntrailer\n<< /Size {{size}} /Root 1 0 R /XRefStm {{offset 7}} " +
           trailerEntries + ">>\n{{startxref}}\n%%EOF\n";
}

INSTANTIATE_TEST_SUITE_P(
    HybridFile, ReadableFile,
    ::testing::Values(
        Kind("withObjectsThatOnlyTheStreamLists", hybrid("")),
        Kind("withObjectsThatTheTableHides",
             hybrid("{{free 2 65535}}\n{{free 3 65535}}\n{{free 5 65535}}\n")),
        // What is both in the table and in the stream: the table counts (ISO 32000-2, 7.5.8.4).
        Kind("withAnObjectInBoth", hybrid(kWiderPage), {400}),
        Kind("withAnUpdate",
             hybrid("{{free 2 65535}}\n{{free 3 65535}}\n{{free 5 65535}}\n") + kWiderPage +
                 "{{xref}}" + kUpdateTrailer,
             {400})),
    nameOfKind);

TEST(LinearizedFile, keepsItsPagesWhenMerged) {
    const Bench bench;
    for (const bool objectStreams : {false, true}) {
        const std::string plain =
            bench.add("plain.pdf",
                      test::simplePDF(3, {.objectStreams = objectStreams, .distinctSizes = true}));
        const std::string linearized = bench.folder() / "linearized.pdf";
        static_cast<void>(runOrFail({"qpdf", "--linearize", plain, linearized}));
        const std::string merged = bench.merge({linearized});
        expectSound(merged, 3);
        EXPECT_EQ(test::pagesByMuPDF(merged), test::pagesByMuPDF(plain));
        EXPECT_EQ(test::pageTexts(merged), test::pageTexts(plain));
        EXPECT_THAT(everyObject(merged), Not(HasSubstr("/Linearized")));
    }
}

}  // namespace
}  // namespace quirebind::pdftest
