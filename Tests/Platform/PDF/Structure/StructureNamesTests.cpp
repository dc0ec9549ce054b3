// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Types, classes and identifiers mean for each source what they meant in it.

#include <regex>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/Structure/StructureTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

/// A document whose paragraph is of that type, with that role map.
std::string typed(std::string_view type, std::string_view roleMap) {
    return replaced(paragraph("", "/RoleMap << " + std::string(roleMap) + " >>"), "/S /P",
                    "/S /" + std::string(type));
}

/// Merges the fixtures of these texts, in their order.
std::string mergeAll(const Bench& bench, const std::vector<std::string>& texts) {
    std::vector<std::string> sources;
    for (const std::string& text : texts)
        sources.push_back(bench.fixture(std::to_string(sources.size()) + ".pdf", text));
    const std::string merged = bench.merge(sources);
    expectSound(merged, static_cast<int>(texts.size()));
    return merged;
}

/// What the readers see: the standard type of each document's only element.
std::vector<std::string> typesSeen(const std::string& path) {
    std::vector<std::string> types;
    std::istringstream lines(structureOf(path));
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with(' ')) types.push_back(line.substr(0, line.find(' ')));
    return types;
}

TEST(StructureTypes, meanWhatTheyMeantInEachSource) {
    const Bench bench;
    const std::string merged = mergeAll(
        bench, {typed("Text", "/Text /P"), typed("Text", "/Text /H1"), typed("Text", "/Text /P"),
                typed("Text", "/Text /H2"), typed("Text", "/Text /H1")});
    EXPECT_THAT(typesSeen(merged), ElementsAre("P", "H1", "P", "H2", "H1"));
    EXPECT_EQ(objectsWith(merged, "/S /Text ").size(), 2);
    EXPECT_THAT(rootOf(merged), HasSubstr("/RoleMap << /Text /P /Text_2 /H1 /Text_4 /H2 >>"));
}

TEST(StructureTypes, keepTheirMeaningThroughOthers) {
    const Bench bench;
    const std::string merged =
        mergeAll(bench, {typed("A", "/A /B /B /P"), typed("A", "/A /B /B /H1"), typed("B", "/B /P"),
                         typed("A#20b", "/A#20b /P")});
    EXPECT_THAT(typesSeen(merged), ElementsAre("P", "H1", "P", "P"));
    EXPECT_THAT(rootOf(merged), HasSubstr("/A#20b /P"));
}

TEST(StructureTypes, thatAreStandardStaySoForEverybodyElse) {
    const Bench bench;
    const std::string merged =
        mergeAll(bench, {typed("H1", "/H1 /P"), typed("H1", "/H1 /H1"), typed("H1", "")});
    EXPECT_THAT(typesSeen(merged), ElementsAre("P", "H1", "H1"));
    EXPECT_THAT(rootOf(merged), Not(HasSubstr("/H1 ")));
    EXPECT_EQ(objectsWith(merged, "/S /H1 ").size(), 2);
}

TEST(StructureTypes, thatNobodyKnowsAreNotGivenAMeaning) {
    const Bench bench;
    const std::string merged = mergeAll(bench, {typed("Odd", ""), typed("Odd", "/Odd /P"),
                                                typed("New", "/New /P"), typed("New", "")});
    EXPECT_THAT(rootOf(merged), HasSubstr("/RoleMap << /New /P /Odd_2 /P >>"));
    EXPECT_EQ(objectsWith(merged, "/S /Odd ").size(), 1);
    EXPECT_EQ(objectsWith(merged, "/S /New ").size(), 1);
}

TEST(StructureTypes, mayBeMappedInCircles) {
    const Bench bench;
    const std::string merged =
        mergeAll(bench, {typed("A", "/A /B /B /C /C /A"), typed("B", "/A /A /B /P")});
    EXPECT_THAT(typesSeen(merged), Contains("P"));
}

/// A document whose paragraph is of that class, with that class map.
std::string classified(std::string_view classes, std::string_view classMap,
                       std::string_view objects = "") {
    return paragraph("/C " + std::string(classes), "/ClassMap << " + std::string(classMap) + " >>",
                     "", objects);
}

TEST(AttributeClasses, haveTheAttributesThatTheyHadInEachSource) {
    const Bench bench;
    const std::string attributes = "<< /O /Layout /SpaceAfter 9 >>";
    const std::string merged = mergeAll(
        bench, {classified("/C1", "/C1 " + attributes), classified("/C1", "/C1 << /O /Layout >>"),
                classified("[/C1 0 /C2 1]", "/C1 45 0 R /C2 [45 0 R 46 0 R]",
                           "{{object 45 0}}\n" + attributes +
                               "\nendobj\n{{object 46 0}}\n<< /O /List >>\nendobj\n"),
                classified("46 0 R", "/C1 " + attributes, "{{object 46 0}}\n[/C1]\nendobj\n"),
                classified("/C1", "")});
    EXPECT_THAT(rootOf(merged),
                HasSubstr("/ClassMap << /C1 << /O /Layout /SpaceAfter 9 >> /C1_2 << /O /Layout >> "
                          "/C2 [ << /O /Layout /SpaceAfter 9 >> << /O /List >> ] >>"));
    EXPECT_EQ(objectsWith(merged, "/C /C1 ").size(), 1);
    EXPECT_EQ(objectsWith(merged, "/C /C1_2 ").size(), 1);
    EXPECT_EQ(objectsWith(merged, "/C [ /C1 0 /C2 1 ]").size(), 1);
    EXPECT_EQ(objectsWith(merged, "/C [ /C1 ]").size(), 1);
    EXPECT_EQ(objectsWith(merged, "/C /C1_5 ").size(), 1);  // of no attributes
}

