// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Cross-reference tables and trailers (ISO 32000-2, 7.5.4 and 7.5.5) that are missing or wrong,
// while all the objects are there.

#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

constexpr int kObjects = 5;
const std::string kGoodTrailer = "trailer\n<< /Size 6 /Root 1 0 R >>\n";
const std::string kGoodEnd = "startxref\n{{offset table}}\n%%EOF\n";

std::string offsetOf(int object) {
    return "{{offset " + std::to_string(object) + "}}";
}

/// A document of one page that ends so, behind the label "table".
std::string endingIn(const std::string& end) {
    return "{{header 1.4}}\n" + std::string(kOnePage) + "{{label table}}\n" + end;
}

std::string endingInTable(const std::string& table) {
    return endingIn("xref\n" + table + kGoodTrailer + kGoodEnd);
}

/// With a table whose entry for an object is that.
std::string withEntries(const std::function<std::string(int)>& entry,
                        const std::string& heading = "0 6") {
    std::string table = heading + "\n0000000000 65535 f \n";
    for (int i = 1; i <= kObjects; ++i) table += entry(i) + "\n";
    return endingInTable(table);
}

std::string withOffsets(const std::function<std::string(int)>& offset) {
    return withEntries([&](int object) { return offset(object) + " 00000 n "; });
}

std::string goodEntry(int object) {
    return offsetOf(object) + " 00000 n ";
}

std::string shiftedBy(const std::string& shift) {
    return withOffsets(
        [&](int object) { return "{{offset " + std::to_string(object) + shift + "}}"; });
}

std::string withOneWrongOffset(int wrong) {
    return withOffsets([&](int object) { return object == wrong ? "33" : offsetOf(object); });
}

std::string withStartxref(const std::string& startxref) {
    return endingIn("xref\n0 6\n0000000000 65535 f \n" + goodEntry(1) + "\n" + goodEntry(2) + "\n" +
                    goodEntry(3) + "\n" + goodEntry(4) + "\n" + goodEntry(5) + "\n" + kGoodTrailer +
                    startxref + "%%EOF\n");
}

std::string withTrailer(const std::string& trailer) {
    return endingIn("xref\n0 6\n0000000000 65535 f \n" + goodEntry(1) + "\n" + goodEntry(2) + "\n" +
                    goodEntry(3) + "\n" + goodEntry(4) + "\n" + goodEntry(5) + "\n" + trailer +
                    kGoodEnd);
}

