// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Whole files of every kind that fixtures can express, as other readers see them.

#include <algorithm>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Support/FixturePDF.h"
#include "Tests/Support/Oracle.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// A document's objects 1 to 3: a page of 200 by 300 whose content is object 4.
constexpr std::string_view kDictionaries = R"(
{{object 1 0}}
<< /Type /Catalog /Pages 2 0 R >>
endobj
{{object 2 0}}
<< /Type /Pages /Kids [3 0 R] /Count 1 >>
endobj
{{object 3 0}}
<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] /Contents 4 0 R >>
endobj
)";

constexpr std::string_view kContent = R"(
{{object 4 0}}
<< /Length {{length}} >>
{{stream}}
0 0 10 10 re f
{{endstream}}
endobj
)";

constexpr std::string_view kEnd = R"(
{{startxref}}
%%EOF
)";

std::string onePage(const std::string& before, const std::string& after) {
    return before + std::string(kDictionaries) + std::string(kContent) + after + std::string(kEnd);
}

/// The catalog, page tree and page as members of an object stream.
constexpr std::string_view kMembers = R"(
{{object 1}}
<< /Type /Catalog /Pages 2 0 R >>
{{object 2}}
<< /Type /Pages /Kids [3 0 R] /Count 1 >>
{{object 3}}
<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] /Contents 4 0 R >>
)";

std::string compressedPage(const std::string& objectStreamOptions,
                           const std::string& xrefStreamOptions) {
    return "{{header 1.5}}" + std::string(kContent) + "{{objectstream 5 0 " + objectStreamOptions +
           "}}" + std::string(kMembers) + "{{endobjectstream}}\n{{xrefstream 6 0 " +
           xrefStreamOptions + "}}\n/Root 1 0 R\n{{endxrefstream}}" + std::string(kEnd);
}

constexpr std::string_view kTrailer = "trailer\n<< /Size {{size}} /Root 1 0 R >>";
constexpr std::string_view kTrailerOfUpdate =
    "trailer\n<< /Size {{size}} /Root 1 0 R /Prev {{prev}} >>";

/// A second revision whose page is 400 wide, listed as `section` says.
std::string twoRevisions(const std::string& section) {
    return onePage("{{header 1.5}}", "{{xref}}\n" + std::string(kTrailer)) +
           R"({{object 3 0}}
<< /Type /Page /Parent 2 0 R /MediaBox [0 0 400 300] /Contents 4 0 R >>
endobj
)" + section +
           std::string(kEnd);
}

struct Kind {
    Kind(std::string itsName, std::string itsText, double itsWidth = 200)
        : name(std::move(itsName)), text(std::move(itsText)), width(itsWidth) {}

    std::string name;
    std::string text;
    double width;
};

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds it by this name.
void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.name;
}

class WellFormedFixture : public ::testing::TestWithParam<Kind> {};

TEST_P(WellFormedFixture, isReadByAllReadersWithoutComplaint) {
    const TemporaryFolder folder;
    folder.write("a.pdf", fixturePDF(GetParam().text));
    const std::string file = folder / "a.pdf";

    const CheckResult check = qpdfCheck(file);
    EXPECT_EQ(check.exitCode, 0) << check.text;
    EXPECT_THAT(check.text, Not(HasSubstr("WARNING")));
    const PageCounts counts = pageCounts(file);
    EXPECT_TRUE(counts.allAre(1)) << ::testing::PrintToString(counts);
    const PageBox box{.right = GetParam().width, .top = 300};
    const PageView page{.mediaBox = box, .cropBox = box};
    EXPECT_THAT(pagesByPoppler(file), ElementsAre(page));
    EXPECT_THAT(pagesByMuPDF(file), ElementsAre(page));
    EXPECT_EQ(streamData(file, 4), "0 0 10 10 re f");
}

std::vector<Kind> tableKinds() {
    const std::string trailer(kTrailer);
    return {
        {"table", onePage("{{header 1.7}}", "{{xref}}\n" + trailer)},
        {"tableInPieces", onePage("{{header 1.7}}", "{{xref split=2,4}}\n" + trailer)},
        {"tableWithHole",
         onePage("{{header 1.7}}", "{{object 9 1}} (x) endobj\n{{xref}}\n" + trailer)},
        {"tableWithFreeObjects",
         onePage("{{header 1.7}}", "{{free 5 1}}\n{{free 7 65535}}\n{{xref}}\n" + trailer)},
        {"carriageReturns", onePage("{{eol cr}}\n{{header 1.7}}", "{{xref}}\n" + trailer)},
        {"bothLineEnds", onePage("{{eol crlf}}\n{{header 1.7}}", "{{xref}}\n" + trailer)},
        {"indirectLength", "{{header 1.7}}" + std::string(kDictionaries) + R"({{object 4 0}}
<< /Length 5 0 R /Filter /FlateDecode >>
{{stream filter=/FlateDecode}}
0 0 10 10 re f
{{endstream}}
endobj
{{object 5 0}}
{{length 4}}
endobj
{{xref}}
)" + trailer + std::string(kEnd)},
        {"tableAfterTable", twoRevisions("{{xref}}\n" + std::string(kTrailerOfUpdate)), 400},
        {"tableAfterTableFreeing",
         twoRevisions("{{free 8 1}}\n{{xref}}\n" + std::string(kTrailerOfUpdate)), 400},
        {"streamAfterTable",
         twoRevisions("{{xrefstream 5 0}}\n/Root 1 0 R /Prev {{prev}}\n{{endxrefstream}}"), 400},
    };
}

