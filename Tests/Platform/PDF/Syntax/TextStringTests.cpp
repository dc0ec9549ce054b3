// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The text that strings stand for.

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Platform/PDF/Syntax/TextString.h"

namespace quirebind {
namespace {

using std::string_view_literals::operator""sv;

TEST(TextString, isReadInAllItsEncodings) {
    EXPECT_EQ(textOf("plain"), "plain");
    EXPECT_EQ(textOf("caf\xE9 \x80 \xA0 \x18"), "café • € ˘");
    EXPECT_EQ(textOf("\xFE\xFF\0c\x20\xAC\xD8\x3D\xDE\0"sv), "c€😀");
    EXPECT_EQ(textOf("\xFF\xFE\x63\0\xAC\x20"sv), "c€");
    EXPECT_EQ(textOf("\xEF\xBB\xBF\xC3\xA9"), "é");
    EXPECT_EQ(textOf(""), "");
}

TEST(TextString, hasATextWhateverItsBytes) {
    EXPECT_EQ(textOf("\xFE\xFF\0c\0"sv), "c");
    EXPECT_EQ(textOf("\xFE\xFF\xD8\x3D"sv), "\xED\xA0\xBD");
    EXPECT_NE(textOf("\x7F"), textOf("\x9F"));
}

TEST(TextString, isWrittenSoThatItIsReadAsTheSame) {
    EXPECT_EQ(textStringOf("plain (1)\n"), "plain (1)\n");
    EXPECT_EQ(textStringOf("é😀"), "\xFE\xFF\0\xE9\xD8\x3D\xDE\0"sv);
    for (const std::string_view text : {"plain", "café", "• € ˘", "😀 ∑", "\x7F"})
        EXPECT_EQ(textOf(textStringOf(text)), text);
}

TEST(TextString, isWrittenAlsoOfWhatIsNoUTF8) {
    EXPECT_EQ(textStringOf("\xC3"), "\xFE\xFF\0\xC3"sv);
    EXPECT_EQ(textStringOf("\xE2\x82x"), "\xFE\xFF\0\xE2\0\x82\0x"sv);
}

}  // namespace
}  // namespace quirebind
