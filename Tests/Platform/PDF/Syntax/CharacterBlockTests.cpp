// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <cstddef>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Platform/PDF/Syntax/CharacterBlock.h"
#include "Platform/PDF/Syntax/Characters.h"

namespace quirebind {
namespace {

constexpr std::size_t kSize = CharacterBlock::kSize;

/// Every byte there is, and then some.
std::string allBytes() {
    std::string text;
    for (int c = 0; c < 256; ++c) text += static_cast<char>(c);
    return text + text.substr(0, kSize);
}

bool bit(std::uint64_t bits, std::size_t at) {
    return (bits >> at & 1U) != 0;
}

/// Expects of every byte of the text's block at `at` what the characters' table says.
void expectClasses(const CharacterBlock& block, std::string_view text, std::size_t at) {
    for (std::size_t i = 0; i < kSize; ++i) {
        const char c = at + i < text.size() ? text[at + i] : ' ';
        SCOPED_TRACE(static_cast<int>(c));
        EXPECT_EQ(bit(block.separators, i), !isRegular(c));
        EXPECT_EQ(bit(block.delimiters, i), characterClass(c) == CharacterClass::delimiter);
        EXPECT_EQ(bit(block.solidi, i), c == '/');
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) {
            EXPECT_TRUE(bit(block.words, i));
        }
        if (isWhite(c) || isDigit(c) || c == '/' || c == '+' || c == '-' || c == '.') {
            EXPECT_FALSE(bit(block.words, i));
        }
    }
}

TEST(CharacterBlock, knowsEveryByteWhereverItStands) {
    const std::string text = allBytes();
    for (std::size_t at = 0; at + kSize <= text.size(); ++at)
        expectClasses(CharacterBlock::of(text, at), text, at);
}

TEST(CharacterBlock, isTheSameByteByByte) {
    const std::string text = allBytes();
    for (std::size_t at = 0; at + kSize <= text.size(); ++at)
        expectClasses(CharacterBlock::ofEach(text.data() + at), text, at);
}

TEST(CharacterBlock, isFollowedByWhiteSpace) {
    const std::string text(kSize, 'x');
    for (std::size_t at = 0; at <= kSize; ++at)
        expectClasses(CharacterBlock::of(text, at), text, at);
}

}  // namespace
}  // namespace quirebind
