// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// What single directives write, byte by byte: other readers forgive much.

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Support/FixturePDF.h"

namespace quirebind::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::Pair;

TEST(FixtureText, isCopiedAndSilentLinesDisappear) {
    EXPECT_EQ(fixturePDF("\n\na {b} }}\n  {{# one}} {{label x}} \n\nc"), "a {b} }}\n\nc");
    EXPECT_EQ(fixturePDF("a{{# one}}b\n"), "ab\n");
}

TEST(FixtureText, hasTheLineEndsAskedFor) {
    EXPECT_EQ(fixturePDF("a\n{{eol cr}}\nb\n{{eol crlf}}\nc\n{{eol lf}}\nd\n"), "a\nb\rc\r\nd\n");
}

TEST(FixtureText, takesBytesByNumber) {
    EXPECT_EQ(fixturePDF("<{{hex 00 fF 0a}}>{{fill 3 41}}"),
              std::string("<\x00\xFF\n>", 5) + "AAA");
}

TEST(FixtureOffset, isThatOfTheLastObjectAboveOrTheFirstBelow) {
    EXPECT_EQ(fixturePDF("{{offset 1}} {{object 1 0}} {{object 1 0}} {{offset 1-2}} {{offset x+1}}"
                         "{{label x}}"),
              "2 1 0 obj 1 0 obj 8 23");
}

TEST(FixtureOffset, settlesWhenItsOwnDigitsMoveWhatItRefersTo) {
    // The label is at 99 if the number had one or two digits, and at 100 with three.
    const std::string text = "{{fill 97 20}}{{offset x}}{{label x}}";
    EXPECT_EQ(fixturePDF(text), std::string(97, ' ') + "99");
    EXPECT_EQ(fixturePDF(" " + text), std::string(98, ' ') + "101");
}

TEST(FixtureOffset, countsFromTheHeaderOrTheFile) {
    EXPECT_THAT(fixturePDF("junk {{header 1.4}}{{label x}}{{offset x}}"),
                EndsWith("\n%\xE2\xE3\xCF\xD3"
                         "14"));
    EXPECT_THAT(fixturePDF("junk {{header 1.4 origin=file}}{{label x}}{{offset x}}"),
                EndsWith("\n%\xE2\xE3\xCF\xD3"
                         "19"));
}

TEST(FixtureOffset, isGivenToTheTestToo) {
    const Fixture fixture = expandFixture("{{label a}}\nx\n{{object 12 0}}\nendobj\n");
    EXPECT_THAT(fixture.offsets, ElementsAre(Pair("12", 2), Pair("a", 0)));
}

TEST(FixtureStream, hasExactlyItsDataBetweenTheKeywords) {
    EXPECT_EQ(fixturePDF("{{object 1 0}} {{length}} {{length+2}} {{length-1}}\n"
                         "{{stream}}\n\nab\n\n{{endstream}}"),
              "1 0 obj 4 6 3\nstream\n\nab\n\nendstream");
    EXPECT_EQ(fixturePDF("{{object 1 0}} {{length}}\n{{stream}}\n{{endstream}}"),
              "1 0 obj 0\nstream\n\nendstream");
    EXPECT_EQ(fixturePDF("{{object 1 0}} {{length}}\n{{stream}}\nab{{hex 0a}}{{endstream}}"),
              "1 0 obj 3\nstream\nab\n\nendstream");
}

TEST(FixtureStream, hasNoLoneCarriageReturnBeforeItsData) {
    EXPECT_EQ(
        fixturePDF("{{eol cr}}\n{{object 1 0}} {{length}}\n{{stream}}\na\nb\n{{endstream}}\n"),
        "1 0 obj 3\rstream\r\na\rb\rendstream\r");
}

TEST(FixtureStream, isEncodedAndItsEncodedLengthCounted) {
    EXPECT_EQ(fixturePDF("{{object 7 0}} {{length}}\n"
                         "{{stream filter=/ASCIIHexDecode,/RunLengthDecode}}\naaaa\n{{endstream}}"
                         "{{length 7}}"),
              "7 0 obj 7\nstream\nFD6180>\nendstream7");
}

TEST(FixtureObjectStream, hasPairsThenObjects) {
    EXPECT_EQ(fixturePDF("{{objectstream 5 0}}\n/Extends 4 0 R\n{{object 11}} <<>>\n"
                         "{{object 12}}\n[1]\n{{endobjectstream}}\n"),
              "5 0 obj\n<< /Type /ObjStm /N 2 /First 10 /Length 19\n/Extends 4 0 R >>\nstream\n"
              "11 0 12 5\n"
              "<<>>\n"
              "[1]\n"
              "\nendstream\nendobj\n");
}

TEST(FixtureObjectStream, takesTheAuthorsEntriesInsteadOfItsOwn) {
    const std::string bytes = fixturePDF(
        "{{objectstream 5 0 without=/First,/Type}}\n/N 99 /X << /Length 3 >>\n{{object 1}}\n2\n"
        "{{endobjectstream}}\n");
    EXPECT_THAT(bytes, HasSubstr("<< /Length 6\n/N 99 /X << /Length 3 >> >>"));
}

