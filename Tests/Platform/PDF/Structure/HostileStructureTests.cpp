// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Whatever is wrong with the structure of a document, its pages are merged, and what other readers
// follow has an end.

#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/PDF/Structure/SharedNames.h"
#include "Tests/Platform/PDF/Structure/StructureTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// Merges the document twice and expects both pages; gives the path of the result.
std::string mergeTwice(const Bench& bench, std::string_view text) {
    const std::string source = bench.fixture("source.pdf", text);
    std::string merged = bench.merge({source, source});
    expectPages(merged, {200, 200}, {"one", "one"});
    return merged;
}

TEST(HostileStructure, elementsInCirclesAreOnceInTheTree) {
    const Bench bench;
    const std::string merged = mergeTwice(
        bench,
        taggedPage("/K [41 0 R 41 0 R 40 0 R]",
                   element(41, "/S /P /P 42 0 R /K [42 0 R 41 0 R 40 0 R 3 0 R 1 0 R 99 0 R]") +
                       element(42,
                               "/S /Span /P 41 0 R /K [41 0 R 42 0 R 0] /Pg 3 0 R "
                               "/Ref [41 0 R 42 0 R 40 0 R 3 0 R]")));
    EXPECT_EQ(objectsWith(merged, "/StructElem").size(), 4);
    const std::string tree = "P (block)\n  Span (inline)\n    \"one\"\n";
    EXPECT_EQ(structureOf(merged), tree + tree);
}

TEST(HostileStructure, sharedElementsHaveOneParent) {
    const Bench bench;
    const std::string merged = mergeTwice(
        bench, taggedPage("/K [41 0 R 42 0 R]", element(41, "/S /P /P 40 0 R /K 43 0 R") +
                                                    element(42, "/S /P /P 40 0 R /K [43 0 R]") +
                                                    element(43, "/S /Span /P 42 0 R /T (shared)")));
    EXPECT_EQ(objectsWith(merged, "(shared)").size(), 2);
    const std::string tree = "P (block)\n  Span \"shared\" (inline)\nP (block)\n";
    EXPECT_EQ(structureOf(merged), tree + tree);
}

TEST(HostileStructure, whateverStandsWhereElementsShould) {
    for (const std::string kid :
         {"null", "42", "(text)", "/Name", "[[41 0 R]]", "<< >>", "<< /S 3 /P 3 >>", "2 0 R",
          "4 0 R", "45 0 R", "46 0 R", "47 0 R", "<< /Type /MCR >>", "<< /Type /OBJR /Obj 1 0 R >>",
          "<< /Type /MCR /MCID 0 /Pg 99 0 R /Stm 4 0 R >>", "99 0 R", "-1"}) {
        const Bench bench;
        const std::string objects =
            element(41, "/S /P /P 40 0 R /Pg 3 0 R /K [0 " + kid + "] /A " + kid + " /C " + kid +
                            " /ID " + kid + " /Ref " + kid) +
            "{{object 45 0}}\n<< /Type /StructElem /S /P /P 40 0 R /K 1 0 R /Length "
            "{{length}} >>\n{{stream}}\nwords\n{{endstream}}\nendobj\n"
            "{{object 46 0}}\n46 0 R\nendobj\n{{object 47 0}}\n<< /Type /Annot /Subtype /Text >>\n"
            "endobj\n";
        for (const std::string& root : std::vector<std::string>{
                 "/K [41 0 R " + kid + "]", "/K " + kid,
                 "/K 41 0 R /RoleMap " + kid + " /ClassMap " + kid + " /ParentTree " + kid +
                     " /Namespaces " + kid + " /IDTree " + kid,
                 "/K 41 0 R /RoleMap << /P " + kid + " >> /ClassMap << /Name " + kid +
                     " >> /ParentTree << /Nums [0 " + kid + " " + kid +
                     " 41 0 R] >> /Namespaces [" + kid + "]"}) {
            const auto merged = bench.tryMerge(
                {bench.fixture("source.pdf", taggedPage(root, objects, "/Lang " + kid))});
            ASSERT_TRUE(merged) << root;
            EXPECT_EQ(test::qpdfCheck(*merged).exitCode, 0) << root;
        }
    }
}

TEST(HostileStructure, aRootThatCannotBeReadMeansThatThereAreNoTags) {
    const Bench bench;
    for (const std::string_view root : {"3", "[", "<< /K [41 0 R"}) {
        const std::string merged = mergeTwice(
            bench,
            replaced(paragraph("", "", "/MarkInfo << /Marked true >>"),
                     "<< /Type /StructTreeRoot /K 41 0 R /ParentTree << /Nums [0 [41 0 R]] >> "
                     " >>",
                     root));
        EXPECT_THAT(catalogOf(merged), Not(HasSubstr("/StructTreeRoot"))) << root;
        EXPECT_THAT(catalogOf(merged), Not(HasSubstr("/Marked"))) << root;
    }
}

