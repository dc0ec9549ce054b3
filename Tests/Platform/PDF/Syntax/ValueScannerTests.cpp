// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/UnsignedNumber.h"
#include "Platform/PDF/Syntax/ValueScanner.h"

namespace quirebind {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// What the value at the beginning of `text` is, as scanned; "broken" where it is none.
std::string scanned(std::string_view text) {
    const Extent extent = scanValue(text, 0);
    return extent.isValue() ? std::string(extent.in(text)) : "broken";
}

struct ExtentCase {
    std::string_view value;
    std::string_view rest;
};

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds it by this name.
void PrintTo(const ExtentCase& each, std::ostream* out) {
    *out << each.value << " before " << each.rest;
}

class ValueExtent : public ::testing::TestWithParam<ExtentCase> {};

TEST_P(ValueExtent, isFoundWhateverFollows) {
    const auto& [value, rest] = GetParam();
    EXPECT_EQ(scanned(std::string(value) + std::string(rest)), value);
    EXPECT_EQ(scanned(std::string(value)), value) << "at the end of the text";
}

INSTANTIATE_TEST_SUITE_P(
    Of, ValueExtent,
    ::testing::Values(
        ExtentCase{"1", " 2"}, ExtentCase{"-1.5", "/A"}, ExtentCase{"+.5", "]"},
        ExtentCase{"true", ">>"}, ExtentCase{"null", "(x)"}, ExtentCase{"/Name", "/Other"},
        ExtentCase{"/Name#20x", " "}, ExtentCase{"/", "/A"}, ExtentCase{"(text)", "(more)"},
        ExtentCase{"(a(b)c)", ")"}, ExtentCase{R"((\)))", "x"}, ExtentCase{R"((\\))", "x"},
        ExtentCase{"()", "()"}, ExtentCase{"<48>", "<49>"}, ExtentCase{"<>", ">"},
        ExtentCase{"[]", "]"}, ExtentCase{"[1[2]3]", "]"}, ExtentCase{"<<>>", ">>"},
        ExtentCase{"<</A<</B[<<>>]>>>>", ">"}, ExtentCase{"[(])]", "x"}, ExtentCase{"[<5D>]", "x"},
        ExtentCase{"[%]\n]", "x"}, ExtentCase{"<</A(>>)>>", "x"}, ExtentCase{"1 0 R", " x"},
        ExtentCase{"1 0 R", "/A"}, ExtentCase{"12\t\r\n0\fR", "]"}));

TEST(ValueExtent, ofAnAbsentValueIsNothing) {
    EXPECT_EQ(scanned("endobj"), "");
    EXPECT_EQ(scanned("  endobj"), "");
    EXPECT_EQ(scanned(""), "");
}

TEST(ValueExtent, beginsBehindWhiteSpaceAndComments) {
    EXPECT_EQ(scanned(" % (comment\n\t[1]x"), "[1]");
    EXPECT_EQ(scanValue(" % (comment\n\t[1]x", 0).begin, 13U);
}

TEST(BrokenValue, isNoValue) {
    for (const std::string_view text :
         {"(",    "(a(b)",   R"((\))", "<",           "<48",         "[",        "[1", "<<",
          "<</A", "<</A 1>", "[1>>",   "<<1]",        "]",           ">>",       ">",  ")",
          "{",    "}",       "[}]",    "[1 endobj ]", "<</A endobj", "[stream]", "[)"}) {
        EXPECT_FALSE(scanValue(text, 0).isValue()) << text;
    }
}

TEST(BrokenValue, isReadNoFurtherThanItTakes) {
    const std::string rest(1000, ' ');
    EXPECT_LT(scanValue(")" + rest, 0).looked, 3U);
    EXPECT_LT(scanValue("[ )" + rest, 0).looked, 5U);
    EXPECT_LT(scanValue("[endobj" + rest, 0).looked, 9U);
    EXPECT_EQ(scanValue("[" + rest, 0).looked, 1001U);
    EXPECT_EQ(scanValue("(" + rest, 0).looked, 1001U);
}

std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(Nesting, isLimited) {
    EXPECT_EQ(scanned(nested(limits::kNesting)), nested(limits::kNesting));
    EXPECT_EQ(scanned(nested(limits::kNesting + 1)), "broken");
}

TEST(Nesting, knowsTheKindOfEachBracketHoweverDeep) {
    constexpr int kDeep = 200;
    std::string opening;
    std::string closing;
    for (int i = 0; i < kDeep; ++i) {
        const bool isArray = i % 3 == 0;
        opening += isArray ? "[" : "<</A";
        closing.insert(0, isArray ? "]" : ">>");
    }
    EXPECT_EQ(scanned(opening + closing + "]"), opening + closing);
    for (std::size_t at = 0; at < closing.size(); ++at) {
        std::string wrong = closing;
        wrong[at] = wrong[at] == ']' ? '>' : ']';
        EXPECT_EQ(scanned(opening + wrong), "broken") << at;
    }
}

/// The references that are found in the text, with the text that stands there.
std::vector<std::string> referencesIn(std::string_view text) {
    FoundParts parts;
    EXPECT_TRUE(scanValue(text, 0, &parts).isValue());
    std::vector<std::string> result;
    for (const FoundReference& each : parts.references()) {
        result.push_back(std::string(text.substr(each.begin, each.end - each.begin)) + " = " +
                         std::to_string(each.reference.number) + "/" +
                         std::to_string(each.reference.generation));
    }
    return result;
}

TEST(References, areFoundWhereTheyStandInTheirOrder) {
    EXPECT_THAT(referencesIn("1 0 R"), ElementsAre("1 0 R = 1/0"));
    EXPECT_THAT(referencesIn("[1 0 R 22 7 R]"), ElementsAre("1 0 R = 1/0", "22 7 R = 22/7"));
    EXPECT_THAT(referencesIn("<</A 3 0 R/B[4 0 R<</C 5 0 R>>]>>"),
                ElementsAre("3 0 R = 3/0", "4 0 R = 4/0", "5 0 R = 5/0"));
    EXPECT_THAT(referencesIn("[1 2 3 0 R]"), ElementsAre("3 0 R = 3/0"));
    EXPECT_THAT(referencesIn("[1 0\n \tR]"), ElementsAre("1 0\n \tR = 1/0"));
    EXPECT_THAT(referencesIn("[007 00 R]"), ElementsAre("007 00 R = 7/0"));
}

TEST(References, areNotFoundInOtherThings) {
    for (const std::string_view text :
         {"[(1 0 R)]", "[<1 0 R>]", "[/1 0 /R]", "[1 0]", "[1 0 Rx]", "[1 R]", "[-1 0 R]",
          "[1.0 0 R]", "[1 0.0 R]", "[% 1 0 R\n]", "[1 -0 R]", "[10R]"}) {
        EXPECT_THAT(referencesIn(text), IsEmpty()) << text;
    }
}

TEST(References, areFoundOnBothSidesOfAComment) {
    EXPECT_THAT(referencesIn("[1 % 2\n0 R 3 0 %)\rR]"),
                ElementsAre("1 % 2\n0 R = 1/0", "3 0 %)\rR = 3/0"));
    EXPECT_THAT(referencesIn("[1 % 2 0 \n0 R]"), ElementsAre("1 % 2 0 \n0 R = 1/0"));
}

TEST(References, beginWhereANumberBegins) {
    for (const std::string_view text :
         {"[/1 0 R]", "[/A1 0 R]", "[x1 0 R]", "[+1 0 R]", "[ 0 R]", "[/A 0 R]", "[(1) 0 R]"}) {
        EXPECT_THAT(referencesIn(text), IsEmpty()) << text;
    }
    EXPECT_THAT(referencesIn("[(a)1 0 R<41>2 0 R]"), ElementsAre("1 0 R = 1/0", "2 0 R = 2/0"));
    EXPECT_THAT(referencesIn("[1 2  0 R]"), ElementsAre("2  0 R = 2/0"));
}

TEST(References, arePlacedFromTheValuesBeginning) {
    FoundParts parts;
    EXPECT_TRUE(scanValue("xx  [1 0 R]", 2, &parts).isValue());
    ASSERT_EQ(parts.references().size(), 1U);
    EXPECT_EQ(parts.references()[0].begin, 1U);
    EXPECT_EQ(parts.references()[0].end, 6U);
}

TEST(References, toImpossibleObjectsNameNothing) {
    EXPECT_THAT(referencesIn("[4294967297 0 R]"), ElementsAre("4294967297 0 R = 0/0"));
    EXPECT_THAT(referencesIn("[2147483647 65535 R]"),
                ElementsAre("2147483647 65535 R = 2147483647/65535"));
    EXPECT_THAT(referencesIn("[1 4294967296 R]"), ElementsAre("1 4294967296 R = 1/65536"));
}

/// Long enough to move what follows from one block of the text that is looked at to the next.
constexpr std::size_t kShifts = 140;

TEST(References, areTheSameWhereverTheyStand) {
    for (std::size_t shift = 0; shift < kShifts; ++shift) {
        SCOPED_TRACE(shift);
        const std::string spaces(shift, ' ');
        const std::string digits(shift, '7');
        EXPECT_THAT(referencesIn("[[" + spaces + "1 0 R(2 0 R)/3 0 R <4 0 R>55 6 R]]"),
                    ElementsAre("1 0 R = 1/0", "55 6 R = 55/6"));
        EXPECT_THAT(referencesIn("[[/" + digits + " 0 R 0." + digits + " 0 R 8 0 R]]"),
                    ElementsAre("8 0 R = 8/0"));
        EXPECT_THAT(referencesIn("[[(" + digits + ")1 0 R %" + digits + " 0 R\n2 0 R]]"),
                    ElementsAre("1 0 R = 1/0", "2 0 R = 2/0"));
    }
}

TEST(ReadUnsigned, takesAtMostNineteenDigits) {
    std::uint64_t value = 0;
    std::size_t at = 1;
    EXPECT_TRUE(readUnsigned("x9999999999999999999y", at, value));
    EXPECT_EQ(value, 9999999999999999999U);
    EXPECT_EQ(at, 20U);
    at = 0;
    EXPECT_FALSE(readUnsigned("10000000000000000000", at, value));
    EXPECT_EQ(at, 0U);
    for (const std::string_view text : {"", "x", "-1", "+1", " 1"}) {
        EXPECT_FALSE(readUnsigned(text, at, value)) << text;
    }
}

/// The entries that a scan notes, as "key = value", and "broken" where they end before the text.
std::vector<std::string> entriesIn(std::string_view text) {
    FoundParts parts;
    EXPECT_TRUE(scanValue(text, 0, &parts).isValue());
    std::vector<std::string> result;
    for (const FoundEntry& each : parts.entries()) {
        result.push_back(
            std::string(text.substr(each.keyBegin, each.keyEnd - each.keyBegin)) + " = " +
            std::string(text.substr(each.valueBegin, each.valueEnd - each.valueBegin)));
    }
    if (!parts.wellFormed()) result.emplace_back("broken");
    return result;
}

TEST(Entries, areThoseOfTheDictionaryItself) {
    EXPECT_THAT(entriesIn("<</A 1/B/C/D<</E 2/F[3]>>/G[4/H]/I 5 0 R/J true>>"),
                ElementsAre("/A = 1", "/B = /C", "/D = <</E 2/F[3]>>", "/G = [4/H]", "/I = 5 0 R",
                            "/J = true"));
    EXPECT_THAT(entriesIn("<</A(1)/B<32> % /C 3\n/D -4>>"),
                ElementsAre("/A = (1)", "/B = <32>", "/D = -4"));
    EXPECT_THAT(entriesIn("<<>>"), IsEmpty());
}

TEST(Entries, areTheSameWhereverTheyStand) {
    for (std::size_t shift = 0; shift < kShifts; ++shift) {
        SCOPED_TRACE(shift);
        const std::string name = "/N" + std::string(shift, 'n');
        const std::string inside = "<</A<</B" + name + ">>/C" + name + "/D[[/E]" + name + "]/F 2>>";
        EXPECT_THAT(entriesIn("<<" + name + " 1/G" + name + "/H" + inside + "/I 3 0 R/J(" + name +
                              ")/K true>>"),
                    ElementsAre(name + " = 1", "/G = " + name, "/H = " + inside, "/I = 3 0 R",
                                "/J = (" + name + ")", "/K = true"));
    }
}

TEST(Entries, areOfNothingElse) {
    for (const std::string_view text : {"[/A 1]", "/A", "1 0 R", "[<</A 1>>]"}) {
        EXPECT_THAT(entriesIn(text), IsEmpty()) << text;
    }
}

TEST(Entries, endWhereAKeyIsMissing) {
    EXPECT_THAT(entriesIn("<</A 1 2/B 3>>"), ElementsAre("/A = 1", "broken"));
    EXPECT_THAT(entriesIn("<<[/A]/B 3>>"), ElementsAre("broken"));
    EXPECT_THAT(entriesIn("<</A 1/B>>"), ElementsAre("/A = 1", "/B = "));
}

}  // namespace
}  // namespace quirebind