TEST(FixtureTable, listsWhatWasDeclaredSinceTheLastOne) {
    EXPECT_EQ(fixturePDF("{{object 1 0}}\n{{object 3 2}}\n{{free 4 1}}\n{{free 5 7}}\n"
                         "{{xref split=4}}\n{{size}}\n"
                         "{{object 2 0}}\n{{xref}}\n{{size}} {{prev}}\n{{startxref}}\n"),
              "1 0 obj\n3 2 obj\n"
              "xref\n"
              "0 2\n0000000004 65535 f \n0000000000 00000 n \n"
              "3 1\n0000000008 00002 n \n"
              "4 2\n0000000005 00001 f \n0000000000 00007 f \n"
              "6\n"
              "2 0 obj\n"
              "xref\n2 1\n0000000135 00000 n \n"
              "6 16\nstartxref\n143\n");
}

TEST(FixtureTable, linksObjectsFreedLaterInFrontOfThoseFreedEarlier) {
    EXPECT_THAT(fixturePDF("{{free 3 1}}\n{{xref}}\n{{free 2 1}}\n{{xref}}\n"),
                EndsWith("xref\n0 1\n0000000002 65535 f \n2 1\n0000000003 00001 f \n"));
}

TEST(FixtureTable, canStartAtOneAndHaveShortEntries) {
    EXPECT_EQ(fixturePDF("{{object 1 0}}\n{{xref shift=1 entry=19}}\n"),
              "1 0 obj\nxref\n1 2\n0000000000 65535 f\n0000000000 00000 n\n");
    EXPECT_EQ(fixturePDF("{{object 1 0}}\n{{xref zero=no}}\n"),
              "1 0 obj\nxref\n1 1\n0000000000 00000 n \n");
}

TEST(FixtureTable, keepsEntriesAtTwentyBytesForEveryLineEnd) {
    EXPECT_EQ(fixturePDF("{{eol crlf}}\n{{xref}}\n"), "xref\r\n0 1\r\n0000000000 65535 f\r\n");
    EXPECT_EQ(fixturePDF("{{eol cr}}\n{{xref}}\n"), "xref\r0 1\r0000000000 65535 f \r");
}

TEST(FixtureTable, takesLiteralAndDisplacedEntries) {
    EXPECT_THAT(fixturePDF("{{object 1 0}}\n{{object 2 0}}\n{{entry 1 1 77 3}}\n"
                           "{{entry 2 1 @2+4 0}}\n{{entry 3 0 0 9}}\n{{xref zero=no}}\n"),
                EndsWith("xref\n1 3\n0000000077 00003 n \n0000000012 00000 n \n"
                         "0000000000 00009 f \n"));
}

TEST(FixtureTable, leavesWhatIsNotListedToTheNextOne) {
    EXPECT_THAT(fixturePDF("{{object 1 0}}\n{{object 2 0}}\n{{object 3 0}}\n"
                           "{{xref only=0-1,3}}\n{{xref}}\n"),
                EndsWith("xref\n0 2\n0000000000 65535 f \n0000000000 00000 n \n"
                         "3 1\n0000000016 00000 n \n"
                         "xref\n2 1\n0000000008 00000 n \n"));
}

TEST(FixtureXrefStream, hasRowsOfTheWidthsAskedFor) {
    EXPECT_EQ(fixturePDF("{{objectstream 1 0 without=/Type}}\n{{object 2}}\n{{endobjectstream}}\n"
                         "{{entry 3 7 513 1}}\n"
                         "{{xrefstream 4 0 W=1,2,1 filter=/ASCIIHexDecode zero=no}}\n"
                         "/Root 9 0 R\n{{endxrefstream}}\n{{startxref}}\n"),
              "1 0 obj\n<< /N 1 /First 4 /Length 4 >>\nstream\n2 0\n\nendstream\nendobj\n"
              "4 0 obj\n<< /Type /XRef /Size 5 /W [1 2 1] /Index [1 4] /Length 33"
              " /Filter /ASCIIHexDecode\n/Root 9 0 R >>\nstream\n"
              "01000000"
              "02000100"
              "07020101"
              "01004300>\nendstream\nendobj\nstartxref\n67\n");
}

TEST(FixtureXrefStream, saysItsPredictor) {
    EXPECT_THAT(fixturePDF("{{xrefstream 1 0 filter=/ASCIIHexDecode,/FlateDecode predictor=12}}\n"
                           "{{endxrefstream}}"),
                HasSubstr("/Filter [/ASCIIHexDecode /FlateDecode]"
                          " /DecodeParms [null << /Predictor 12 /Columns 7 >>]"));
}

TEST(FixtureHybrid, listsOnlyHiddenObjectsAndIsNoSection) {
    const std::string bytes = fixturePDF(
        "{{objectstream 1 0}}\n{{object 2}} 5\n{{endobjectstream}}\n"
        "{{xrefstream 3 0 hybrid W=1,1,1 filter=/ASCIIHexDecode}}\n{{endxrefstream}}\n"
        "{{xref zero=no}}\n{{startxref}}\n");
    EXPECT_THAT(bytes, HasSubstr("/Index [2 1]"));
    EXPECT_THAT(bytes, HasSubstr("stream\n020100>\nendstream"));
    EXPECT_THAT(bytes, HasSubstr("xref\n1 1\n0000000000 00000 n \n3 1\n"));
    EXPECT_THAT(bytes, Not(HasSubstr("/Prev")));
    EXPECT_THAT(bytes, EndsWith("startxref\n" + std::to_string(bytes.find("\nxref\n") + 1) + "\n"));
}

}  // namespace
}  // namespace quirebind::test
