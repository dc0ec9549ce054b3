// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The syntax of objects (ISO 32000-2, 7.2 and 7.3) in spellings that are rare but allowed, or that
// real files have although they are not.

#include <string>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

std::string respelt(const std::string& what, const std::string& with) {
    return replaced(onePageWith(), what, with);
}

/// The content stream with another dictionary.
std::string withContent(const std::string& dictionary, const std::string& objects = "") {
    return replaced(onePageWith(objects), "<< /Length {{length}} >>", dictionary);
}

const std::string kSprinkled = R"({{header 1.7}}
{{object 1 0}}%the catalog
<<%
/Type%
/Catalog%
/Pages%
2%
0%
R%
>>%
endobj
{{object 2 0}}<</Type/Pages/Kids[3 0 R]/Count 1>>endobj
{{object 3 0}}
{{hex 00 09 0c 0d 0a}}<<{{hex 00}}/Type{{hex 0c}}/Page{{hex 00 00}}/Parent{{hex 09}}2{{hex 00}}0{{hex 0c}}R
/MediaBox[ 0 0 % nothing (but a comment << [
200{{hex 09}}300]/Contents 4 0 R/Resources<</Font<</F1 5 0 R>>>>>>
endobj
{{object 4 0}}<</Length {{length}}>>
{{stream}}
BT /F1 12 Tf 20 150 Td (one) Tj ET
{{endstream}}endobj
{{object 5 0}}<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>endobj
{{xref}}
trailer%
<</Size {{size}}/Root%
1 0 R>>
{{startxref}}
%%EOF
)";

INSTANTIATE_TEST_SUITE_P(
    Name, ReadableFile,
    ::testing::Values(Kind("ofThePageTreeEscaped", respelt("/Pages 2", "/P#61ges 2")),
                      Kind("ofTheKidsEscaped", respelt("/Kids", "/K#69ds")),
                      Kind("ofTheCatalogEscaped", respelt("/Root", "/Ro#6ft")),
                      Kind("ofTheTypeEscaped", respelt("/Type /Pages", "/#54ype /#50ages")),
                      Kind("ofTheParentEscaped", respelt("/Parent", "/P#61rent")),
                      Kind("ofTheBoxEscaped", respelt("/MediaBox", "/Medi#61Box")),
                      Kind("ofTheLengthEscaped", respelt("/Length", "/L#65ngth"))),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    WhiteSpace, ReadableFile,
    ::testing::Values(
        Kind("andCommentsEverywhere", kSprinkled),
        Kind("withinAReference", respelt("/Contents 4 0 R", "/Contents 4\n\t0\r\n\fR")),
        // A comment counts as white space (ISO 32000-2, 7.2.4), also there.
        Kind("thatIsACommentWithinAReference",
             respelt("/Contents 4 0 R", "/Contents 4 % 7 0 R\n0 %\nR")),
        Kind("thatIsMissingBehindAReference", respelt("/Contents 4 0 R\n", "/Contents 4 0 R")),
        Kind("thatIsMissingBeforeEndobj", respelt(">>\nendobj", ">>endobj")),
        Kind("beforeAnObject", respelt("{{object 3 0}}", "{{object 3 0}}\n\n% page\n\n")),
        Kind("behindTheKeywordStream",
             replaced(replaced(withContent("<< /Length 34 >>"), "{{stream}}", "stream  {{hex 0d}}"),
                      "{{endstream}}", "endstream"))),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    Length, ReadableFile,
    ::testing::Values(
        Kind("thatIsIndirect",
             withContent("<< /Length 6 0 R >>", "{{object 6 0}}\n{{length 4}}\nendobj\n")),
        Kind("thatIsIndirectTwice",
             withContent("<< /Length 6 0 R >>",
                         "{{object 6 0}} 7 0 R endobj\n{{object 7 0}} {{length 4}} endobj\n")),
        Kind("thatIsTooLong", withContent("<< /Length {{length+7}} >>")),
        Kind("thatIsTooShort", withContent("<< /Length {{length-7}} >>")),
        Kind("thatIsZero", withContent("<< /Length 0 >>")),
        Kind("thatIsNegative", withContent("<< /Length -1 >>")),
        Kind("thatIsLongerThanTheFile", withContent("<< /Length 999999999 >>")),
        Kind("thatIsMissing", withContent("<< >>")),
        Kind("thatIsNull", withContent("<< /Length null >>")),
        Kind("thatIsAName", withContent("<< /Length /Long >>")),
        Kind("thatRefersToNothing", withContent("<< /Length 99 0 R >>")),
        Kind("thatIsARealNumber", withContent("<< /Length {{length}}.0 >>"))),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    Object, ReadableFile,
    ::testing::Values(
        Kind("withoutEndobj", respelt("/WinAnsiEncoding >>\nendobj", "/WinAnsiEncoding >>\n")),
        Kind("withBracketsInStrings",
             respelt("/MediaBox", "/A (]>>) /B (\\)) /C (a(b)c\\() /D <28> /MediaBox"))),
    nameOfKind);

// Readers do not agree on which of them counts, so both have to be right.
TEST(Length, thatIsGivenTwiceIsRightInBothPlaces) {
    const Bench bench;
    const std::string merged =
        bench.mergeFixture(withContent("<< /Length 3 /Filter [] /Length 99 0 R >>"));
    EXPECT_TRUE(test::pageCounts(merged).allAre(1));
    EXPECT_EQ(test::pageTexts(merged).at(0), "one");
    EXPECT_NE(Bench::read(merged).find("/Length 34 /Filter [] /Length 34"), std::string::npos);
}

TEST(Object, keepsRepeatedKeys) {
    const Bench bench;
    const std::string merged =
        bench.mergeFixture(respelt("/MediaBox", "/A (first) /A (second) /MediaBox"));
    EXPECT_TRUE(test::pageCounts(merged).allAre(1));
    EXPECT_NE(Bench::read(merged).find("/A (first) /A (second)"), std::string::npos);
}

}  // namespace
}  // namespace quirebind::pdftest
