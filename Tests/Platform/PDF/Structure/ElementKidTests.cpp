// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <string_view>

#include <gtest/gtest.h>

#include "Platform/PDF/Structure/ElementKid.h"

namespace quirebind {
namespace {

KidKind kindOf(std::string_view text) {
    return ElementKid::read(Value(text)).kind;
}

TEST(ElementKid, isWhatItsTypeSays) {
    EXPECT_EQ(kindOf("<</Type/StructElem/MCID 1>>"), KidKind::element);
    EXPECT_EQ(kindOf("<</S/P/Type/MCR/MCID 1>>"), KidKind::markedContent);
    EXPECT_EQ(kindOf("<</S/P/MCID 1/Type/OBJR>>"), KidKind::object);
    EXPECT_EQ(kindOf("<</Type/MCR/Type/OBJR>>"), KidKind::object) << "the last counts";
    EXPECT_EQ(kindOf("<</Type/StructElem/Type/MCR/MCID 1>>"), KidKind::markedContent);
}

TEST(ElementKid, isToldByItsEntriesWithoutAType) {
    EXPECT_EQ(kindOf("<</S/P/MCID 1>>"), KidKind::element);
    EXPECT_EQ(kindOf("<</MCID 1>>"), KidKind::markedContent);
    EXPECT_EQ(kindOf("<</S null/MCID 1>>"), KidKind::markedContent);
    EXPECT_EQ(kindOf("<</Type/Other/S/P>>"), KidKind::element);
    EXPECT_EQ(kindOf("<</MCID null>>"), KidKind::none);
    EXPECT_EQ(kindOf("<</Obj 1 0 R>>"), KidKind::none);
}

TEST(ElementKid, isToldByItsEntriesWhereItsTypeIsAnObject) {
    EXPECT_EQ(kindOf("<</Type 9 0 R/Obj 1 0 R>>"), KidKind::object);
    EXPECT_EQ(kindOf("<</Type 9 0 R/MCID 1>>"), KidKind::markedContent);
    EXPECT_EQ(kindOf("<</Type 9 0 R/S/P>>"), KidKind::element);
    EXPECT_EQ(kindOf("<</Type 9 0 R>>"), KidKind::none);
}

TEST(ElementKid, isAnIdentifierIfItIsAnInteger) {
    const ElementKid kid = ElementKid::read(Value("12"));
    EXPECT_EQ(kid.kind, KidKind::identifier);
    EXPECT_EQ(kid.identifier.text(), "12");
    for (const std::string_view text : {"1.5", "/P", "(1)", "[1]", "null", ""}) {
        EXPECT_EQ(kindOf(text), KidKind::none) << text;
    }
}

TEST(ElementKid, hasTheLastOfEachEntry) {
    const ElementKid kid = ElementKid::read(
        Value("<</StmOwn 1 0 R/Stm 2 0 R/Pg 7 0 R/Obj 4 0 R/MCID 6/MCID 5/Pg 3 0 R/Type/MCR>>"));
    EXPECT_EQ(kid.streamOwner.text(), "1 0 R");
    EXPECT_EQ(kid.stream.text(), "2 0 R");
    EXPECT_EQ(kid.page.text(), "3 0 R");
    EXPECT_EQ(kid.object.text(), "4 0 R");
    EXPECT_EQ(kid.identifier.text(), "5");
}

}  // namespace
}  // namespace quirebind
