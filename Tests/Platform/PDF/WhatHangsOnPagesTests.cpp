// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// What belongs to a page besides its content: article beads, thumbnails, files, notes with their
// replies and pop-ups, media, and for which device it was made.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::AllOf;
using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;

std::string stream(int number, const std::string& entries, const std::string& data) {
    return object(number, "<< " + entries + " /Length {{length}} >>\n{{stream}}\n" + data +
                              "\n{{endstream}}");
}

std::string pageWith(const std::string& entry, const std::string& objects,
                     const std::string& catalog = "") {
    return replaced(replaced(onePageWith(objects), "/MediaBox", entry + " /MediaBox"),
                    "/Type /Catalog", "/Type /Catalog " + catalog);
}

/// Merges the page twice; gives what all objects say.
std::string mergedTwice(const std::string& text) {
    const Bench bench;
    const std::string source = bench.fixture("a.pdf", text);
    const std::string merged = bench.merge({source, source});
    expectPages(merged, {200, 200}, {"one", "one"});
    return everyObject(merged);
}

TEST(Articles, areListedWhereTheirBeadsAreOnPages) {
    const std::string all = mergedTwice(
        pageWith("/B [30 0 R 31 0 R]",
                 object(30, "<< /T 32 0 R /N 31 0 R /V 31 0 R /P 3 0 R /R [0 0 9 9] >>") +
                     object(31, "<< /N 30 0 R /V 30 0 R /P 3 0 R /R [0 9 9 18] >>") +
                     object(32, "<< /F 30 0 R /I << /Title (Story) >> >>") +
                     object(33, "<< /F 34 0 R /I << /Title (Other) >> >>") +
                     object(34, "<< /T 33 0 R /N 34 0 R /V 34 0 R /R [0 9 9 18] >>"),
                 "/Threads [33 0 R 32 0 R 32 0 R 99 0 R]"));
    EXPECT_EQ(countOf("/Title (Story)", all), 2U);
    EXPECT_EQ(countOf("/Title (Other)", all), 0U);
    EXPECT_THAT(all, MatchesRegex("(.|\n)*/Threads \\[ [0-9]+ 0 R [0-9]+ 0 R \\](.|\n)*"));
}

TEST(Articles, areListedWhereTheirBeadsDoNotNameThem) {
    const std::string all =
        mergedTwice(pageWith("/B 35 0 R",
                             object(30, "<< /N 30 0 R /V 30 0 R /P 3 0 R /R [0 0 9 9] >>") +
                                 object(32, "<< /F 30 0 R /I << /Title (Story) >> >>") +
                                 object(35, "[30 0 R]") + object(36, "[32 0 R]"),
                             "/Threads 36 0 R"));
    EXPECT_EQ(countOf("/Title (Story)", all), 2U);
    EXPECT_THAT(all, HasSubstr("/Threads"));
}

// As Ghostscript writes them.
TEST(Articles, areListedWhereTheirPagesDoNotListBeads) {
    const std::string all = mergedTwice(
        pageWith("",
                 object(30, "<< /T 32 0 R /N 30 0 R /V 30 0 R /P 3 0 R /R [0 0 9 9] >>") +
                     object(32, "<< /F 30 0 R /I << /Title (Story) >> >>") +
                     object(33, "<< /F 34 0 R /I << /Title (Other) >> >>") +
                     object(34, "<< /T 33 0 R /N 34 0 R /V 34 0 R /P 99 0 R /R [0 0 9 9] >>"),
                 "/Threads [32 0 R 33 0 R]"));
    EXPECT_EQ(countOf("/Title (Story)", all), 2U);
    EXPECT_EQ(countOf("/Title (Other)", all), 0U);
    EXPECT_THAT(all, HasSubstr("/Threads"));
}