/// A table's cell that names a header, which is an element of that identifier. The attributes are
/// written in that way.
std::string table(std::string_view id, std::string_view attributes,
                  std::string_view classMap = "") {
    std::string text =
        taggedPage("/K [41 0 R 42 0 R] /ClassMap << " + std::string(classMap) + " >>",
                   element(41, "/S /TH /P 40 0 R /ID (%)") +
                       element(42, "/S /TD /P 40 0 R /Pg 3 0 R /K 0 " + std::string(attributes)) +
                       "{{object 45 0}}\n<< /O /Table /Headers [(%)] >>\nendobj\n"
                       "{{object 46 0}}\n[(%)]\nendobj\n{{object 47 0}}\n(%)\nendobj\n");
    while (text.find("(%)") != std::string::npos)
        text = replaced(text, "(%)", "(" + std::string(id) + ")");
    return text;
}

TEST(ElementIDs, staysWithTheFirstAndCellsFollowTheirHeaders) {
    for (const std::string attributes :
         {"/A << /O /Table /Headers [(%)] >>",
          "/A [<< /O /Layout >> << /O /Table /Headers [(%)] >> 2]", "/A 45 0 R", "/A [45 0 R 1]",
          "/A << /O /Table /Headers 46 0 R >>", "/A << /O /Table /Headers [47 0 R] >>",
          "/C /Cell"}) {
        const Bench bench;
        const std::string text = table("id", attributes, "/Cell 45 0 R");
        const std::string merged =
            mergeAll(bench, {text, text, table("id_2", attributes, "/Cell 45 0 R")});
        const std::string all = everyObject(merged);
        const std::string tree = follow(merged, rootOf(merged), "/IDTree");
        std::string expected = "/Names [";
        for (const std::string id : {"(id)", "(id_2)", "(id_2_3)"}) {
            EXPECT_THAT(all, HasSubstr(id)) << attributes;
            expected += " " + id + " " + objectWith(merged, "/ID " + id) + " 0 R";
            EXPECT_THAT(all, AnyOf(HasSubstr("[ " + id + " ]"), HasSubstr("\n" + id + "\n")))
                << attributes;
        }
        EXPECT_THAT(tree, HasSubstr(expected + " ]")) << attributes;
    }
}

TEST(ElementIDs, maybeOfAnyBytesAndAreSortedByThem) {
    const Bench bench;
    const std::string ids = taggedPage(
        "/K [41 0 R 42 0 R 43 0 R 44 0 R]",
        element(41, "/S /P /P 40 0 R /ID <ff00>") + element(42, "/S /P /P 40 0 R /ID (a\\)\\()") +
            element(43, "/S /P /P 40 0 R /ID <0d0a>") + element(44, "/S /P /P 40 0 R /ID ()"));
    const std::string merged = mergeAll(bench, {ids, ids});
    std::string tree = follow(merged, rootOf(merged), "/IDTree");
    std::size_t last = 0;
    for (const std::string_view id : {"()", "(\\r\\n)", "(\\r\\n_2)", "(_2)", "(a\\)\\()",
                                      "(a\\)\\(_2)", "<ff00>", "<ff005f32>"}) {
        const std::size_t at = tree.find(id);
        ASSERT_NE(at, std::string::npos) << id << tree;
        EXPECT_GE(at, last) << tree;
        last = at;
    }
}

TEST(ElementIDs, ofWhichThereAreManyAreInATreeOfManyLeaves) {
    constexpr int kElements = 5000;
    std::string kids;
    std::string objects;
    for (int i = 0; i < kElements; ++i) {
        kids += std::to_string(100 + i) + " 0 R ";
        objects += element(100 + i, "/S /P /P 40 0 R /ID (" + std::to_string(1000000 + i) + ")");
    }
    const Bench bench;
    const std::string merged = mergeAll(bench, {taggedPage("/K [" + kids + "]", objects)});
    const std::string text = test::fileJSON(merged);
    int leaves = 0;
    std::string previous;
    const std::regex limits(
        R"x("/Limits": \[\s*"u:(\d+)",\s*"u:(\d+)"\s*\],\s*"/Names": \[([^\]]*)\])x");
    for (std::sregex_iterator i(text.begin(), text.end(), limits), end; i != end; ++i, ++leaves) {
        const std::string names = i->str(3);
        EXPECT_NE(names.find("u:" + i->str(1) + "\""), std::string::npos);
        EXPECT_NE(names.find("u:" + i->str(2) + "\""), std::string::npos);
        EXPECT_LT(previous, i->str(1));
        previous = i->str(2);
    }
    EXPECT_EQ(leaves, (kElements + 63) / 64);
    EXPECT_EQ(previous, std::to_string(1000000 + kElements - 1));
}

}  // namespace
}  // namespace quirebind::pdftest
