// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Which definition of an object counts in a file without a usable table, where revisions follow one
// another (ISO 32000-2, 7.5.6) and documents lie within documents.

#include <string>

#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"
#include "Tests/Support/FixturePDF.h"

namespace quirebind::pdftest {
namespace {

const std::string kWiderPage =
    "{{object 3 0}}\n<< /Type /Page /Parent 2 0 R /MediaBox [0 0 400 300] /Contents 4 0 R "
    "/Resources << /Font << /F1 5 0 R >> >> >>\nendobj\n";

const std::string kSecondPage =
    "{{object 2 0}}\n<< /Type /Pages /Kids [3 0 R 7 0 R] /Count 2 >>\nendobj\n" +
    pageObjects(7, 500, "two");

/// So much that readers do not see the end of the revision before.
const std::string kLong = "{{object 30 0}}\n({{fill 1100 78}})\nendobj\n";

const std::string kTrailer = "\ntrailer\n<< /Size {{size}} /Root 1 0 R /Prev {{prev}} >>\n";

/// A document of one page, and then that.
std::string followedBy(const std::string& update) {
    return document(kOnePage) + update;
}

INSTANTIATE_TEST_SUITE_P(
    LastRevision, ReadableFile,
    ::testing::Values(
        Kind("withoutATable", followedBy(kSecondPage + kLong), {200, 500}, {"one", "two"}),
        Kind("withoutATableBehindAnother",
             followedBy(kSecondPage + "{{xref}}" + kTrailer + "{{startxref}}\n%%EOF\n" +
                        kWiderPage + kLong),
             {400, 500}, {"one", "two"}),
        Kind("withoutATrailer", followedBy(kSecondPage + kLong + "{{xref}}"), {200, 500},
             {"one", "two"}),
        Kind("withoutAStartxref", followedBy(kSecondPage + kLong + "{{xref}}" + kTrailer),
             {200, 500}, {"one", "two"}),
        Kind("withAWrongStartxref",
             followedBy(kSecondPage + "{{xref}}" + kTrailer + "startxref\n17\n%%EOF\n"), {200, 500},
             {"one", "two"}),
        Kind("withAWrongTable",
             followedBy(kSecondPage + "{{label table}}\nxref\n7 x\ntrailer\n<< /Size 9 "
                                      "/Root 1 0 R >>\nstartxref\n{{offset table}}\n%%EOF\n"),
             {200, 500}, {"one", "two"}),
        Kind("withAWrongPreviousSection",
             replaced(followedBy(kSecondPage + "{{xref}}" + kTrailer + "{{startxref}}\n%%EOF\n"),
                      "{{prev}}", "31"),
             {200, 500}, {"one", "two"}),
        Kind("whoseEndIsCutOffInAnObjectThatNoPageNeeds",
             followedBy(kSecondPage + kLong + "{{object 20 0}}\n<< /Producer (cut of"), {200, 500},
             {"one", "two"}),
        // As by every other reader, the sound revision before it is read.
        Kind("thatIsShortAndWithoutATable", followedBy(kSecondPage))),
    nameOfKind);

// Only the update is broken, and it has the only page.
INSTANTIATE_TEST_SUITE_P(LastRevision, RefusedFile,
                         ::testing::Values(Kind("whoseEndIsCutOffInAPage",
                                                followedBy(kLong +
                                                           "{{object 3 0}}\n<< /Type /Page /Par"))),
                         nameOfKind);

/// A document whose only table is broken: an attachment is a document itself, and nothing hides it.
std::string withADocumentInside(const std::string& length, const std::string& objects) {
    const std::string inner =
        "1 0 obj\n<< /Type /Catalog /Pages 2 0 R >>\nendobj\n2 0 obj\n<< /Type /Pages /Kids [3 0 "
        "R] "
        "/Count 1 >>\nendobj\n3 0 obj\n<< /Type /Page /Parent 2 0 R /MediaBox [0 0 99 99] "
        ">>\nendobj\n4 0 obj\n<< /Length 3 >>\nstream\nq Q\nendstream\nendobj\n"
        "trailer\n<< /Root 1 0 R /Size 5 >>\nstartxref\n0\n%%EOF\n";
    return "{{header 1.4}}\n" + std::string(kOnePage) + "{{object 8 0}}\n<< /Length " + length +
           " >>\n{{stream}}\n" + inner + "{{endstream}}\nendobj\n" + objects +
           "trailer\n<< /Root 1 0 R /Size 10 >>\n";
}

INSTANTIATE_TEST_SUITE_P(
    DocumentWithinADocument, ReadableFile,
    ::testing::Values(Kind("isPassedOver", withADocumentInside("{{length}}", "")),
                      Kind("isPassedOverWhereItsLengthFollows",
                           withADocumentInside("9 0 R", "{{object 9 0}}\n{{length 8}}\nendobj\n"))),
    nameOfKind);

TEST(Recovery, readsTheLastOfTwoDocumentsInOneFile) {
    const Bench bench;
    const std::string first = test::simplePDF(3, {.label = "first"});
    const std::string second = test::simplePDF(2, {.label = "second"});
    const std::string merged = bench.merge({bench.add("source.pdf", first + second)});
    expectPages(merged, {200, 200}, {"second-1", "second-2"});
}

}  // namespace
}  // namespace quirebind::pdftest
