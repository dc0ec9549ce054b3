// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Layers (ISO 32000-2, 8.11): a page shows what it showed in its document, and viewers list the
// groups that the pages use.

#include <cstddef>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/PDF/PDFDocument.h"
#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// A page that shows four squares, each on a layer of its own, the groups 21 to 24; 25 is used by
/// nobody. Their names begin with `prefix`.
std::string layeredPage(const std::string& configuration, const std::string& prefix = "",
                        const std::string& objects = "") {
    std::string text(kOnePage);
    text = replaced(
        text, "/Type /Catalog",
        "/Type /Catalog /OCProperties << /OCGs [22 0 R 21 0 R 23 0 R 22 0 R 24 0 R 25 0 R] "
        "/D " +
            configuration + " >>");
    text = replaced(text, "/Resources << ",
                    "/Resources << /Properties << /L1 21 0 R /L2 22 0 R /L3 23 0 R /L4 24 0 R >> ");
    std::string content;
    for (int i = 1; i <= 4; ++i) {
        const std::string number = std::to_string(i);
        content += "/OC /L" + number + " BDC " + std::to_string(40 * i) + " 40 30 30 re f EMC\n";
        text += "{{object 2" + number + " 0}}\n<< /Type /OCG /Name (" + prefix + number +
                ") >>\nendobj\n";
    }
    text += "{{object 25 0}}\n<< /Type /OCG /Name (" + prefix + "unused) >>\nendobj\n" + objects;
    return document(replaced(text, "BT /F1", content + "BT /F1"));
}

/// The dictionary under /OCProperties of the catalog.
std::string propertiesOf(const std::string& path) {
    for (const std::string& number : objectsOf(path)) {
        const std::string text = test::objectText(path, number);
        if (text.find("/OCGs") != std::string::npos && text.find("/D ") != std::string::npos)
            return text;
    }
    return {};
}

/// The numbers in `text` of groups, replaced by their names.
std::string withNames(std::string text, const std::string& path) {
    for (const std::string& number : objectsOf(path)) {
        const std::string object = test::objectText(path, number);
        const std::size_t name = object.find("/Name (");
        if (name == std::string::npos || object.find("/OCG") == std::string::npos) continue;
        const std::size_t begin = name + 7;
        const std::string reference = " " + number + " 0 R";
        for (std::size_t at = text.find(reference); at != std::string::npos;
             at = text.find(reference))
            text.replace(at, reference.size(),
                         " " + object.substr(begin, object.find(')', begin) - begin));
    }
    return text;
}

/// Merges the two documents; expects each page to look as it did.
std::string expectSameLook(const Bench& bench, const std::vector<std::string>& sources) {
    const std::string merged = bench.merge(sources);
    expectSound(merged, static_cast<int>(sources.size()));
    std::vector<std::string> byMuPDF;
    std::vector<std::string> byPoppler;
    for (const std::string& source : sources) {
        byMuPDF.push_back(test::renderingsByMuPDF(source).at(0));
        byPoppler.push_back(test::renderingsByPoppler(source).at(0));
    }
    EXPECT_EQ(test::renderingsByMuPDF(merged), byMuPDF);
    EXPECT_EQ(test::renderingsByPoppler(merged), byPoppler);
    return merged;
}

TEST(Layers, staysHiddenOrShown) {
    const Bench bench;
    const std::vector<std::string> configurations{
        "<< >>",
        "<< /OFF [21 0 R 23 0 R] >>",
        "<< /BaseState /OFF >>",
        "<< /BaseState /OFF /ON [22 0 R] >>",
        "<< /BaseState /OFF /ON [22 0 R 23 0 R] /OFF [22 0 R] >>",
        "<< /BaseState /ON /ON [22 0 R] /OFF [22 0 R 24 0 R] >>",
        "<< /BaseState /Unchanged /OFF [24 0 R] >>",
        "26 0 R",
    };
    std::vector<std::string> sources;
    for (const std::string& configuration : configurations)
        sources.push_back(bench.fixture(std::to_string(sources.size()) + ".pdf",
                                        layeredPage(configuration, "",
                                                    "{{object 26 0}}\n<< /OFF 27 0 R >>\nendobj\n"
                                                    "{{object 27 0}}\n[22 0 R]\nendobj\n")));
    expectSameLook(bench, sources);
}