std::vector<Kind> streamKinds() {
    std::vector<Kind> kinds{
        {"plainStreams", compressedPage("", "")},
        {"widths", compressedPage("", "W=2,3,5")},
        {"widthsWithoutType",
         onePage("{{header 1.5}}",
                 "{{xrefstream 5 0 W=0,2,0 zero=no}}\n/Root 1 0 R\n{{endxrefstream}}")},
        {"index", compressedPage("", "split=2,5")},
        {"furtherEntries", compressedPage("", "without=/Index")},
        {"earlyChange",
         compressedPage("filter=/LZWDecode early=0", "filter=/LZWDecode early=0 predictor=12")},
    };
    for (const std::string filter :
         {"/FlateDecode", "/LZWDecode", "/RunLengthDecode", "/ASCIIHexDecode", "/ASCII85Decode",
          "/ASCIIHexDecode,/FlateDecode", "/ASCII85Decode,/RunLengthDecode,/LZWDecode"}) {
        std::string name = "filters" + filter;
        std::erase_if(name, [](char c) { return c == '/' || c == ','; });
        kinds.emplace_back(name, compressedPage("filter=" + filter, "filter=" + filter));
    }
    for (const std::string predictor : {"2", "10", "11", "12", "13", "14", "15"}) {
        const std::string options = "filter=/FlateDecode predictor=" + predictor;
        kinds.emplace_back("predictor" + predictor, compressedPage(options, options));
    }
    return kinds;
}

std::vector<Kind> mixedKinds() {
    const std::string content(kContent);
    const std::string members(kMembers);
    const std::string end(kEnd);
    const std::string visible =
        "{{object 1 0}}\n<< /Type /Catalog /Pages 2 0 R >>\nendobj\n" + content;
    const std::string hidden = R"(
{{objectstream 5 0 filter=/FlateDecode}}
{{object 2}}
<< /Type /Pages /Kids [3 0 R] /Count 1 >>
{{object 3}}
<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] /Contents 4 0 R >>
{{endobjectstream}}
{{xrefstream 6 0 hybrid filter=/FlateDecode}}
{{endxrefstream}}
)";
    const std::string trailer = "trailer\n<< /Size {{size}} /Root 1 0 R /XRefStm {{offset 6}}";
    return {
        {"hybrid", "{{header 1.5}}" + visible + hidden + "{{xref}}\n" + trailer + " >>" + end},
        // Readers of tables alone see a document without pages, as they do in files of some office
        // programs.
        {"hybridUpdate", "{{header 1.5}}" + visible +
                             "{{free 2 65535}}\n{{free 3 65535}}\n{{xref}}\n" +
                             std::string(kTrailer) + end + hidden + "{{xref}}\n" + trailer +
                             " /Prev {{prev}} >>" + end},
        {"extendedObjectStream", "{{header 1.5}}" + content + R"({{objectstream 5 0}}
{{object 1}}
<< /Type /Catalog /Pages 2 0 R >>
{{endobjectstream}}
{{objectstream 6 0 filter=/FlateDecode}}
/Extends 5 0 R
{{object 2}} << /Type /Pages /Kids [3 0 R] /Count 1 >>
{{object 3}} << /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] /Contents 4 0 R >>
{{endobjectstream}}
{{xrefstream 7 0}}
/Root 1 0 R
{{endxrefstream}})" + end},
        {"streamAfterStream", compressedPage("", "") + R"({{objectstream 7 0}}
{{object 3}}
<< /Type /Page /Parent 2 0 R /MediaBox [0 0 400 300] /Contents 4 0 R >>
{{endobjectstream}}
{{xrefstream 8 0 filter=/FlateDecode predictor=12}}
/Root 1 0 R
/Prev {{prev}}
{{endxrefstream}})" + std::string(kEnd),
         400},
        {"lengthOfObjectStreamIndirect", "{{header 1.5}}" + content + R"({{object 6 0}}
{{length 5}}
endobj
{{objectstream 5 0 filter=/FlateDecode}}
/Length 6 0 R
)" + members + R"({{endobjectstream}}
{{xrefstream 7 0}}
/Root 1 0 R
{{endxrefstream}})" + std::string(kEnd)},
    };
}

