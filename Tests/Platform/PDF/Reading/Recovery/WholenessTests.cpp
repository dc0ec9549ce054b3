// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// A damaged document is merged whole or not at all. What is missing may have been lost with the
// damage or may never have been there, which the file itself has to tell (ISO 32000-2, 7.3.10).

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"
#include "Tests/Support/FixturePDF.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

/// A page that needs object 8, which is nowhere, in a document that ends so.
std::string inNeedOf8(const std::string& end) {
    return "{{header 1.4}}\n" +
           replaced(kOnePage, "/MediaBox", "/PieceInfo << /A 8 0 R >> /MediaBox") + end;
}

/// A table that lists all objects, and one more entry; it is not where startxref says.
std::string table(const std::string& heading, const std::string& entry) {
    std::string text = "xref\n0 6\n0000000000 65535 f \n";
    for (int i = 1; i <= 5; ++i) text += "{{offset " + std::to_string(i) + "}} 00000 n \n";
    return text + heading + "\n" + entry;
}

std::string trailer(const std::string& size) {
    return "trailer\n<< /Size " + size + " /Root 1 0 R >>\nstartxref\n3\n%%EOF\n";
}

INSTANTIATE_TEST_SUITE_P(
    MissingObject, ReadableFile,
    ::testing::Values(
        Kind("thatTheTableDoesNotList", inNeedOf8(table("", "") + trailer("6"))),
        Kind("thatTheTableDoesNotListAndTheSizeIncludes", inNeedOf8(table("", "") + trailer("10"))),
        Kind("thatTheTableSaysToBeFree",
             inNeedOf8(table("8 1", "0000000000 00001 f \n") + trailer("9"))),
        Kind("thatTheTableHasInAnotherGeneration",
             inNeedOf8(table("8 1", "0000000033 00004 n \n") + trailer("9"))),
        Kind("beyondTheSizeInATrailerWithoutATable", inNeedOf8(trailer("6"))),
        Kind("beyondTheSizeInATrailerBehindABrokenTable",
             inNeedOf8(table("x y", "") + trailer("6"))),
        Kind("thatASectionInAStreamDoesNotList",
             inNeedOf8("{{xrefstream 6 0}}\n/Root 1 0 R\n{{endxrefstream}}\nstartxref\n3\n"))),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    MissingObject, RefusedFile,
    ::testing::Values(
        Kind("thatTheTableLists", inNeedOf8(table("8 1", "0000000033 00000 n \n") + trailer("9"))),
        Kind("thatASoundTableLists",
             replaced(onePageWith("{{entry 8 1 33 0}}\n"), "/MediaBox", "/A 8 0 R /MediaBox")),
        Kind("thatASectionInAStreamLists",
             inNeedOf8("{{entry 8 1 33 0}}\n{{xrefstream 6 0}}\n/Root 1 0 R\n{{endxrefstream}}\n"
                       "startxref\n3\n")),
        Kind("thatASectionHasInAStreamThatIsMissing",
             inNeedOf8("{{entry 8 2 7 0}}\n{{xrefstream 6 0}}\n/Root 1 0 R\n{{endxrefstream}}\n"
                       "startxref\n3\n")),
        Kind("belowTheSizeInATrailerWithoutATable", inNeedOf8(trailer("9"))),
        Kind("belowTheSizeInATrailerBehindABrokenTable",
             inNeedOf8(table("x y", "") + trailer("9"))),
        Kind("inAFileWithoutItsEnd", inNeedOf8("")),
        // The table is that of an earlier revision; of the one behind it the end is missing.
        Kind("inAFileWithoutTheEndOfItsUpdate",
             inNeedOf8(table("", "") + trailer("6") + "{{object 7 0}}\n(new)\nendobj\n"))),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    MissingPart, RefusedFile,
    ::testing::Values(
        Kind("ofAStreamAtTheEndOfTheFile",
             "{{header 1.4}}\n" + replaced(kOnePage, "/MediaBox", "/A 8 0 R /MediaBox") +
                 "{{object 8 0}}\n<< /Length 100 >>\nstream\nabc"),
        Kind("ofAStreamOfUnknownLengthAtTheEndOfTheFile",
             "{{header 1.4}}\n" + replaced(kOnePage, "/MediaBox", "/A 8 0 R /MediaBox") +
                 "{{object 8 0}}\n<< >>\nstream\nabc"),
        Kind("ofADictionaryThatThePageNeeds",
             "{{header 1.4}}\n" + replaced(kOnePage, "/Subtype /Type1", "/Subtype 17 (x)")),
        Kind("ofADictionaryAtTheEndOfTheFile",
             "{{header 1.4}}\n" +
                 replaced(kOnePage, "/Encoding /WinAnsiEncoding >>\nendobj\n", "")),
        Kind("ofThePages", replaced("{{header 1.4}}\n" + std::string(kOnePage),
                                    "/Kids [3 0 R] /Count 1", "/Kids [3 0 R 7 0 R] /Count 2")),
        Kind("ofThePagesOfANode",
             replaced("{{header 1.4}}\n" + std::string(kOnePage), "/Kids [3 0 R] /Count 1",
                      "/Kids [3 0 R 7 0 R] /Count 3") +
                 "{{object 7 0}}\n<< /Type /Pages /Kids [3 0 R 8 0 R] /Count 2 >>\nendobj\n")),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    NothingMissing, ReadableFile,
    ::testing::Values(
        // What was cut off is no part of the page.
        Kind("butObjectsThatNoPageNeeds",
             "{{header 1.4}}\n" +
                 replaced(kOnePage, "/Pages 2 0 R", "/Pages 2 0 R /Outlines 8 0 R") +
                 "{{object 9 0}}\n<< /Length 100 >>\nstream\nabc"),
        Kind("butThePartOfAKeyword", replaced("{{header 1.4}}\n" + std::string(kOnePage),
                                              "/MediaBox", "/A 8 0 R /MediaBox") +
                                         "{{object 8 0}}\n<< /Length 3 >>\nstream\nabc\nendst"),
        Kind("butAKeyword", replaced("{{header 1.4}}\n" + std::string(kOnePage), "/MediaBox",
                                     "/A 8 0 R /MediaBox") +
                                "{{object 8 0}}\n<< /Length 3 >>\nstream\nabc"),
        Kind("thatACountPromises", replaced("{{header 1.4}}\n" + std::string(kOnePage),
                                            "/Kids [3 0 R]", "/Kids [3 0 R 7 0 R]"))),
    nameOfKind);

