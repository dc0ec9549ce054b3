// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <cstddef>
#include <string>
#include <string_view>

#include "Platform/PDF/Filters/ASCIIHex.h"
#include "Tests/Platform/PDF/Filters/FilterTestSupport.h"

namespace quirebind {
namespace {

using namespace filtertest;

std::string hexOf(std::string_view text, std::string_view digits) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        result.push_back(digits[byte / 16U]);
        result.push_back(digits[byte % 16U]);
    }
    return result;
}

TEST(ASCIIHexFilter, DecodesEveryByteInEitherCase) {
    std::string all;
    for (unsigned i = 0; i < 256; ++i) all.push_back(static_cast<char>(i));
    EXPECT_THAT(decodeASCIIHex(hexOf(all, "0123456789abcdef") + ">", kNoLimit), isComplete(all));
    EXPECT_THAT(decodeASCIIHex(hexOf(all, "0123456789ABCDEF") + ">", kNoLimit), isComplete(all));
}

TEST(ASCIIHexFilter, IgnoresEveryKindOfWhiteSpace) {
    const std::string encoded = std::string("\t4") + '\0' + " 1\r\n4\f2\n>";
    EXPECT_THAT(decodeASCIIHex(encoded, kNoLimit), isComplete("AB"));
}

TEST(ASCIIHexFilter, PadsAnOddDigitWithZero) {
    EXPECT_THAT(decodeASCIIHex("417>", kNoLimit), isComplete("Ap"));
    EXPECT_THAT(decodeASCIIHex("7", kNoLimit), isComplete("p"));
}

TEST(ASCIIHexFilter, EndsAtTheEndMarkAndIgnoresTheRest) {
    EXPECT_THAT(decodeASCIIHex("41>zz42", kNoLimit), isComplete("A"));
    EXPECT_THAT(decodeASCIIHex(">", kNoLimit), isComplete(""));
}

TEST(ASCIIHexFilter, NeedsNoEndMark) {
    EXPECT_THAT(decodeASCIIHex("4142", kNoLimit), isComplete("AB"));
    EXPECT_THAT(decodeASCIIHex("", kNoLimit), isComplete(""));
}

TEST(ASCIIHexFilter, KeepsWhatPrecedesAWrongCharacter) {
    for (const char wrong : {'g', 'G', '/', ':', '@', '`', '<', '\v', '\x80', '\xFF'}) {
        EXPECT_THAT(decodeASCIIHex(std::string("4142") + wrong + "43>", kNoLimit),
                    isDamagedAfter("AB"));
        EXPECT_THAT(decodeASCIIHex(std::string("41424") + wrong + "3>", kNoLimit),
                    isDamagedAfter("AB"));
    }
}

TEST(ASCIIHexFilter, HoldsTheLimitExactly) {
    expectExactLimit("ABCD", [](std::size_t limit) { return decodeASCIIHex("41424344>", limit); });
    expectExactLimit("ABC@", [](std::size_t limit) { return decodeASCIIHex("4142434>", limit); });
    EXPECT_THAT(decodeASCIIHex(" >", 0), isComplete(""));
}

TEST(ASCIIHexFilter, GivesTheStartOfTruncatedData) {
    const std::string decoded = randomBytes(1, 40);
    const std::string encoded = hexOf(decoded, "0123456789abcdef") + ">";
    for (std::size_t size = 0; size <= encoded.size(); size += 2) {
        EXPECT_THAT(decodeASCIIHex(encoded.substr(0, size), kNoLimit),
                    isComplete(decoded.substr(0, size / 2)));
    }
}

TEST(ASCIIHexFilter, HoldsTheLimitForRandomBytes) {
    expectLimitHoldsForRandomBytes(decodeASCIIHex);
}

}  // namespace
}  // namespace quirebind
