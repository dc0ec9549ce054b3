// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Value, isAnInteger) {
    EXPECT_EQ(Value("0").integer(), 0);
    EXPECT_EQ(Value("-17").integer(), -17);
    EXPECT_EQ(Value("+17").integer(), 17);
    EXPECT_EQ(Value("0017").integer(), 17);
    EXPECT_EQ(Value("9223372036854775807").integer(), std::numeric_limits<std::int64_t>::max());
    // Real files write counts and lengths so.
    EXPECT_EQ(Value("17.").integer(), 17);
    EXPECT_EQ(Value("17.000").integer(), 17);
}

TEST(Value, isNoInteger) {
    for (const std::string_view text :
         {"", "17.5", "x", "1x", "--1", "-", "/1", "(1)", "1 0 R", "9223372036854775808",
          "99999999999999999999", "null", "[1]", ".0"}) {
        EXPECT_EQ(Value(text).integer(), std::nullopt) << text;
    }
}

TEST(Value, isATruthValue) {
    EXPECT_EQ(Value("true").boolean(), true);
    EXPECT_EQ(Value("false").boolean(), false);
    EXPECT_EQ(Value("True").boolean(), std::nullopt);
    EXPECT_EQ(Value("").boolean(), std::nullopt);
}

TEST(Value, isAReference) {
    EXPECT_EQ(Value("12 3 R").reference(), (Reference{12, 3}));
    EXPECT_EQ(Value("12 3").reference(), std::nullopt);
    EXPECT_EQ(Value("[12 3 R]").reference(), std::nullopt);
    EXPECT_EQ(Value("").reference(), std::nullopt);
}

TEST(Value, isAName) {
    EXPECT_EQ(Value("/Name").name(), "Name");
    EXPECT_EQ(Value("/A#20B#2F").name(), "A B/");
    EXPECT_EQ(Value("/#41#4a#4A").name(), "AJJ");
    EXPECT_EQ(Value("/A#4").name(), "A#4");
    EXPECT_EQ(Value("/A#").name(), "A#");
    EXPECT_EQ(Value("/A#GG").name(), "A#GG");
    EXPECT_EQ(Value("/").name(), "");
    EXPECT_EQ(Value("(Name)").name(), "");
}

TEST(Value, isTheSameNameInAnySpelling) {
    EXPECT_TRUE(Value("/Kids").isName("Kids"));
    EXPECT_TRUE(Value("/K#69ds").isName("Kids"));
    EXPECT_TRUE(Value("/#4b#69#64#73").isName("Kids"));
    EXPECT_FALSE(Value("/Kid").isName("Kids"));
    EXPECT_FALSE(Value("/Kidss").isName("Kids"));
    EXPECT_FALSE(Value("/kids").isName("Kids"));
    EXPECT_FALSE(Value("(Kids)").isName("Kids"));
}

TEST(Value, isNull) {
    EXPECT_TRUE(Value().isNull());
    EXPECT_TRUE(Value("null").isNull());
    EXPECT_FALSE(Value("0").isNull());
    EXPECT_FALSE(Value("(null)").isNull());
}

TEST(Value, findsItsEntries) {
    const Value dictionary("<</A 1/B(two)/C<</A 9/D 8>>/D[/A/B]/E 5 0 R/F%c\n6/#47 7/Last/Name>>");
    EXPECT_EQ(dictionary.find("A").text(), "1");
    EXPECT_EQ(dictionary.find("B").text(), "(two)");
    EXPECT_EQ(dictionary.find("C").find("D").text(), "8");
    EXPECT_EQ(dictionary.find("D").text(), "[/A/B]");
    EXPECT_EQ(dictionary.find("E").text(), "5 0 R");
    EXPECT_EQ(dictionary.find("F").text(), "6");
    EXPECT_EQ(dictionary.find("G").text(), "7");
    EXPECT_EQ(dictionary.find("Last").text(), "/Name");
    EXPECT_TRUE(dictionary.find("Name").isNull());
    EXPECT_TRUE(dictionary.find("").isNull());
}

// Other readers take the last of repeated keys.
TEST(Value, findsTheLastOfItsEntriesOfThatName) {
    EXPECT_EQ(Value("<</A 1/B 2/A 3/C 4>>").find("A").text(), "3");
    EXPECT_EQ(Value("<</A 1/B 2/#41 3/C 4>>").find("A").text(), "3");
    EXPECT_EQ(Value("<</A 1/A 2/A 3/B/A>>").find("A").text(), "3");
    EXPECT_EQ(Value("<</A 1/B<</A 2>>/C(/A 3)/D[/A 4]>>").find("A").text(), "1");
    EXPECT_EQ(Value("<</A 1/A null>>").find("A").text(), "null");
    EXPECT_EQ(Value("<</A 1/A>>").find("A").text(), "1") << "a last key without a value is absent";
}

TEST(Value, hasNoEntriesWhereItIsNoDictionary) {
    for (const std::string_view text : {"", "[/A 1]", "(/A 1)", "/A", "1", "<<>>"}) {
        EXPECT_TRUE(Value(text).find("A").isNull()) << text;
    }
}

std::vector<std::string> elements(std::string_view text) {
    ArrayReader reader{Value(text)};
    std::vector<std::string> result;
    while (const auto element = reader.next()) result.emplace_back(element->text());
    return result;
}

TEST(ArrayReader, readsElementByElement) {
    EXPECT_THAT(
        elements("[1 2 0 R(three)/Four[5 [6]]<</Seven 7>>null<38>]"),
        ElementsAre("1", "2 0 R", "(three)", "/Four", "[5 [6]]", "<</Seven 7>>", "null", "<38>"));
    EXPECT_THAT(elements("[]"), IsEmpty());
    EXPECT_THAT(elements("[ %c\n ]"), IsEmpty());
    EXPECT_THAT(elements("<</A 1>>"), IsEmpty());
    EXPECT_THAT(elements(""), IsEmpty());
}

TEST(DictionaryReader, tellsWhetherItWasADictionary) {
    const auto wellFormed = [](std::string_view text) {
        DictionaryReader reader{Value(text)};
        while (reader.next()) {
        }
        return reader.wellFormed();
    };
    EXPECT_TRUE(wellFormed("<</A 1/B 2>>"));
    EXPECT_TRUE(wellFormed("<<>>"));
    EXPECT_TRUE(wellFormed("<</A>>"));
    EXPECT_FALSE(wellFormed("<<1 2>>"));
    EXPECT_FALSE(wellFormed("<</A 1 2/B 3>>"));
}

}  // namespace
}  // namespace quirebind