/// Merges what is left of `bytes` at every length, and expects all pages wherever that succeeds.
void expectAllOrNothing(const std::string& bytes, const std::vector<std::string>& texts) {
    const Bench bench;
    int merges = 0;
    std::string last;  // most results are the same
    for (std::size_t length = bytes.size(); length-- > 0;) {
        const auto merged = bench.tryMerge({bench.add("cut.pdf", bytes.substr(0, length))});
        if (!merged) continue;
        ++merges;
        const std::string result = Bench::read(*merged);
        if (result == last) continue;
        last = result;
        EXPECT_THAT(test::pageTexts(*merged), ::testing::ElementsAreArray(texts)) << length;
    }
    EXPECT_GT(merges, 5);  // at least what stands behind the last object can be done without
}

TEST(FileCutShort, isMergedWholeOrNotAtAll) {
    const std::vector<std::string> texts{"page-1", "page-2", "page-3"};
    expectAllOrNothing(test::simplePDF(3), texts);
    expectAllOrNothing(test::simplePDF(3, {.objectStreams = true}), texts);
}

// Every object in turn is made something else, so that it cannot be found any more.
TEST(FileWithAnObjectLost, isMergedWholeOrNotAtAll) {
    const Bench bench;
    const std::string bytes = test::simplePDF(3);
    int refusals = 0;
    for (std::size_t at = bytes.find(" 0 obj"); at != std::string::npos;
         at = bytes.find(" 0 obj", at + 1)) {
        std::string wrong = bytes;
        wrong.replace(at, 6, "xxxxxx");
        const auto merged = bench.tryMerge({bench.add("lost.pdf", wrong)});
        if (!merged) {
            ++refusals;
            continue;
        }
        EXPECT_THAT(test::pageTexts(*merged), ::testing::ElementsAre("page-1", "page-2", "page-3"));
    }
    EXPECT_GT(refusals, 5);
}

}  // namespace
}  // namespace quirebind::pdftest