// A number or a title would mean some other document's article.
TEST(Articles, areWhereActionsLead) {
    for (const std::string thread :
         {"1", "(Story)", "<FEFF00530074006F00720079>", "32 0 R", "35 0 R", "36 0 R"}) {
        const std::string all = mergedTwice(
            pageWith("/AA << /O << /S /Thread /D " + thread + " /B 0 >> >>",
                     object(30, "<< /T 32 0 R /N 30 0 R /V 30 0 R /P 3 0 R /R [0 0 9 9] >>") +
                         object(32, "<< /F 30 0 R /I << /Title (Story) >> >>") +
                         object(33, "<< /F 34 0 R /I << /Title (Other) >> >>") +
                         object(34, "<< >>") + object(35, "1") + object(36, "(Story)"),
                     "/Threads [33 0 R 32 0 R]"));
        EXPECT_EQ(countOf("/Title (Story)", all), 2U) << thread;
        EXPECT_EQ(countOf("(Other)", all), 0U) << thread;
        EXPECT_EQ(countOf("(Story)", all), 2U) << thread;
        EXPECT_THAT(all, Not(AnyOf(HasSubstr("/D 1"), HasSubstr("obj\n1\nendobj")))) << thread;
    }
    for (const std::string nothing : {"7", "-1", "(Unknown)"})
        EXPECT_THAT(mergedTwice(pageWith("/AA << /O << /S /Thread /D " + nothing + " >> >>", "")),
                    HasSubstr("/S /Thread >>"));  // qpdf leaves null out
    EXPECT_THAT(mergedTwice(pageWith("/AA << /O << /S /Thread /D 7 /F (other.pdf) >> >>", "")),
                HasSubstr("/D 7"));
}

TEST(Page, keepsWhatHangsOnIt) {
    const std::string all = mergedTwice(
        pageWith("/Thumb 30 0 R /AF [31 0 R] /PieceInfo << /X << /Private (piece) >> >> /Metadata "
                 "32 0 R /OutputIntents [<< /S /GTS_PDFX /Info (of the page) >>] /Tabs /S /Dur 3",
                 stream(30, "/Width 1 /Height 1 /ColorSpace /DeviceGray /BitsPerComponent 8", "t") +
                     object(31, "<< /Type /Filespec /F (data.csv) /EF << /F 33 0 R >> >>") +
                     stream(32, "/Type /Metadata /Subtype /XML", "<x:page/>") +
                     stream(33, "/Type /EmbeddedFile", "1,2,3")));
    for (const std::string kept : {"/Height 1", "(data.csv)", "/EmbeddedFile", "(piece)",
                                   "/Metadata", "(of the page)", "/Tabs /S", "/Dur 3"})
        EXPECT_EQ(countOf(kept, all) / (kept == "/Metadata" ? 2 : 1), 2U) << kept;
}

TEST(Notes, keepTheirRepliesAndPopUps) {
    const std::string note = "/Type /Annot /Rect [0 0 9 9] /P 3 0 R ";
    const std::string all = mergedTwice(pageWith(
        "/Annots [30 0 R 31 0 R 32 0 R]",
        object(30, "<< " + note + "/Subtype /Text /T (Ann) /Contents (note) /Popup 31 0 R >>") +
            object(31, "<< " + note + "/Subtype /Popup /Parent 30 0 R /Open true >>") +
            object(32, "<< " + note +
                           "/Subtype /Text /T (Bob) /Contents (reply) /IRT 30 0 R /RT /R >>")));
    EXPECT_EQ(countOf("(note)", all), 2U);
    EXPECT_EQ(countOf("(reply)", all), 2U);
    EXPECT_EQ(countOf("/Subtype /Popup", all), 2U);
    EXPECT_EQ(countOf("(Ann)", all), 2U);
    EXPECT_THAT(all, AllOf(Not(HasSubstr("/IRT null")), Not(HasSubstr("/Popup null"))));
}

TEST(Media, comeWithTheirData) {
    const std::string annotation = "/Type /Annot /Rect [0 0 9 9] ";
    const std::string all = mergedTwice(pageWith(
        "/Annots [30 0 R 31 0 R 32 0 R]",
        object(30, "<< " + annotation + "/Subtype /3D /3DD 33 0 R /3DV 34 0 R >>") +
            object(31, "<< " + annotation +
                           "/Subtype /RichMedia /RichMediaContent << /Assets << /Names [(film) 35 "
                           "0 R] >> >> >>") +
            object(32, "<< " + annotation +
                           "/Subtype /Screen /A << /S /Rendition /OP 0 /AN 32 0 R /R << /S /MR /C "
                           "<< /S /MCD /D 35 0 R >> >> >> >>") +
            stream(33, "/Type /3D /Subtype /U3D /VA [34 0 R]", "U3D") +
            object(34, "<< /Type /3DView /XN (view) >>") +
            object(35, "<< /Type /Filespec /F (film.mp4) /EF << /F 36 0 R >> >>") +
            stream(36, "/Type /EmbeddedFile", "film")));
    for (const std::string kept : {"/Subtype /U3D", "(view)", "(film.mp4)", "/EmbeddedFile"})
        EXPECT_EQ(countOf(kept, all), 2U) << kept;
}

