// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Support/FixturePDF.h"
#include "Tests/Support/Oracle.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using ::testing::StartsWith;

/// Two pages that inherit from their parent what the second one does not say itself.
constexpr std::string_view kInheriting = R"(
{{header 1.7}}
{{object 1 0}} << /Type /Catalog /Pages 2 0 R >> endobj
{{object 2 0}}
<< /Type /Pages /Count 2 /Kids [3 0 R 4 0 R] /MediaBox [0 0 500.5 400] /CropBox [10 20 300 200]
   /Rotate 90 >>
endobj
{{object 3 0}} << /Type /Page /Parent 2 0 R >> endobj
{{object 4 0}}
<< /Type /Page /Parent 2 0 R /MediaBox [600 500 100 50] /CropBox [150 60 200 70] /Rotate 180 >>
endobj
{{xref}}
trailer << /Size {{size}} /Root 1 0 R >>
{{startxref}}
%%EOF
)";

const PageView kFirst{.mediaBox = {.right = 500.5, .top = 400},
                      .cropBox = {.left = 10, .bottom = 20, .right = 300, .top = 200},
                      .rotate = 90};
const PageView kSecond{.mediaBox = {.left = 100, .bottom = 50, .right = 600, .top = 500},
                       .cropBox = {.left = 150, .bottom = 60, .right = 200, .top = 70},
                       .rotate = 180};

class OracleTest : public ::testing::Test {
 protected:
    std::string file(std::string_view bytes) {
        const std::string name = std::to_string(count_++) + ".pdf";
        folder_.write(name, bytes);
        return folder_ / name;
    }

 private:
    TemporaryFolder folder_;
    int count_ = 0;
};

using PageOracle = OracleTest;
using TextOracle = OracleTest;
using RenderingOracle = OracleTest;
using ObjectOracle = OracleTest;
using DamageOracle = OracleTest;

TEST_F(PageOracle, seesWhatPagesInherit) {
    const std::string path = file(fixturePDF(kInheriting));
    EXPECT_THAT(pagesByPoppler(path), ElementsAre(kFirst, kSecond));
    EXPECT_THAT(pagesByMuPDF(path), ElementsAre(kFirst, kSecond));
}

TEST_F(PageOracle, tellsBoxesApartButNotTheirRounding) {
    PageView other = kFirst;
    other.mediaBox.right += 0.01;
    EXPECT_EQ(other, kFirst);
    other.mediaBox.right += 0.1;
    EXPECT_FALSE(other == kFirst);
    other = kFirst;
    other.cropBox.bottom += 1;
    EXPECT_FALSE(other == kFirst);
    other = kFirst;
    other.rotate = 0;
    EXPECT_FALSE(other == kFirst);
}

TEST_F(TextOracle, givesEachPageItsText) {
    EXPECT_THAT(pageTexts(file(simplePDF(2, {.label = "some words"}))),
                ElementsAre("some words-1", "some words-2"));
    EXPECT_THAT(pageTexts(file(fixturePDF(kInheriting))), ElementsAre("", ""));
}

TEST_F(RenderingOracle, comparesPagesAcrossFiles) {
    const std::string one = file(simplePDF(3));
    const std::string sameOtherwiseStored = file(simplePDF(3, {.objectStreams = true}));
    const std::string other = file(simplePDF(3, {.label = "leaf"}));
    for (const auto& render : {renderingsByMuPDF, renderingsByPoppler}) {
        const auto pages = render(one);
        ASSERT_THAT(pages, SizeIs(3));
        EXPECT_EQ(pages, render(sameOtherwiseStored));
        EXPECT_NE(pages[0], pages[1]);
        EXPECT_NE(pages[0], render(other)[0]);
    }
}

TEST_F(ObjectOracle, showsObjectsTrailerPagesAndData) {
    const std::string path = file(fixturePDF(kInheriting));
    EXPECT_EQ(objectText(path, "1"), "<< /Pages 2 0 R /Type /Catalog >>");
    EXPECT_EQ(objectText(path, "3,0"), "<< /Parent 2 0 R /Type /Page >>");
    EXPECT_EQ(objectText(path, "trailer"), "<< /Root 1 0 R /Size 5 >>");
    EXPECT_THAT(pageDictionaries(path),
                ElementsAre("<< /Parent 2 0 R /Type /Page >>", HasSubstr("/Rotate 180")));
    EXPECT_THAT(fileJSON(path), HasSubstr("\"/Rotate\": 180"));
    EXPECT_EQ(streamData(file(simplePDF(1)), 5), "BT /F1 24 Tf 20 150 Td (page-1) Tj ET");
}

TEST_F(DamageOracle, isToldFromHealth) {
    const std::string healthy = file(simplePDF(2));
    const std::string bytes = simplePDF(2);
    const std::string damaged = file(bytes.substr(0, bytes.find("xref")));
    const std::string nothing = file("nothing");

    EXPECT_EQ(qpdfCheck(healthy).exitCode, 0);
    EXPECT_NE(qpdfCheck(damaged).exitCode, 0);
    EXPECT_THAT(qpdfCheck(nothing).text, HasSubstr("can't find PDF header"));
    EXPECT_TRUE(pageCounts(healthy).allAre(2));
    EXPECT_FALSE(pageCounts(healthy).allAre(3));
    EXPECT_EQ(pageCounts(nothing), PageCounts());
}

TEST_F(DamageOracle, thatCannotAnswerFailsTheTest) {
    const std::string nothing = file("nothing");
    EXPECT_THROW(static_cast<void>(pagesByPoppler(nothing)), std::runtime_error);
    EXPECT_THROW(static_cast<void>(pagesByMuPDF(nothing)), std::runtime_error);
    EXPECT_THROW(static_cast<void>(pageTexts(nothing)), std::runtime_error);
    EXPECT_THROW(static_cast<void>(renderingsByMuPDF(nothing)), std::runtime_error);
    EXPECT_THROW(static_cast<void>(renderingsByPoppler(nothing)), std::runtime_error);
    EXPECT_THROW(static_cast<void>(objectText(nothing, "1")), std::runtime_error);
    try {
        static_cast<void>(pageDictionaries(nothing));
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), StartsWith("qpdf failed with 2: "));
    }
}

}  // namespace
}  // namespace quirebind::test