INSTANTIATE_TEST_SUITE_P(
    WrongStartxref, ReadableFile,
    ::testing::Values(Kind("thatIsMissing", withStartxref("")),
                      Kind("withoutANumber", withStartxref("startxref\n")),
                      Kind("withANumberOfLetters", withStartxref("startxref\nhere\n")),
                      Kind("thatIsNegative", withStartxref("startxref\n-1\n")),
                      Kind("thatIsZero", withStartxref("startxref\n0\n")),
                      Kind("thatIsBeyondTheEnd", withStartxref("startxref\n99999999\n")),
                      Kind("thatIsFarBeyondTheEnd",
                           withStartxref("startxref\n99999999999999999999999\n")),
                      Kind("beforeTheTable", withStartxref("startxref\n{{offset table-7}}\n")),
                      Kind("behindTheTable", withStartxref("startxref\n{{offset table+2}}\n")),
                      Kind("atAnObject", withStartxref("startxref\n{{offset 4}}\n"))),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    WrongOffsets, ReadableFile,
    ::testing::Values(
        Kind("thatAreAllTooHigh", shiftedBy("+3")), Kind("thatAreAllTooLow", shiftedBy("-3")),
        Kind("thatAreTooHighByOne", shiftedBy("+1")), Kind("thatAreTooLowByOne", shiftedBy("-1")),
        Kind("thatAreAllZero", withOffsets([](int) { return "0000000000"; })),
        Kind("thatAreAllTheSame", withOffsets([](int) { return offsetOf(3); })),
        Kind("thatAreBeyondTheEnd", withOffsets([](int) { return "0000999999"; })),
        Kind("thatAreInTheWrongOrder", withOffsets([](int i) { return offsetOf(6 - i); })),
        Kind("ofTheCatalog", withOneWrongOffset(1)), Kind("ofThePageTree", withOneWrongOffset(2)),
        Kind("ofThePage", withOneWrongOffset(3)), Kind("ofTheContent", withOneWrongOffset(4)),
        Kind("ofTheFont", withOneWrongOffset(5)),
        Kind("thatAreOfOneObjectFewer",
             withOffsets([](int i) { return i == 1 ? "0000000015" : offsetOf(i - 1); }))),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    WrongTable, ReadableFile,
    ::testing::Values(
        Kind("withTooSmallACount", withEntries(goodEntry, "0 4")),
        Kind("withTooLargeACount", withEntries(goodEntry, "0 9")),
        Kind("withANegativeCount", withEntries(goodEntry, "0 -6")),
        Kind("withAFarTooLargeCount", withEntries(goodEntry, "0 4294967296")),
        Kind("thatBeginsAtTwo", withEntries(goodEntry, "2 6")),
        Kind("thatBeginsAtThousand", withEntries(goodEntry, "1000 6")),
        Kind("withoutACount", withEntries(goodEntry, "0")),
        Kind("withoutAHeading", withEntries(goodEntry, "")),
        Kind("withWrongGenerations", withEntries([](int i) { return offsetOf(i) + " 00007 n "; })),
        Kind("withoutGenerations", withEntries([](int i) { return offsetOf(i) + " n "; })),
        Kind("whoseEntriesAreAllFree",
             withEntries([](int i) { return offsetOf(i) + " 00000 f "; })),
        Kind("withEntriesOfUnknownKind",
             withEntries([](int i) { return offsetOf(i) + " 00000 x "; })),
        Kind("withEntriesOfHexadecimalNumbers",
             withEntries([](int) { return std::string("00000000ff 00000 n "); })),
        Kind("withoutItsKeyword", endingIn("0 6\n0000000000 65535 f \n" + kGoodTrailer + kGoodEnd)),
        Kind("thatIsMissing", endingIn(kGoodTrailer + "startxref\n0\n%%EOF\n")),
        Kind("thatIsCutOff", endingIn("xref\n0 6\n0000000000 65535 f \n0000000")),
        Kind("thatIsMissingAsTheTrailerIs", endingIn(""))),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    WrongTrailer, ReadableFile,
    ::testing::Values(
        Kind("thatIsMissing", withTrailer("")),
        Kind("withoutItsKeyword", withTrailer("<< /Size 6 /Root 1 0 R >>\n")),
        Kind("withoutADictionary", withTrailer("trailer\n")),
        Kind("thatIsEmpty", withTrailer("trailer\n<< >>\n")),
        Kind("thatIsNotClosed", withTrailer("trailer\n<< /Size 6 /Root 1 0 R\n")),
        Kind("thatIsAString", withTrailer("trailer\n<2f526f6f74>\n")),
        Kind("withBracketsThatDoNotMatch",
             withTrailer("trailer\n<< /Size 6 /Root 1 0 R /ID [ >> ]\n")),
        Kind("withAValueWithoutAKey", withTrailer("trailer\n<< <> /Size 6 /Root 1 0 R >>\n")),
        Kind("withoutARoot", withTrailer("trailer\n<< /Size 6 >>\n")),
        Kind("whoseRootIsNull", withTrailer("trailer\n<< /Size 6 /Root null >>\n")),
        Kind("whoseRootIsNotThere", withTrailer("trailer\n<< /Size 6 /Root 77 0 R >>\n")),
        Kind("whoseRootIsAPage", withTrailer("trailer\n<< /Size 6 /Root 3 0 R >>\n")),
        Kind("whoseRootIsAStream", withTrailer("trailer\n<< /Size 6 /Root 4 0 R >>\n")),
        Kind("whoseRootIsDirect",
             withTrailer("trailer\n<< /Size 6 /Root << /Type /Catalog /Pages 2 0 R >> >>\n")),
        Kind("withAPreviousSectionThatIsNotThere",
             withTrailer("trailer\n<< /Size 6 /Root 1 0 R /Prev 12 >>\n")),
        Kind("withAPreviousSectionBeyondTheEnd",
             withTrailer("trailer\n<< /Size 6 /Root 1 0 R /Prev 99999999 >>\n")),
        Kind("withAStreamThatIsNotThere",
             withTrailer("trailer\n<< /Size 6 /Root 1 0 R /XRefStm 12 >>\n")),
        Kind("whoseSizeIsZero", withTrailer("trailer\n<< /Size 0 /Root 1 0 R >>\n"))),
    nameOfKind);

// "2 0 obj" stands in "12 0 obj", too.
INSTANTIATE_TEST_SUITE_P(
    WrongOffset, ReadableFile,
    ::testing::Values(
        Kind("withinANumber",
             onePageWith("{{object 14 0}}\n<< /Length {{length}} >>\n{{stream}}\nBT /F1 "
                         "12 Tf 20 150 Td (fourteen) Tj ET\n{{endstream}}\nendobj\n"
                         "{{entry 4 1 @14+1 0}}\n"))),
    nameOfKind);

// The entry of one object is wrong, and nobody notices before the page is copied. The other entries
// were right, so what they say still counts: object 6 was deleted.
TEST(WrongEntry, isNoReasonToDoubtTheOthers) {
    const Bench bench;
    const std::string text = replaced(
        onePageWith("{{object 6 0}}\n(deleted)\nendobj\n{{free 6 1}}\n{{entry 5 1 33 0}}\n"),
        "/MediaBox", "/Here [6 0 R] /MediaBox");
    const std::string merged = bench.mergeFixture(text);
    expectPages(merged, {200}, {"one"});
    EXPECT_THAT(test::pageDictionaries(merged).at(0), ::testing::HasSubstr("/Here [ null ]"));
}

// A table that says nothing of the object is as good as one that says it is elsewhere.
TEST(WrongEntry, ofAnObjectThatTwoPagesShareIsRightForBoth) {
    const Bench bench;
    const std::string text =
        replaced(onePageWith(pageObjects(7, 500, "two") + "{{entry 5 1 33 0}}\n"),
                 "/Kids [3 0 R] /Count 1", "/Kids [3 0 R 7 0 R] /Count 2");
    expectPages(bench.mergeFixture(text), {200, 500}, {"one", "two"});
}

}  // namespace
}  // namespace quirebind::pdftest