std::string madeFor(const std::string& condition, const std::string& profile) {
    return pageWith("",
                    object(30, "[31 0 R]") +
                        object(31,
                               "<< /Type /OutputIntent /S /GTS_PDFX "
                               "/OutputConditionIdentifier (" +
                                   condition + ") /DestOutputProfile 32 0 R >>") +
                        stream(32, "/N 4", profile),
                    "/OutputIntents 30 0 R");
}

std::string mergedIntents(const std::vector<std::string>& texts) {
    const Bench bench;
    std::vector<std::string> sources;
    for (const std::string& text : texts)
        sources.push_back(bench.fixture(std::to_string(sources.size()) + ".pdf", text));
    const std::string merged = bench.merge(sources);
    expectSound(merged, static_cast<int>(texts.size()));
    return everyObject(merged);
}

TEST(OutputIntents, areKeptWhereAllSourcesHaveTheSame) {
    const std::string fogra = madeFor("FOGRA39", "profile");
    const std::string all = mergedIntents({fogra, fogra, fogra});
    EXPECT_THAT(all, HasSubstr("/OutputIntents"));
    EXPECT_EQ(countOf("(FOGRA39)", all), 1U);
    EXPECT_EQ(countOf("/N 4", all), 1U);
}

TEST(OutputIntents, areNotKeptWhereSourcesDiffer) {
    const std::string fogra = madeFor("FOGRA39", "profile");
    for (const std::string& other :
         {madeFor("FOGRA51", "profile"), madeFor("FOGRA39", "other"), onePageWith()}) {
        EXPECT_THAT(mergedIntents({fogra, other, fogra}), Not(HasSubstr("FOGRA")));
        EXPECT_THAT(mergedIntents({other, fogra}), Not(HasSubstr("/OutputIntents")));
    }
}

// LibreOffice, for one, writes the time of the export into each document's profile.
TEST(OutputIntents, areKeptWhereProfilesWereMadeAtDifferentTimes) {
    const auto madeAt = [](const std::string& time, const std::string& colours) {
        const std::string date = "2026-11-24" + time;
        return madeFor("FOGRA39", std::string(24, 'x') + date.substr(0, 12) + std::string(48, 'x') +
                                      (time + "digest of 16 bytes").substr(0, 16) +
                                      std::string(28, 'x') + colours);
    };
    const std::string all = mergedIntents({madeAt("09", "sRGB"), madeAt("10", "sRGB")});
    EXPECT_THAT(all, HasSubstr("/OutputIntents"));
    EXPECT_EQ(countOf("(FOGRA39)", all), 1U);
    EXPECT_THAT(mergedIntents({madeAt("09", "sRGB"), madeAt("10", "other")}),
                Not(HasSubstr("/OutputIntents")));
}

TEST(OutputIntents, areKeptWhereProfilesAreEncodedDifferently) {
    const std::string plain = madeFor("FOGRA39", "profile");
    const std::string inHex =
        replaced(madeFor("FOGRA39", "70726f66696c65>"), "/N 4", "/N 4 /Filter /ASCIIHexDecode");
    EXPECT_EQ(countOf("(FOGRA39)", mergedIntents({plain, inHex})), 1U);
    const std::string broken =
        replaced(madeFor("FOGRA39", "7072!"), "/N 4", "/N 4 /Filter /ASCIIHexDecode");
    EXPECT_THAT(mergedIntents({plain, broken}), Not(HasSubstr("/OutputIntents")));
}

TEST(OutputIntents, thatAreDamagedAreNone) {
    for (const std::string broken : {"5", "[5]", "[99 0 R]", "[<< /S 32 0 R /X [32 0 R] >>]"}) {
        const std::string text =
            replaced(madeFor("FOGRA39", "x"), "/OutputIntents 30 0 R", "/OutputIntents " + broken);
        EXPECT_THAT(mergedIntents({text, text}), Not(HasSubstr("/OutputIntents"))) << broken;
    }
}

}  // namespace
}  // namespace quirebind::pdftest
