// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Structure elements that do not say which page their content is on: what the parent tree says of
// the page has to do (ISO 32000-2, 14.7.5.4). Readers join the content of that number of all pages.

#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/Structure/StructureTestSupport.h"

namespace quirebind::pdftest {
namespace {

using ::testing::HasSubstr;

/// A document of one page with that text, the element 41 of which says nothing of the page.
std::string withText(const std::string& text, const std::string& root, const std::string& entries,
                     const std::string& objects = "") {
    return replaced(
        taggedPage("/K 41 0 R " + root, element(41, "/S /P /P 40 0 R " + entries) + objects),
        "(one)", "(" + text + ")");
}

/// What pdfinfo says of paragraphs with these texts.
std::string paragraphsOf(std::string_view one, std::string_view two) {
    return "P (block)\n  \"" + std::string(one) + "\"\nP (block)\n  \"" + std::string(two) + "\"\n";
}

TEST(ElementWithoutAPage, keepsToThePageOfItsDocument) {
    const std::string tree = "/ParentTree << /Nums [0 [41 0 R]] >>";
    for (const std::string& source :
         {withText("one", tree, "/K 0"), withText("one", "", "/K 0"),
          withText("one", tree, "/K [0]"), withText("one", tree, "/K << /Type /MCR /MCID 0 >>"),
          withText("one", tree, "/K 42 0 R", object(42, "[0]")),
          withText("one", tree, "/K 42 0 R", object(42, "0")),
          withText("one", tree, "/Pg null /K 0")}) {
        const Bench bench;
        const std::string merged =
            bench.merge({bench.fixture("a.pdf", source),
                         bench.fixture("b.pdf", replaced(source, "(one)", "(two)"))});
        expectPages(merged, {200, 200}, {"one", "two"});
        EXPECT_EQ(structureOf(merged), paragraphsOf("one", "two")) << source;
    }
}

TEST(ElementWithoutAPage, isOnThatOfTheParentTree) {
    const Bench bench;
    const std::string text = replaced(
        taggedPage("/K [41 0 R 42 0 R] /ParentTree << /Kids [<< /Nums [0 43 0 R] >> "
                   "<< /Nums [5 [42 0 R]] >>] >>",
                   element(41, "/S /P /P 40 0 R /K 0") + element(42, "/S /P /P 40 0 R /K [0]") +
                       object(43, "[41 0 R]") + markedPage(7, "two", 5)),
        "/Kids [3 0 R] /Count 1", "/Kids [3 0 R 7 0 R] /Count 2");
    const std::string merged = bench.mergeFixture(text);
    expectPages(merged, {200, 200}, {"one", "two"});
    EXPECT_EQ(structureOf(merged), paragraphsOf("one", "two"));
}

TEST(ElementWithoutAPage, isOnThatOfTheElementAroundIt) {
    const Bench bench;
    const std::string merged =
        bench.mergeFixture(taggedPage("/K 41 0 R /ParentTree << /Nums [0 [42 0 R]] >>",
                                      element(41, "/S /Sect /P 40 0 R /Pg 3 0 R /K 42 0 R") +
                                          element(42, "/S /P /P 41 0 R /K 0")));
    EXPECT_THAT(structureOf(merged), HasSubstr("\"one\""));
    EXPECT_EQ(countOf("/Pg ", everyObject(merged)), 1U);
}

TEST(ElementWithoutAPage, isOnNoneWhereItHasNoContentOrNobodyKnows) {
    const Bench bench;
    const std::string two = "/Kids [3 0 R 7 0 R] /Count 2";
    const std::string text = replaced(
        taggedPage("/K [41 0 R 44 0 R] /ParentTree << /Nums [0 [42 0 R] 1 41 0 R] >>",
                   element(41, "/S /P /P 40 0 R /K 42 0 R") +
                       element(42, "/S /Span /P 41 0 R /K << /Type /MCR /Pg 3 0 R /MCID 0 >>") +
                       element(44, "/S /P /P 40 0 R /K 0") + markedPage(7, "two", 5)),
        "/Kids [3 0 R] /Count 1", two);
    EXPECT_EQ(countOf("/Pg ", everyObject(bench.mergeFixture(text))), 1U);
}

}  // namespace
}  // namespace quirebind::pdftest
