// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Objects that are not written as they should be, in files whose table is of no use, so that the
// objects have to be found by what they look like.

#include <string>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"
#include "Tests/Support/FixturePDF.h"

namespace quirebind::pdftest {
namespace {

const std::string kEnd = "trailer\n<< /Size 6 /Root 1 0 R >>\nstartxref\n0\n%%EOF\n";

std::string withoutTable(const std::string& objects) {
    return "{{header 1.4}}\n" + objects + kEnd;
}

std::string onePage() {
    return std::string(kOnePage);
}

std::string respelt(const std::string& what, const std::string& with) {
    return withoutTable(replaced(onePage(), what, with));
}

/// All `what` replaced.
std::string without(std::string text, const std::string& what) {
    while (text.find(what) != std::string::npos) text = replaced(text, what, "");
    return text;
}

std::string withContent(const std::string& dictionary, const std::string& objects = "") {
    return withoutTable(replaced(onePage(), "<< /Length {{length}} >>", dictionary) + objects);
}

/// Each line end replaced by a blank, but those that end comments or belong to a stream.
std::string onOneLine() {
    return "{{header 1.4}}\n1 0 obj <</Type/Catalog/Pages 2 0 R>> endobj 2 0 obj "
           "<</Type/Pages/Kids[3 0 R]/Count 1>> endobj 3 0 obj <</Type/Page/Parent 2 0 R"
           "/MediaBox[0 0 200 300]/Contents 4 0 R/Resources<</Font<</F1 5 0 R>>>>>> endobj 4 0 obj "
           "<</Length 34>>stream\nBT /F1 12 Tf 20 150 Td (one) Tj ETendstream endobj 5 0 obj "
           "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>endobj "
           "trailer<</Root 1 0 R/Size 6>>";
}

INSTANTIATE_TEST_SUITE_P(
    DamagedObject, ReadableFile,
    ::testing::Values(
        Kind("withoutEndobj", withoutTable(without(onePage(), "endobj\n"))),
        Kind("withoutEndobjAndAnyWhiteSpace", respelt(">>\nendobj\n{{object 2 0}}", ">>2 0 obj")),
        Kind("behindEndobjWithoutWhiteSpace", respelt("endobj\n{{object 3 0}}", "endobj3 0 obj")),
        Kind("onOneLineWithAllOthers", onOneLine()),
        Kind("whoseHeaderHasManyBlanks", respelt("{{object 3 0}}", "3  \t 0\n\n obj")),
        Kind("whoseHeaderHasALeadingZero", respelt("{{object 3 0}}", "0003 00000 obj")),
        Kind("whoseHeaderTouchesItsValue", respelt("{{object 3 0}}\n", "3 0 obj")),
        Kind("behindOneWithoutAValue", respelt("{{object 3 0}}", "{{object 8 0}}\n{{object 3 0}}")),
        Kind("behindOneThatIsNotClosed",
             respelt("{{object 3 0}}", "{{object 8 0}}\n<< /A [ (\nendobj\n{{object 3 0}}")),
        Kind("behindOneWithBracketsThatDoNotMatch",
             respelt("{{object 3 0}}", "{{object 8 0}}\n<< /A ] >> )\nendobj\n{{object 3 0}}")),
        Kind("behindGarbage", respelt("{{object 3 0}}",
                                      "{{hex 00 ff 28 3c 3c 5b 80}} obj 1 obj x 0 obj "
                                      "99999999999999999999 0 obj\n{{object 3 0}}")),
        Kind("thatAStringLooksLike",
             respelt("/MediaBox", "/A (3 0 obj << /Type /Page >> endobj) /MediaBox")),
        Kind("thatACommentLooksLike",
             withoutTable(onePage() + "% 3 0 obj << /Type /Page >> endobj\n")),
        Kind("behindTheEndOfTheFile",
             withoutTable(replaced(onePage(), "{{object 5 0}}", "%%EOF5 0 obj"))),
        Kind("betweenTheTablesOfSeveralRevisions",
             withoutTable(replaced(onePage(), "{{object 4 0}}",
                                   "xref\n0 1\n0000000000 65535 f \ntrailer\n<< /Size 1 >>\n"
                                   "startxref\n9\n%%EOF\n{{object 4 0}}")))),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    DamagedStream, ReadableFile,
    ::testing::Values(
        Kind("withTooLongALength", withContent("<< /Length {{length+7}} >>")),
        Kind("withTooShortALength", withContent("<< /Length {{length-7}} >>")),
        Kind("withALengthThatLeadsToAnotherStream",
             withContent("<< /Length {{length+90}} >>",
                         "{{object 8 0}}\n<< /Length 3 >>\nstream\nabc\nendstream\nendobj\n")),
        Kind("withoutALength", withContent("<< >>")),
        Kind("whoseLengthIsNotThere", withContent("<< /Length 99 0 R >>")),
        Kind("whoseLengthFollows",
             withContent("<< /Length 8 0 R >>", "{{object 8 0}}\n{{length 4}}\nendobj\n")),
        Kind("whoseWrongLengthFollows",
             withContent("<< /Length 8 0 R >>", "{{object 8 0}}\n5\nendobj\n")),
        Kind("closedByEndobjAlone",
             withoutTable(replaced(replaced(replaced(onePage(), "{{length}}", "99"), "{{stream}}",
                                            "stream"),
                                   "{{endstream}}\n", ""))),
        Kind("closedByTheNextObject",
             withoutTable(replaced(replaced(replaced(onePage(), "{{length}}", "99"), "{{stream}}",
                                            "stream"),
                                   "{{endstream}}\nendobj\n", "")))),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    LineEnds, ReadableFile,
    ::testing::Values(Kind("thatAreCarriageReturns", "{{eol cr}}\n" + withoutTable(onePage())),
                      Kind("thatAreBoth", "{{eol crlf}}\n" + withoutTable(onePage())),
                      Kind("ofAllKinds", withoutTable("{{eol cr}}\n" +
                                                      replaced(onePage(), "{{object 3 0}}",
                                                               "{{eol crlf}}\n{{object 3 0}}") +
                                                      "{{eol lf}}\n"))),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    Surroundings, ReadableFile,
    ::testing::Values(
        Kind("ofGarbageBefore", "{{hex 00 01 02 28 3c 3c 25}}\nobj <<\n" + withoutTable(onePage())),
        Kind("ofGarbageBehind", withoutTable(onePage()) + "\n(<<[ {{fill 9000 00}}"),
        Kind("ofMuchGarbageBefore", "{{fill 100000 58}}\n" + withoutTable(onePage())),
        Kind("ofManyEnds", withoutTable(onePage()) + "%%EOF\n%%EOF\nstartxref\n0\n%%EOF\n"),
        Kind("ofAMail",
             "Content-Type: application/pdf\n\n" + withoutTable(onePage()) + "\n--boundary--\n")),
    nameOfKind);

// What happens to a file that a program takes for text.
TEST(Recovery, findsEverythingInAFileWhoseLineEndsWereConverted) {
    const Bench bench;
    std::string converted;
    for (const char c : test::simplePDF(3)) {
        if (c == '\n') converted += '\r';
        converted += c;
    }
    const std::string merged = bench.merge({bench.add("source.pdf", converted)});
    expectPages(merged, {200, 200, 200}, {"page-1", "page-2", "page-3"});
}

}  // namespace
}  // namespace quirebind::pdftest
