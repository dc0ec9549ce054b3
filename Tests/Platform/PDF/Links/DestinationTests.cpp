// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Destinations in a document (ISO 32000-2, 12.3.2), in all the ways in which files say them: each
// copy of the document leads into itself, to the same page and the same view.

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

const std::string kLink = "/Type /Annot /Subtype /Link /Rect [0 0 9 9] ";

/// Pages 3, 7 and 9, of which the first has that entry; with those entries of the catalog.
std::string pagesWith(const std::string& entry, const std::string& catalog,
                      const std::string& objects) {
    std::string text(kOnePage);
    text = replaced(text, "/Kids [3 0 R] /Count 1", "/Kids [3 0 R 7 0 R 9 0 R] /Count 3");
    text = replaced(text, "/MediaBox", entry + " /MediaBox");
    text = replaced(text, "/Type /Catalog", "/Type /Catalog " + catalog);
    return document(text + pageObjects(7, 300, "two") + pageObjects(9, 400, "three") + objects);
}

/// How a document comes to lead to its page 9, with the view /XYZ 1 2 3.
struct Way {
    std::string name;
    std::string link;  ///< Entries of a link of the first page.
    std::string catalog = {};
    std::string objects = {};
    std::string page = "/Annots [20 0 R]";
};

// NOLINTNEXTLINE(readability-identifier-naming): the name that GoogleTest looks for
void PrintTo(const Way& way, std::ostream* out) {
    *out << way.name;
}

std::string nameOf(const ::testing::TestParamInfo<Way>& info) {
    return info.param.name;
}

class DestinationIn : public ::testing::TestWithParam<Way> {};

TEST_P(DestinationIn, leadsIntoItsOwnCopy) {
    const Way& way = GetParam();
    const Bench bench;
    const std::string source = bench.fixture(
        "a.pdf", pagesWith(way.page, way.catalog,
                           object(20, "<< " + kLink + way.link + " >>") + way.objects));
    const std::string merged = bench.merge({source, source});
    expectSound(merged, 6);
    const std::string all = everyObject(merged);
    const std::vector<std::string> pages = test::pageNumbers(merged);
    EXPECT_THAT(all, HasSubstr("[ " + pages[2] + " 0 R /XYZ 1 2 3 ]"));
    EXPECT_THAT(all, HasSubstr("[ " + pages[5] + " 0 R /XYZ 1 2 3 ]"));
    EXPECT_EQ(countOf("/XYZ 1 2 3 ]", all), 2U) << all;
    EXPECT_THAT(all, AllOf(Not(HasSubstr("/Names")), Not(HasSubstr("/Dests"))));
}

const std::string kView = "[9 0 R /XYZ 1 2 3]";
const std::string kNames = "/Names << /Dests 30 0 R >>";
const std::string kGoTo = "/S /GoTo ";

std::string namesOf(const std::string& pairs) {
    return object(30, "<< /Names [" + pairs + "] >>");
}

