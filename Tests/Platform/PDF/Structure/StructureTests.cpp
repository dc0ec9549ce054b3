// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Tagged documents that are joined are read as they were.

#include <regex>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/Structure/StructureTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr std::string_view kParagraph = "P (block)\n  \"one\"\n";

TEST(Structure, readsLikeTheSourcesInTheirOrder) {
    const Bench bench;
    const std::string first = bench.fixture(
        "first.pdf", taggedPage("/K [41 0 R] /ParentTree << /Nums [0 [42 0 R]] >>",
                                element(41, "/S /Document /P 40 0 R /K [42 0 R 43 0 R]") +
                                    element(42, "/S /H1 /P 41 0 R /Pg 3 0 R /K 0 /T (heading)") +
                                    element(43, "/S /Figure /P 41 0 R /Alt (a picture)")));
    const std::string second = bench.fixture("second.pdf", paragraph());
    const std::string merged = bench.merge({first, second, first});
    expectPages(merged, {200, 200, 200}, {"one", "one", "one"});
    const std::string expected = structureOf(first);
    EXPECT_THAT(expected, HasSubstr("H1 \"heading\" (block)\n    \"one\""));
    EXPECT_EQ(structureOf(second), kParagraph);
    EXPECT_EQ(structureOf(merged), expected + std::string(kParagraph) + expected);
}

TEST(Structure, ofDocumentsWithoutTagsIsNone) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(onePageWith());
    EXPECT_THAT(catalogOf(merged), Not(HasSubstr("/StructTreeRoot")));
    EXPECT_THAT(catalogOf(merged), Not(HasSubstr("/MarkInfo")));
}

TEST(Structure, ofTaggedDocumentsStaysAmongOthers) {
    const Bench bench;
    const std::string plain = bench.fixture("plain.pdf", onePageWith());
    const std::string merged =
        bench.merge({plain, bench.fixture("tagged.pdf", paragraph()), plain});
    expectSound(merged, 3);
    EXPECT_EQ(structureOf(merged), kParagraph);
}

TEST(Structure, doesNotGrowWhenItIsMergedAgain) {
    const Bench bench;
    const std::string source = bench.fixture(
        "a.pdf", taggedPage("/K [41 0 R] /ParentTree << /Nums [0 [41 0 R]] >>",
                            element(41, "/S /P /P 40 0 R /Pg 3 0 R /K << /Type /MCR /MCID 0 >>")));
    const std::string once = bench.merge({source, source}, "once.pdf");
    const std::string twice = bench.merge({once}, "twice.pdf");
    const std::string again = bench.merge({twice}, "again.pdf");
    EXPECT_EQ(everyObject(again), everyObject(twice));
    EXPECT_EQ(Bench::read(again).size(), Bench::read(twice).size());
}

TEST(Structure, whateverWayTheRootListsItsElements) {
    for (const std::string kids :
         {"/K 41 0 R", "/K [41 0 R]", "/K 42 0 R", "/K [null 41 0 R]",
          "/K << /Type /StructElem /S /P /P 40 0 R /Pg 3 0 R /K 0 >>",
          "/K [<< /Type /StructElem /S /P /P 40 0 R /Pg 3 0 R /K [0] >>]"}) {
        const Bench bench;
        const std::string merged =
            bench.mergeFixture(taggedPage(kids, element(41, "/S /P /P 40 0 R /Pg 3 0 R /K 0") +
                                                    "{{object 42 0}}\n[41 0 R]\nendobj\n"));
        expectSound(merged, 1);
        EXPECT_EQ(structureOf(merged), kParagraph) << kids;
        const std::string number = objectWith(merged, "/StructElem");
        EXPECT_THAT(rootOf(merged), HasSubstr("/K [ " + number + " 0 R ]")) << kids;
        EXPECT_EQ(follow(merged, test::objectText(merged, number), "/P"), rootOf(merged)) << kids;
    }
}

TEST(Structure, whateverWayAnElementSaysWhichContentItHas) {
    for (const std::string kids :
         {"/K 0", "/K [0]", "/K 42 0 R", "/K << /Type /MCR /Pg 3 0 R /MCID 0 >>",
          "/K [<< /Type /MCR /MCID 0 >>]", "/K [43 0 R]", "/K [44 0 R]"}) {
        const Bench bench;
        const std::string source = bench.fixture(
            "source.pdf",
            taggedPage("/K 41 0 R",
                       element(41, "/S /P /P 40 0 R /Pg 3 0 R " + kids) +
                           "{{object 42 0}}\n[0]\nendobj\n{{object 43 0}}\n<< /Type /MCR /Pg 3 0 R "
                           "/MCID 0 >>\nendobj\n{{object 44 0}}\n<< /S /Span /P 41 0 R /Pg 3 0 R "
                           "/K 0 >>\nendobj\n"));
        const std::string merged = bench.merge({source});
        expectSound(merged, 1);
        EXPECT_EQ(structureOf(merged), structureOf(source)) << kids;
    }
}