// To some readers groups that say the same of themselves are one.
TEST(Layers, ofTheSameNameKeepTheirOwnStates) {
    const Bench bench;
    const std::vector<std::string> sources{
        bench.fixture("a.pdf", layeredPage("<< /OFF [21 0 R] >>")),
        bench.fixture("b.pdf", layeredPage("<< /OFF [22 0 R 23 0 R] >>")),
        bench.fixture("c.pdf", layeredPage("<< >>")),
    };
    expectSameLook(bench, {sources[0], sources[1], sources[2], sources[1], sources[0]});
}

TEST(Layers, stayHiddenInBothCopiesOfAFile) {
    const Bench bench;
    const std::string source = bench.fixture("a.pdf", layeredPage("<< /OFF [22 0 R] >>"));
    const std::string merged = expectSameLook(bench, {source, source});
    EXPECT_THAT(withNames(propertiesOf(merged), merged), HasSubstr("/OCGs [ 2 1 3 4 2 1 3 4 ]"));
}

TEST(Layers, areThoseThatPagesUse) {
    const Bench bench;
    const std::string merged =
        bench.merge({bench.fixture("a.pdf", layeredPage("<< /OFF [25 0 R] >>", "a")),
                     bench.fixture("plain.pdf", onePageWith()),
                     bench.fixture("b.pdf", layeredPage("<< /OFF [21 0 R] >>", "b"))});
    EXPECT_THAT(withNames(propertiesOf(merged), merged),
                HasSubstr("/OCGs [ a2 a1 a3 a4 b2 b1 b3 b4 ]"));
    EXPECT_THAT(withNames(propertiesOf(merged), merged), HasSubstr("/OFF [ b1 ]"));
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("unused")));
}

TEST(Layers, areNoneWhereNoPageHasAny) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(replaced(
        layeredPage("<< >>"), "/Properties << /L1 21 0 R /L2 22 0 R /L3 23 0 R /L4 24 0 R >>", ""));
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("/OC")));
}

TEST(Layers, areListedInTheirOrder) {
    const Bench bench;
    const std::string order =
        "<< /Order [24 0 R [(group) 21 0 R 25 0 R] [(lost) 25 0 R] 25 0 R [22 0 R] 28 0 R] >>";
    const std::string merged =
        bench.mergeFixture(layeredPage(order, "", "{{object 28 0}}\n[23 0 R 28 0 R]\nendobj\n"));
    expectSound(merged, 1);
    EXPECT_THAT(withNames(propertiesOf(merged), merged),
                HasSubstr("/Order [ 4 [ (group) 1 ] unused [ 2 ] [ 3 ] ]"));
    EXPECT_THAT(withNames(propertiesOf(merged), merged), HasSubstr("/OCGs [ 2 1 3 4 unused ]"));
}

TEST(Layers, areListedBelowHeadingsOfOtherObjects) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(layeredPage(
        "<< /Order [[28 0 R 21 0 R] 22 0 R] >>", "", "{{object 28 0}}\n(heading)\nendobj\n"));
    EXPECT_THAT(withNames(propertiesOf(merged), merged), HasSubstr("/Order [ [ (heading) 1 ] 2 ]"));
}