TEST(HostileStructure, aBrokenElementIsNull) {
    const Bench bench;
    const std::string merged =
        mergeTwice(bench, taggedPage("/K [41 0 R 42 0 R]",
                                     "{{object 41 0}}\n<< /Type /StructElem /S /P /K [0\nendobj\n" +
                                         element(42, "/S /P /P 40 0 R /Pg 3 0 R /K 0")));
    EXPECT_THAT(structureOf(merged), HasSubstr("P (block)\n  \"one\"\n"));
}

TEST(HostileStructure, elementsNestedWithoutEndAreCutOff) {
    constexpr int kDepth = 400;
    std::string kids;
    for (int i = 0; i < kDepth; ++i) kids += "<< /S /Div /K ";
    kids += "0";
    for (int i = 0; i < kDepth; ++i) kids += " >>";
    const Bench bench;
    const std::string merged = mergeTwice(bench, taggedPage("/K " + kids, ""));
    EXPECT_GE(objectsWith(merged, "/S /Div").size(), 20);
    EXPECT_LT(objectsWith(merged, "/S /Div").size(), 200);
}

// Each of the cells would have all the identifiers again.
TEST(HostileStructure, whatManyElementsShareIsNotMultiplied) {
    constexpr int kElements = 2000;
    std::string kids;
    std::string ids;
    std::string objects;
    for (int i = 0; i < kElements; ++i) {
        kids += std::to_string(100 + i) + " 0 R ";
        ids += "(" + std::to_string(i) + ")";
        objects += element(100 + i, "/S /TD /P 40 0 R /A << /O /Table /Headers 45 0 R >>");
    }
    objects += "{{object 45 0}}\n[" + ids + "]\nendobj\n";
    const Bench bench;
    const std::string source =
        bench.fixture("source.pdf", taggedPage("/K [" + kids + "]", objects));
    const std::string merged = bench.merge({source, source});
    EXPECT_LT(Bench::read(merged).size(), 3 * Bench::read(source).size());
}

TEST(HostileStructure, aChainOfElementsAsDeepAsTheFileIsLong) {
    constexpr int kElements = 20000;
    std::string objects;
    for (int i = 0; i < kElements; ++i)
        objects += element(100 + i, "/S /Div /P " + std::to_string(99 + i) + " 0 R /K " +
                                        std::to_string(101 + i) + " 0 R");
    const Bench bench;
    const std::string source = bench.fixture("source.pdf", taggedPage("/K 100 0 R", objects));
    const std::string merged = bench.merge({source});
    EXPECT_EQ(test::qpdfCheck(merged).exitCode, 0);
    EXPECT_GT(Bench::read(merged).size(), 50 * kElements);
    const std::string two = replaced(taggedPage("/K 100 0 R", objects + markedPage(7, "two", 1)),
                                     "/Kids [3 0 R] /Count 1", "/Kids [3 0 R 7 0 R] /Count 2");
    const std::string second = insertPages(bench, bench.fixture("two.pdf", two), {1});
    EXPECT_EQ(test::qpdfCheck(second).exitCode, 0);
}

TEST(HostileStructure, aTypeThatManyElementsShareIsNotMultiplied) {
    constexpr int kElements = 3000;
    std::string kids;
    for (int i = 0; i < kElements; ++i) kids += "<< /S 45 0 R /K 0 /Pg 3 0 R >> ";
    const Bench bench;
    const std::string merged = bench.mergeFixture(taggedPage(
        "/K [" + kids + "]", "{{object 45 0}}\n/" + std::string(10'000, '\x80') + "\nendobj\n"));
    EXPECT_LT(Bench::read(merged).size(), 50'000'000);
}

TEST(HostileStructure, classesThatAreNoAttributesAreNone) {
    const Bench bench;
    const std::string merged = mergeTwice(
        bench, taggedPage("/K 41 0 R /ClassMap << /a 99 0 R /b << /O /Table >> /c 7 /d null >>",
                          element(41, "/S /P /P 40 0 R /C [/a /b /c /d] /K 0 /Pg 3 0 R")));
    EXPECT_THAT(rootOf(merged), HasSubstr("/ClassMap << /b << /O /Table >> >>"));
}

TEST(HostileStructure, namesThatAreInTheWayMakeNoLongOnes) {
    SharedNames names;
    std::string taken = "a_2";
    for (int i = 0; i < 100; ++i, taken += "_") (void)names.nameFor(taken, "<</O/Table>>", 1);
    EXPECT_EQ(names.nameFor("a", "<</O/List>>", 1), "a");
    EXPECT_LT(names.nameFor("a", "<</O/Layout>>", 2).size(), 8U);
}

}  // namespace
}  // namespace quirebind::pdftest