// Nothing could refer to it as it should be possible to refer to any element.
TEST(Structure, anElementThatStandsInItsParentBecomesAnObject) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(taggedPage(
        "/K 41 0 R",
        element(41,
                "/S /P /P 40 0 R /K [<< /S /Span /K [0 << /S /Code /T (in) >>] /Pg 3 0 R >>]")));
    expectSound(merged, 1);
    EXPECT_EQ(structureOf(merged),
              "P (block)\n  Span (inline)\n    \"one\"\n    Code \"in\" (inline)\n");
}

TEST(Structure, ofAnEncryptedDocument) {
    const Bench bench;
    const std::string plain = bench.fixture("plain.pdf", paragraph("/Alt (words)"));
    const std::string locked = bench.folder() / "encrypted.pdf";
    static_cast<void>(runOrFail({"qpdf", "--encrypt", "", "owner", "256", "--", plain, locked}));
    const std::string merged = bench.merge({locked});
    EXPECT_EQ(structureOf(merged), structureOf(plain));
}

// The parent tree is how a reader finds the element of what it is pointed at.
TEST(Structure, isFoundFromThePagesContentAndTheAnnotations) {
    for (const std::string tree :
         {"<< /Nums [7 51 0 R 0 [41 0 R]] >>", "<< /Kids [46 0 R 47 0 R] >>", "45 0 R"}) {
        const Bench bench;
        const std::string source = bench.fixture(
            "source.pdf",
            replaced(
                taggedPage("/K 41 0 R /ParentTree " + tree,
                           element(41, "/S /P /P 40 0 R /Pg 3 0 R /K [0 51 0 R] /Alt (words)") +
                               element(51,
                                       "/S /Link /P 41 0 R /Pg 3 0 R /Alt (link) /K << /Type "
                                       "/OBJR /Obj 50 0 R >>") +
                               "{{object 45 0}}\n<< /Nums [0 48 0 R 7 51 0 R 9 41 0 R] >>\nendobj\n"
                               "{{object 46 0}}\n<< /Nums [0 48 0 R] /Limits [0 0] >>\nendobj\n"
                               "{{object 47 0}}\n<< /Nums [7 51 0 R] /Limits [7 7] >>\nendobj\n"
                               "{{object 48 0}}\n[41 0 R]\nendobj\n"
                               "{{object 50 0}}\n<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] "
                               "/StructParent 7 /Contents (here) >>\nendobj\n"),
                "/MediaBox", "/Annots [50 0 R] /MediaBox"));
        const std::string merged = bench.merge({source, source});
        expectSound(merged, 2);
        const auto texts = objectsWith(merged, "(words)");
        const auto links = objectsWith(merged, "(link)");
        const auto annotations = objectsWith(merged, "(here)");
        ASSERT_EQ(texts.size(), 2);
        ASSERT_EQ(links.size(), 2);
        ASSERT_EQ(annotations.size(), 2);
        const std::string all = everyObject(merged);
        const std::string parents = follow(merged, rootOf(merged), "/ParentTree");
        for (std::size_t copy = 0; copy < 2; ++copy) {
            const std::string page = test::pageDictionaries(merged)[copy];
            std::smatch match;
            ASSERT_TRUE(std::regex_search(page, match, std::regex("/StructParents ([0-9]+)")));
            const std::string key = match.str(1);
            const std::string annotation = test::objectText(merged, annotations[copy]);
            ASSERT_TRUE(std::regex_search(annotation, match, std::regex("/StructParent ([0-9]+)")));
            EXPECT_THAT(parents, HasSubstr(" " + match.str(1) + " " + links[copy] + " 0 R "));
            if (tree.find("41 0 R") != std::string::npos) {
                EXPECT_THAT(parents, HasSubstr(" " + key + " [ " + texts[copy] + " 0 R ]"));
            } else {
                EXPECT_THAT(all, HasSubstr("\n[ " + texts[copy] + " 0 R ]"));
            }
            EXPECT_THAT(test::objectText(merged, links[copy]),
                        HasSubstr("/Obj " + annotations[copy] + " 0 R"));
        }
        EXPECT_THAT(rootOf(merged), HasSubstr("/ParentTreeNextKey 4"));
    }
}