TEST(Layers, keepWhatUsersMayDoWithThem) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(layeredPage(
        "<< /RBGroups [[21 0 R 22 0 R] [25 0 R] 28 0 R] /Locked [24 0 R 25 0 R] /ListMode "
        "/VisiblePages /AS [<< /Event /Print /OCGs [21 0 R 25 0 R] /Category [/Print /Zoom] >>] >>",
        "", "{{object 28 0}}\n[23 0 R 24 0 R]\nendobj\n"));
    expectSound(merged, 1);
    const std::string properties = withNames(propertiesOf(merged), merged);
    EXPECT_THAT(properties, HasSubstr("/RBGroups [ [ 1 2 ] [ 3 4 ] ]"));
    EXPECT_THAT(properties, HasSubstr("/Locked [ 4 ]"));
    EXPECT_THAT(properties, HasSubstr("/ListMode /VisiblePages"));
    EXPECT_THAT(properties,
                HasSubstr("/AS [ << /Category [ /Print /Zoom ] /Event /Print /OCGs [ 1 ] >> ]"));
}

// Membership dictionaries and their expressions are reached by the page; so are their groups.
TEST(Layers, staysWhatAnExpressionMakesOfThem) {
    const Bench bench;
    std::vector<std::string> sources;
    for (const std::string membership :
         {"/OCGs [22 0 R 23 0 R] /P /AllOn", "/OCGs 25 0 R /P /AnyOff",
          "/VE [/Or 25 0 R [/Not 22 0 R]]", "/VE [/And [/Not 25 0 R] [/Not 22 0 R]]"})
        sources.push_back(
            bench.fixture(std::to_string(sources.size()) + ".pdf",
                          replaced(layeredPage("<< /OFF [22 0 R 25 0 R] >>", "",
                                               "{{object 29 0}}\n<< /Type /OCMD " +
                                                   std::string(membership) + " >>\nendobj\n"),
                                   "/L4 24 0 R", "/L4 29 0 R")));
    expectSameLook(bench, sources);
}

TEST(Layers, ofAnnotationsAndFormsStayHidden) {
    const Bench bench;
    const std::string form =
        "{{object 30 0}}\n<< /Type /XObject /Subtype /Form /BBox [0 0 60 60] /OC 25 0 R /Length "
        "{{length}} >>\n{{stream}}\n0 0 50 50 re f\n{{endstream}}\nendobj\n"
        "{{object 31 0}}\n<< /Type /Annot /Subtype /Stamp /Rect [100 200 160 260] /F 4 /OC 25 0 R "
        "/AP << /N 32 0 R >> >>\nendobj\n"
        "{{object 32 0}}\n<< /Type /XObject /Subtype /Form /BBox [0 0 60 60] /Length {{length}} "
        ">>\n{{stream}}\n0 0 50 50 re f\n{{endstream}}\nendobj\n";
    std::vector<std::string> sources;
    for (const std::string configuration : {"<< /OFF [25 0 R] >>", "<< >>"}) {
        std::string text = layeredPage(configuration, "", form);
        text = replaced(text, "/Properties", "/XObject << /X 30 0 R >> /Properties");
        text = replaced(text, "/MediaBox", "/Annots [31 0 R] /MediaBox");
        sources.push_back(bench.fixture(std::to_string(sources.size()) + ".pdf",
                                        replaced(text, "BT /F1", "/X Do\nBT /F1")));
    }
    const std::string merged = expectSameLook(bench, sources);
    EXPECT_THAT(withNames(propertiesOf(merged), merged), HasSubstr("/OFF [ unused ]"));
}

// A configuration for viewing does not ask the groups that are for designing.
TEST(Layers, ofAnotherIntentHideNothing) {
    const Bench bench;
    const auto withIntent = [](const std::string& configuration, const std::string& intent) {
        return replaced(layeredPage("<< /OFF [21 0 R 22 0 R] " + configuration + " >>"),
                        "/Name (1)", "/Intent " + intent + " /Name (1)");
    };
    const std::string merged =
        bench.merge({bench.fixture("a.pdf", withIntent("", "/Design")),
                     bench.fixture("b.pdf", withIntent("/Intent [/View /Design]", "[/Design]")),
                     bench.fixture("c.pdf", withIntent("/Intent /All", "/Whatever"))});
    expectSound(merged, 3);
    const std::string properties = withNames(propertiesOf(merged), merged);
    EXPECT_THAT(properties, HasSubstr("/OFF [ 2 2 1 2 1 ]"));
    EXPECT_THAT(properties, HasSubstr("/Intent [ /All /Design /View ]"));
}

