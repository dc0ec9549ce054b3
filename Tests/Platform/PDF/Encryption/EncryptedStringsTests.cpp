// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/PDF/Encryption/EncryptedStrings.h"

namespace quirebind::pdftest {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> stringsIn(std::string_view text) {
    std::vector<std::string> result;
    for (const Extent& string : findEncryptedStrings(text)) result.emplace_back(string.in(text));
    return result;
}

TEST(EncryptedStrings, areFoundWhereverTheyStand) {
    EXPECT_THAT(stringsIn("(a)"), ElementsAre("(a)"));
    EXPECT_THAT(stringsIn("<61>"), ElementsAre("<61>"));
    EXPECT_THAT(stringsIn("[(a)<62>()<>]"), ElementsAre("(a)", "<62>", "()", "<>"));
    EXPECT_THAT(stringsIn("<</A(a)/B[<</C<63>>>(d)]/E(e)>>"),
                ElementsAre("(a)", "<63>", "(d)", "(e)"));
    EXPECT_THAT(stringsIn("<< /A (b) % (comment)\n /C <d> >>"), ElementsAre("(b)", "<d>"));
}

TEST(EncryptedStrings, areWhole) {
    EXPECT_THAT(stringsIn("[(a (b) \\( \\\\) (c\\)d)]"),
                ElementsAre("(a (b) \\( \\\\)", "(c\\)d)"));
    EXPECT_THAT(stringsIn("[(/Name << [ 5 0 R) <6 1\n>]"),
                ElementsAre("(/Name << [ 5 0 R)", "<6 1\n>"));
}

TEST(EncryptedStrings, areNotWhateverElseThereIs) {
    EXPECT_THAT(stringsIn(""), IsEmpty());
    EXPECT_THAT(stringsIn("null"), IsEmpty());
    EXPECT_THAT(stringsIn("<< /A /B /C 5 0 R /D [1 -2.5 true null] /E << >> >>"), IsEmpty());
    EXPECT_THAT(stringsIn("% (a)\n5"), IsEmpty());
}

TEST(EncryptedStrings, areNotTheContentsOfSignatures) {
    EXPECT_THAT(stringsIn("<</ByteRange[0 1 2 3]/Contents<00>/Name(n)>>"), ElementsAre("(n)"));
    EXPECT_THAT(stringsIn("<</Contents<00>/Name(n)/ByteRange[0 1 2 3]>>"), ElementsAre("(n)"));
    EXPECT_THAT(stringsIn("<</Contents(00)/ByteRange 5 0 R>>"), IsEmpty());
    EXPECT_THAT(stringsIn("<</Cont#65nts<00>/Byte#52ange[0 1 2 3]>>"), IsEmpty());
    EXPECT_THAT(stringsIn("[<</T(t)/V<</ByteRange[]/Contents<00>>>/Contents(c)>>]"),
                ElementsAre("(t)", "(c)"));
}

TEST(EncryptedStrings, areTheContentsOfOtherDictionaries) {
    EXPECT_THAT(stringsIn("<</Type/Annot/Contents(c)>>"), ElementsAre("(c)"));
    EXPECT_THAT(stringsIn("<</Contents(c)/A<</ByteRange[]>>>>"), ElementsAre("(c)"));
    EXPECT_THAT(stringsIn("<</ByteRange[]/A<</Contents(c)>>>>"), ElementsAre("(c)"));
    EXPECT_THAT(stringsIn("<</ByteRange[(a)]/A[/Contents(c)]>>"), ElementsAre("(a)", "(c)"));
    EXPECT_THAT(stringsIn("<</A/ByteRange/Contents(c)>>"), ElementsAre("(c)"));
    EXPECT_THAT(stringsIn("<</ByteRange 1/A/Contents/B(c)>>"), ElementsAre("(c)"));
}

TEST(EncryptedStrings, areFoundInBrokenDictionaries) {
    EXPECT_THAT(stringsIn("<</A(a)(b)/C>>"), ElementsAre("(a)", "(b)"));
    EXPECT_THAT(stringsIn("<<(a)/B(b)5/C(c)>>"), ElementsAre("(a)", "(b)", "(c)"));
}

}  // namespace
}  // namespace quirebind::pdftest