TEST(Structure, thatOnlyTheParentTreeKnowsComesAlong) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        taggedPage("/K 41 0 R /ParentTree << /Nums [0 [42 0 R 3 0 R 1 0 R 43 0 R]] >>",
                   element(41, "/S /P /P 40 0 R /Pg 3 0 R /K 0") +
                       "{{object 42 0}}\n<< /S /Span /Pg 3 0 R /K 0 /Alt (lost) >>\nendobj\n"
                       "{{object 43 0}}\n<< /Secret 1 >>\nendobj\n"));
    expectSound(merged, 1);
    const std::string lost = objectWith(merged, "(lost)");
    EXPECT_THAT(follow(merged, rootOf(merged), "/ParentTree"),
                HasSubstr("[ " + lost + " 0 R null null null ]"));
    EXPECT_EQ(follow(merged, test::objectText(merged, lost), "/P"), rootOf(merged));
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("/Secret")));
}

TEST(Structure, elementsReferToOneAnother) {
    for (const std::string reference : {"[42 0 R]", "42 0 R", "43 0 R"}) {
        const Bench bench;
        const std::string merged = bench.mergeFixture(taggedPage(
            "/K [41 0 R 42 0 R]", element(41, "/S /P /P 40 0 R /Pg 3 0 R /K 0 /Ref " + reference) +
                                      element(42, "/S /Note /P 40 0 R /Alt (note)") +
                                      "{{object 43 0}}\n[42 0 R]\nendobj\n"));
        const std::string note = objectWith(merged, "(note)");
        EXPECT_THAT(everyObject(merged), HasSubstr("/Ref [ " + note + " 0 R ]")) << reference;
        EXPECT_THAT(rootOf(merged), ContainsRegex("/K . [0-9]+ 0 R " + note + " 0 R ."))
            << reference;
    }
}

// Copied as anything else, an element would bring annotations along before their page does.
TEST(Structure, destinationsOfLinksLeadToIt) {
    const Bench bench;
    const auto linked = [](std::string_view destination) {
        return replaced(
            paragraph("/T (target)", "", "",
                      "{{object 50 0}}\n<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /A << /S "
                      "/GoTo /D [3 0 R /Fit] /SD " +
                          std::string(destination) + " >> >>\nendobj\n"),
            "/MediaBox", "/Annots [50 0 R] /MediaBox");
    };
    const std::string merged = bench.mergeFixture(linked("[41 0 R /FitH 20]"));
    expectSound(merged, 1);
    const std::string target = objectWith(merged, "(target)");
    EXPECT_THAT(everyObject(merged), HasSubstr("/SD [ " + target + " 0 R /FitH 20 ]"));
    EXPECT_EQ(structureOf(merged), "P \"target\" (block)\n  \"one\"\n");

    for (const std::string_view broken : {"[4 0 R /Fit]", "[99 0 R /Fit]", "[]", "(name)"})
        EXPECT_THAT(everyObject(bench.mergeFixture(linked(broken))), Not(HasSubstr("/SD")))
            << broken;
    const std::string untagged = replaced(linked("[41 0 R /Fit]"), "/StructTreeRoot 40 0 R", "");
    const std::string objects = everyObject(bench.mergeFixture(untagged));
    EXPECT_THAT(objects, Not(HasSubstr("/SD")));
    EXPECT_THAT(objects, Not(HasSubstr("target")));
}

TEST(Structure, namespacesAreJoinedAndSharedWhereTheyAreEqual) {
    const auto spaced = [](std::string_view name) {
        return paragraph(
            "/NS 45 0 R", "/Namespaces [45 0 R] /RoleMap << /P /Div >>", "",
            "{{object 45 0}}\n<< /Type /Namespace /NS (" + std::string(name) + ") >>\nendobj\n");
    };
    const Bench bench;
    const std::string merged = bench.merge({bench.fixture("a.pdf", spaced("urn:a")),
                                            bench.fixture("b.pdf", spaced("urn:b")),
                                            bench.fixture("c.pdf", spaced("urn:a"))});
    expectSound(merged, 3);
    const std::string a = objectWith(merged, "(urn:a)");
    const std::string b = objectWith(merged, "(urn:b)");
    EXPECT_THAT(rootOf(merged), HasSubstr("/Namespaces [ " + a + " 0 R " + b + " 0 R ]"));
    EXPECT_EQ(objectsWith(merged, "/NS " + a + " 0 R").size(), 2);
    EXPECT_EQ(objectsWith(merged, "/NS " + b + " 0 R").size(), 1);
    // The role map is about types without a namespace.
    EXPECT_EQ(objectsWith(merged, "/S /P ").size(), 3);
}

}  // namespace
}  // namespace quirebind::pdftest