std::string nameOf(const ::testing::TestParamInfo<Kind>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Tables, WellFormedFixture, ::testing::ValuesIn(tableKinds()), nameOf);
INSTANTIATE_TEST_SUITE_P(Streams, WellFormedFixture, ::testing::ValuesIn(streamKinds()), nameOf);
INSTANTIATE_TEST_SUITE_P(Mixed, WellFormedFixture, ::testing::ValuesIn(mixedKinds()), nameOf);

TEST(Fixture, withJunkBeforeTheHeaderIsReadWhereverOffsetsCountFrom) {
    for (const std::string origin : {"header", "file"}) {
        const TemporaryFolder folder;
        folder.write("a.pdf", fixturePDF(onePage("junk\n{{header 1.7 origin=" + origin + "}}",
                                                 "{{xref}}\n" + std::string(kTrailer))));
        const PageCounts counts = pageCounts(folder / "a.pdf");
        EXPECT_TRUE(counts.allAre(1)) << origin << ": " << ::testing::PrintToString(counts);
    }
}

TEST(Fixture, countsFromTheHeaderAreWhatQpdfExpects) {
    const TemporaryFolder folder;
    folder.write("a.pdf", fixturePDF(onePage("{{fill 900 20}}{{header 1.7}}",
                                             "{{xref}}\n" + std::string(kTrailer))));
    const CheckResult check = qpdfCheck(folder / "a.pdf");
    EXPECT_EQ(check.exitCode, 0) << check.text;
}

TEST(Fixture, writtenWrongIsWrong) {
    const std::string trailer(kTrailer);
    const std::vector<std::string> wrong{
        "{{entry 3 1 @3+1 0}}\n{{xref}}\n" + trailer,
        "{{xref shift=1}}\n" + trailer,
        "{{omit 3}}\n{{xref}}\n" + trailer,
        "{{object 5 0}}\n<< /Length {{length+3}} >>\n{{stream}}\nabc\n{{endstream}}\nendobj\n"
        "{{xref}}\n" +
            trailer,
        "{{xrefstream 5 0 without=/W}}\n/Root 1 0 R\n{{endxrefstream}}",
    };
    for (const std::string& text : wrong) {
        const TemporaryFolder folder;
        folder.write("a.pdf", fixturePDF(onePage("{{header 1.7}}", text)));
        EXPECT_NE(qpdfCheck(folder / "a.pdf").exitCode, 0) << text;
    }
}

class SimpleDocument : public ::testing::TestWithParam<bool> {};

TEST_P(SimpleDocument, hasItsPagesTextsAndSizes) {
    const SimplePDFOptions options{
        .label = "Leaf", .version = "1.6", .objectStreams = GetParam(), .distinctSizes = true};
    const TemporaryFolder folder;
    folder.write("a.pdf", simplePDF(3, options));
    const std::string file = folder / "a.pdf";

    EXPECT_EQ(qpdfCheck(file).exitCode, 0) << qpdfCheck(file).text;
    EXPECT_THAT(qpdfCheck(file).text, HasSubstr("PDF Version: 1.6"));
    EXPECT_TRUE(pageCounts(file).allAre(3));
    EXPECT_THAT(pageTexts(file), ElementsAre("Leaf-1", "Leaf-2", "Leaf-3"));
    const auto sized = [](double width, double height) {
        const PageBox box{.right = width, .top = height};
        return PageView{.mediaBox = box, .cropBox = box};
    };
    EXPECT_THAT(pagesByPoppler(file), ElementsAre(sized(210, 310), sized(220, 320),  //
                                                  sized(230, 330)));
    const std::string kind = objectText(file, "trailer");
    EXPECT_EQ(kind.find("/XRef") != std::string::npos, GetParam()) << kind;
}

TEST_P(SimpleDocument, canBeLargeOrOfASinglePage) {
    for (const int pages : {1, 700}) {
        const TemporaryFolder folder;
        folder.write("a.pdf", simplePDF(pages, {.objectStreams = GetParam()}));
        EXPECT_TRUE(pageCounts(folder / "a.pdf").allAre(pages)) << pages;
        EXPECT_EQ(qpdfCheck(folder / "a.pdf").exitCode, 0) << pages;
    }
}

INSTANTIATE_TEST_SUITE_P(BothForms, SimpleDocument, ::testing::Bool());

}  // namespace
}  // namespace quirebind::test