INSTANTIATE_TEST_SUITE_P(
    Explicit, DestinationIn,
    ::testing::Values(
        Way{.name = "direct", .link = "/Dest " + kView},
        Way{.name = "ofAnotherObject", .link = "/Dest 21 0 R", .objects = object(21, kView)},
        Way{.name = "withElementsOfOtherObjects",
            .link = "/Dest [9 0 R 21 0 R 22 0 R 2 3]",
            .objects = object(21, "/XYZ") + object(22, "1")},
        Way{.name = "byTheNumberOfThePage", .link = "/Dest [2 /XYZ 1 2 3]"},
        Way{.name = "inADictionary", .link = "/Dest << /D " + kView + " >>"},
        Way{.name = "spelltOddly", .link = "/De#73t[9 0 R/X#59Z 1 2 3]"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Named, DestinationIn,
    ::testing::Values(
        Way{.name = "byAString",
            .link = "/Dest (a)",
            .catalog = kNames,
            .objects = namesOf("(a) " + kView)},
        Way{.name = "byAHexadecimalString",
            .link = "/Dest <C3A4 28>",
            .catalog = kNames,
            .objects = namesOf("(\\303\\244\\() " + kView)},
        Way{.name = "byAStringOfAnotherObject",
            .link = "/Dest 21 0 R",
            .catalog = kNames,
            .objects = namesOf("22 0 R 23 0 R") + object(21, "(a)") + object(22, "(a)") +
                       object(23, kView)},
        Way{.name = "inADictionary",
            .link = "/Dest (a)",
            .catalog = kNames,
            .objects = namesOf("(a) << /D " + kView + " >>")},
        Way{.name = "inADictionaryOfAnotherObject",
            .link = "/Dest (a)",
            .catalog = kNames,
            .objects = namesOf("(a) 21 0 R") + object(21, "<< /D 22 0 R >>") + object(22, kView)},
        Way{.name = "amongOthers",
            .link = "/Dest (m)",
            .catalog = kNames,
            .objects = namesOf("(z) [3 0 R /Fit] (m) " + kView + " (b) [7 0 R /Fit]")},
        Way{.name = "deepInTheTree",
            .link = "/Dest (m)",
            .catalog = kNames,
            .objects = object(30, "<< /Kids [31 0 R << /Kids [32 0 R] >> 30 0 R] >>") +
                       object(31, "<< /Limits [(a) (b)] /Names [(a) [3 0 R /Fit]] >>") +
                       object(32, "<< /Limits [(x) (z)] /Names 33 0 R >>") +
                       object(33, "[(m) " + kView + "]")},
        Way{.name = "byAName", .link = "/Dest /a", .catalog = "/Dests << /a " + kView + " >>"},
        Way{.name = "byANameOfAnotherObject",
            .link = "/Dest /a#20b",
            .catalog = "/Dests 30 0 R",
            .objects = object(30, "<< /a#20#62 21 0 R >>") + object(21, "<< /D " + kView + " >>")},
        Way{.name = "byAStringForAName",
            .link = "/Dest (a)",
            .catalog = "/Dests << /a " + kView + " >>"},
        Way{.name = "byANameThatIsAStringToo",
            .link = "/Dest /a",
            .catalog = "/Dests << /a " + kView + " >> " + kNames,
            .objects = namesOf("(a) [3 0 R /Fit]")},
        Way{.name = "byAStringThatIsANameToo",
            .link = "/Dest (a)",
            .catalog = "/Dests << /a [3 0 R /Fit] >> " + kNames,
            .objects = namesOf("(a) " + kView)},
        Way{.name = "byANameForAString",
            .link = "/Dest /a",
            .catalog = kNames,
            .objects = namesOf("(a) " + kView)}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    OfAnAction, DestinationIn,
    ::testing::Values(
        Way{.name = "direct", .link = "/A << " + kGoTo + "/D " + kView + " >>"},
        Way{.name = "thatIsAnotherObject",
            .link = "/A 21 0 R",
            .objects = object(21, "<< " + kGoTo + "/D " + kView + " >>")},
        Way{.name = "byName",
            .link = "/A << " + kGoTo + "/D (a) >>",
            .catalog = kNames,
            .objects = namesOf("(a) " + kView)},
        Way{.name = "thatIsTheNext",
            .link = "/A << /S /URI /URI (x) /Next << /S /Named /N /Print /Next [ << " + kGoTo +
                    "/D " + kView + " >> ] >> >>"},
        Way{.name = "thatIsTheNextOfAnotherObject",
            .link = "/A << /S /URI /URI (x) /Next 21 0 R >>",
            .objects = object(21, "[ 22 0 R ]") +
                       object(22, "<< " + kGoTo + "/D " + kView + " /Next 21 0 R >>")},
        Way{.name = "ofAWidget",
            .link = "",
            .page = "/Annots [<< /Type /Annot /Subtype /Widget /FT /Btn /Rect [0 0 9 9] /A << " +
                    kGoTo + "/D " + kView + " >> >>]"},
        Way{.name = "onSomeEvent", .link = "/AA << /U << " + kGoTo + "/D " + kView + " >> >>"},
        Way{.name = "onSomeEventOfAnotherObject",
            .link = "/AA 21 0 R",
            .objects = object(21, "<< /U 22 0 R >>") +
                       object(22, "<< " + kGoTo + "/D " + kView + " >>")},
        Way{.name = "ofAPage",
            .link = "",
            .page = "/AA << /O << " + kGoTo + "/D " + kView + " >> >>"},
        Way{.name = "ofAStepOfAPage",
            .link = "",
            .catalog = kNames,
            .objects = namesOf("(a) " + kView),
            .page = "/PresSteps << /NA << " + kGoTo + "/D (a) >> >>"},
        Way{.name = "ofALaterStep",
            .link = "/A 23 0 R",
            .catalog = kNames,
            .objects = namesOf("(a) " + kView) + object(21, "<< /Next 22 0 R >>") +
                       object(22, "<< /Prev 21 0 R /PA 23 0 R >>") +
                       object(23, "<< " + kGoTo + "/D (a) >>"),
            .page = "/PresSteps 21 0 R /Annots [20 0 R]"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(OfALink, DestinationIn,
                         ::testing::Values(Way{.name = "inThePageItself",
                                               .link = "",
                                               .page = "/Annots [<< " + kLink + "/Dest " + kView +
                                                       " >>]"},
                                           Way{.name = "inAnArrayOfAnotherObject",
                                               .link = "/Dest " + kView,
                                               .objects = object(21, "[20 0 R null]"),
                                               .page = "/Annots 21 0 R"},
                                           Way{.name = "inheritedByNobodyButTheSecondPage",
                                               .link = "/Dest " + kView,
                                               .objects = "",
                                               .page = "/Annots [20 0 R 20 0 R]"}),
                         nameOf);

std::string mergedLink(const Bench& bench, const std::string& link, const std::string& catalog = "",
                       const std::string& objects = "") {
    const std::string source = bench.fixture(
        "a.pdf",
        pagesWith("/Annots [20 0 R]", catalog, object(20, "<< " + kLink + link + " >>") + objects));
    const std::string merged = bench.merge({source, source});
    expectSound(merged, 6);
    return everyObject(merged);
}

TEST(DeadLink, staysDeadWhereItsPageDoesNotExist) {
    const Bench bench;
    for (const std::string page : {"3", "99", "-1", "4294967296", "null", "77 0 R", "/A"}) {
        const std::string all = mergedLink(bench, "/Dest [" + page + " /XYZ 1 2 3]");
        EXPECT_THAT(all, HasSubstr("/Dest [ null /XYZ 1 2 3 ]")) << page;
    }
}

// Some older revision's page.
TEST(DeadLink, staysDeadWhereItsPageIsNotInTheTree) {
    const Bench bench;
    const std::string all = mergedLink(bench, "/Dest [40 0 R /XYZ 1 2 3] /P 40 0 R", "",
                                       pageObjects(40, 500, "old", "/LEFT 1"));
    EXPECT_THAT(all, HasSubstr("/Dest [ null /XYZ 1 2 3 ]"));
    EXPECT_THAT(all, Not(HasSubstr("LEFT")));
}

TEST(DeadLink, staysDeadWhereItsNameMeansNothing) {
    const Bench bench;
    for (const std::string names :
         {"(b) [3 0 R /Fit]", "(a) (a)", "(a) null", "(a) 5", "(a)", "(a) [] (a) [3 0 R /Fit]"}) {
        const std::string all = mergedLink(bench, "/Dest (a)", kNames, namesOf(names));
        EXPECT_THAT(all, HasSubstr("/Dest (a)")) << names;
    }
}

TEST(DeadLink, isNotReadAnyFurtherThanItLeads) {
    const Bench bench;
    EXPECT_THAT(mergedLink(bench, "/Dest (a)", kNames, namesOf("(a) (b) (b) (a)")),
                HasSubstr("/Dest (a)"));
    EXPECT_THAT(mergedLink(bench, "/Dest (a)", kNames, object(30, "<< /Kids [30 0 R] >>")),
                HasSubstr("/Dest (a)"));
    EXPECT_THAT(mergedLink(bench, "/Dest (a)", kNames, object(30, "<< /Names [(a)")),
                HasSubstr("/Dest (a)"));
}

TEST(View, isSaidByNamesAndNumbers) {
    const Bench bench;
    const std::string all =
        mergedLink(bench, "/Dest [3 0 R /XYZ -1 +2.5 " + std::string(33, '1') + "]") +
        mergedLink(bench, "/Dest [3 0 R /XYZ (1) true << >>]");
    EXPECT_THAT(all, HasSubstr("0 R /XYZ -1 +2.5 null ]"));
    EXPECT_THAT(all, HasSubstr("0 R /XYZ null null null ]"));
}

// Each of three documents has a destination of that name.
TEST(NamedPage, isThatOfItsOwnDocument) {
    const Bench bench;
    const auto pages = [](const std::string& name) {
        return pagesWith("/Annots [20 0 R]", "",
                         object(20, "<< " + kLink + "/A << /S /Named /N /" + name + " >> >>"));
    };
    const std::string first = bench.fixture("a.pdf", pages("FirstPage"));
    const std::string last = bench.fixture("b.pdf", pages("LastPage"));
    const std::string next = bench.fixture("c.pdf", pages("NextPage"));
    const std::string merged = bench.merge({last, first, next});
    expectSound(merged, 9);
    const std::string all = everyObject(merged);
    const std::vector<std::string> copies = test::pageNumbers(merged);
    EXPECT_THAT(all,
                HasSubstr("/A << /D [ " + copies[2] + " 0 R /XYZ null null null ] /S /GoTo >>"));
    EXPECT_THAT(all,
                HasSubstr("/A << /D [ " + copies[3] + " 0 R /XYZ null null null ] /S /GoTo >>"));
    EXPECT_THAT(all, HasSubstr("/A << /N /NextPage /S /Named >>"));
}

TEST(NamedDestination, isTheOneOfItsOwnDocument) {
    const Bench bench;
    std::vector<std::string> sources;
    for (const std::string page : {"3", "7", "9"})
        sources.push_back(bench.fixture(
            page + ".pdf", pagesWith("/Annots [20 0 R]", kNames,
                                     object(20, "<< " + kLink + "/Dest (a) >>") +
                                         namesOf("(a) [" + page + " 0 R /FitH " + page + "]"))));
    const std::string merged = bench.merge(sources);
    expectSound(merged, 9);
    const std::vector<std::string> pages = test::pageNumbers(merged);
    const std::string all = everyObject(merged);
    EXPECT_THAT(all, HasSubstr("[ " + pages[0] + " 0 R /FitH 3 ]"));
    EXPECT_THAT(all, HasSubstr("[ " + pages[4] + " 0 R /FitH 7 ]"));
    EXPECT_THAT(all, HasSubstr("[ " + pages[8] + " 0 R /FitH 9 ]"));
}

TEST(Action, thatLeadsElsewhereStaysWhatItIs) {
    const Bench bench;
    const std::string remote = "<< /D (a) /F (other.pdf) /S /GoToR >>";
    EXPECT_THAT(mergedLink(bench, "/A " + remote, kNames, namesOf("(a) " + kView)),
                HasSubstr("/A " + remote));
    const std::string web = "<< /S /URI /URI (https://example.org/#a) >>";
    EXPECT_THAT(mergedLink(bench, "/A " + web), HasSubstr("/A " + web));
}

TEST(Action, thatLeadsToTheWebSaysTheWholeAddress) {
    const Bench bench;
    const std::string base = "/URI << /Base (http://example.org/dir/) >>";
    EXPECT_THAT(mergedLink(bench, "/A << /S /URI /URI (page.html#a) >>", base),
                HasSubstr("/URI (http://example.org/dir/page.html#a)"));
    EXPECT_THAT(mergedLink(bench, "/A << /S /URI /URI 22 0 R >>", "/URI 21 0 R",
                           object(21, "<< /Base (http://a/) >>") + object(22, "(b)")),
                HasSubstr("/URI (http://a/b)"));
    const std::string whole = "<< /S /URI /URI (https://example.org/#a) >>";
    EXPECT_THAT(mergedLink(bench, "/A " + whole, base), HasSubstr("/A " + whole));
}

TEST(Action, maybeNestedDeeply) {
    const Bench bench;
    constexpr int kDepth = 300;
    std::string action = "<< /S /Named /N /Print >>";
    for (int i = 0; i < kDepth; ++i) action = "<< /S /Named /N /Print /Next " + action + " >>";
    EXPECT_EQ(countOf("/N /Print", mergedLink(bench, "/A " + action)), 2U * (kDepth + 1));
}

}  // namespace
}  // namespace quirebind::pdftest