TEST(Layers, areNotListedDeeperThanAnybodyLooks) {
    const Bench bench;
    for (const int depth : {20, 100}) {
        const auto brackets = static_cast<std::size_t>(depth);
        const std::string merged =
            bench.mergeFixture(layeredPage("<< /Order " + std::string(brackets, '[') + "21 0 R" +
                                           std::string(brackets, ']') + " >>"));
        EXPECT_EQ(propertiesOf(merged).find("/Order") != std::string::npos, depth == 20);
    }
}

TEST(Layers, mayHaveIntentsOfAnySpelling) {
    const Bench bench;
    const std::string merged =
        bench.mergeFixture(layeredPage("<< /OFF [22 0 R] /Intent /A#20#3E#3E >>"));
    expectSound(merged, 1);
    EXPECT_THAT(propertiesOf(merged), HasSubstr("/Intent [ /A#20#3e#3e ]"));
}

// Some readers do not ask for intents.
TEST(Layers, ofAnotherIntentStayOffWhereNoDocumentHasThatIntent) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(replaced(
        layeredPage("<< /OFF [21 0 R 22 0 R] >>"), "/Name (1)", "/Intent /Design /Name (1)"));
    EXPECT_THAT(withNames(propertiesOf(merged), merged), HasSubstr("/OFF [ 2 1 ]"));
}

TEST(Layers, thatTheirDocumentDoesNotListAreShown) {
    const Bench bench;
    const std::string listed = layeredPage("<< /OFF [21 0 R 22 0 R] >>");
    const std::string unlisted =
        bench.fixture("a.pdf", replaced(listed, "/OCProperties", "/Private"));
    EXPECT_EQ(propertiesOf(bench.merge({unlisted, unlisted})), "");
    const std::string merged = bench.merge({unlisted, bench.fixture("b.pdf", listed)});
    expectSound(merged, 2);
    const std::string properties = propertiesOf(merged);
    EXPECT_EQ(countOf(" 0 R", properties.substr(properties.find("/OCGs"))), 8U) << properties;
    EXPECT_THAT(withNames(properties, merged), HasSubstr("/OFF [ 2 1 ]"));
}

TEST(Layers, thatAreDamagedLeaveThePagesWhole) {
    const Bench bench;
    for (const std::string broken :
         {"5", "[ ]", "99 0 R", "<< /OFF 5 /ON << >> /Order (a) /RBGroups [5] /AS [7] >>",
          "<< /Order [[[[[21 0 R]]]] 30 0 R] /OFF [(a) null 21 0 R 99 0 R] >>"}) {
        const std::string merged = bench.mergeFixture(
            layeredPage(broken, "", "{{object 30 0}}\n[30 0 R [30 0 R]]\nendobj\n"));
        expectPages(merged, {200}, {"one"});
        EXPECT_THAT(withNames(propertiesOf(merged), merged), HasSubstr("/OCGs [ 2 1 3 4 ]"))
            << broken;
    }
}

/// Lists that refer to one and the same array again and again.
TEST(Layers, thatAreListedAgainAndAgainTakeNoTime) {
    constexpr int kMany = 4000;
    std::string lists;
    std::string usages;
    std::string array;
    for (int i = 0; i < kMany; ++i) {
        lists += "28 0 R ";
        usages += "<< /Event /View /OCGs 28 0 R /Category [/View] >> ";
        array += "21 0 R ";
    }
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        layeredPage("<< /OFF [22 0 R] /RBGroups [" + lists + "] /AS [" + usages + "] >>", "",
                    "{{object 28 0}}\n[" + array + "]\nendobj\n"));
    const std::string bytes = Bench::read(merged);
    EXPECT_LT(bytes.size(), 40'000'000U);
    EXPECT_NE(bytes.find("/OFF["), std::string::npos);
    EXPECT_EQ(test::pageTexts(merged), std::vector<std::string>{"one"});
}

}  // namespace
}  // namespace quirebind::pdftest
