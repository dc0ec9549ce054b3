// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Platform/PDF/Filters/ASCII85.h"
#include "Tests/Platform/PDF/Filters/FilterTestSupport.h"

namespace quirebind {
namespace {

using namespace filtertest;

// Without the end mark.
std::string ascii85Of(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); at += 4) {
        const std::string_view part = text.substr(at, 4);
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            value = value * 256 + (i < part.size() ? static_cast<unsigned char>(part[i]) : 0U);
        }
        if (value == 0 && part.size() == 4) {
            result.push_back('z');
            continue;
        }
        std::string group(5, '!');
        for (std::size_t i = 5; i-- > 0; value /= 85) {
            group[i] = static_cast<char>('!' + static_cast<int>(value % 85));
        }
        result.append(group, 0, part.size() + 1);
    }
    return result;
}

TEST(ASCII85Filter, DecodesKnownText) {
    EXPECT_THAT(decodeASCII85("87cURD]i,\"Ebo80~>", kNoLimit), isComplete("Hello World!"));
    EXPECT_THAT(
        decodeASCII85(R"(9jqo^BlbD-BleB1DJ+*+F(f,q/0JhKF<GL>Cj@.4Gp$d7F!,L7@<6@)~>)", kNoLimit),
        isComplete("Man is distinguished, not only by his reason"));
}

TEST(ASCII85Filter, DecodesWhatAnEncoderMade) {
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        const std::string text = randomBytes(seed, seed);
        EXPECT_THAT(decodeASCII85(ascii85Of(text) + "~>", kNoLimit), isComplete(text));
    }
}

TEST(ASCII85Filter, DecodesTheExtremeBytesInEveryLastGroup) {
    for (std::size_t size = 0; size <= 9; ++size) {
        for (const char extreme : {'\0', '\x01', '\x7F', '\x80', '\xFF'}) {
            const std::string text(size, extreme);
            EXPECT_THAT(decodeASCII85(ascii85Of(text) + "~>", kNoLimit), isComplete(text));
        }
    }
}

TEST(ASCII85Filter, DecodesZAsFourZeros) {
    EXPECT_THAT(decodeASCII85("z~>", kNoLimit), isComplete(std::string(4, '\0')));
    EXPECT_THAT(decodeASCII85("z!!!!!z~>", kNoLimit), isComplete(std::string(12, '\0')));
}

TEST(ASCII85Filter, RefusesZInsideAGroup) {
    EXPECT_THAT(decodeASCII85("87cUR87z~>", kNoLimit), isDamagedAfter("Hell"));
}

TEST(ASCII85Filter, IgnoresEveryKindOfWhiteSpace) {
    const std::string encoded = std::string(" 8\t7\n") + '\0' + "c\rU\fR\r\nD]i,\"\nEbo80 ~>";
    EXPECT_THAT(decodeASCII85(encoded, kNoLimit), isComplete("Hello World!"));
}

TEST(ASCII85Filter, AcceptsTheOpeningMark) {
    EXPECT_THAT(decodeASCII85("<~87cUR~>", kNoLimit), isComplete("Hell"));
    EXPECT_THAT(decodeASCII85("\r\n <~87cUR~>", kNoLimit), isComplete("Hell"));
    EXPECT_THAT(decodeASCII85("<~~>", kNoLimit), isComplete(""));
}

TEST(ASCII85Filter, ReadsALeadingLessThanAsADigit) {
    // `<` is the digit 27.
    const std::string text = bytes({0x55, 0xA0, 0x7F, 0x01});
    const std::string encoded = ascii85Of(text);
    ASSERT_EQ(encoded.front(), '<');
    EXPECT_THAT(decodeASCII85(encoded + "~>", kNoLimit), isComplete(text));
}

TEST(ASCII85Filter, EndsAtTheEndMarkAndIgnoresTheRest) {
    EXPECT_THAT(decodeASCII85("87cUR~>87cUR", kNoLimit), isComplete("Hell"));
    EXPECT_THAT(decodeASCII85("87cUR~\n>", kNoLimit), isComplete("Hell"));
    EXPECT_THAT(decodeASCII85("~>", kNoLimit), isComplete(""));
}

TEST(ASCII85Filter, NeedsNoWholeEndMark) {
    EXPECT_THAT(decodeASCII85("87cUR", kNoLimit), isComplete("Hell"));
    EXPECT_THAT(decodeASCII85("87cUR~", kNoLimit), isComplete("Hell"));
    EXPECT_THAT(decodeASCII85("", kNoLimit), isComplete(""));
}

TEST(ASCII85Filter, ReportsABrokenEndMark) {
    EXPECT_THAT(decodeASCII85("87cUR87~c", kNoLimit), isDamagedAfter("HellH"));
}

TEST(ASCII85Filter, RefusesAGroupThatOverflows) {
    EXPECT_THAT(decodeASCII85("s8W-!~>", kNoLimit), isComplete("\xFF\xFF\xFF\xFF"));
    EXPECT_THAT(decodeASCII85("87cURs8W-\"87cUR~>", kNoLimit), isDamagedAfter("Hell"));
    EXPECT_THAT(decodeASCII85("87cURuuuuu~>", kNoLimit), isDamagedAfter("Hell"));
    EXPECT_THAT(decodeASCII85("87cURuuuu~>", kNoLimit), isDamagedAfter("Hell"));
    EXPECT_THAT(decodeASCII85("87cURuu~>", kNoLimit), isDamagedAfter("Hell"));
}

TEST(ASCII85Filter, RefusesAGroupOfOneCharacter) {
    EXPECT_THAT(decodeASCII85("87cUR8~>", kNoLimit), isDamagedAfter("Hell"));
    EXPECT_THAT(decodeASCII85("87cUR8", kNoLimit), isDamagedAfter("Hell"));
}

TEST(ASCII85Filter, KeepsWhatPrecedesAWrongCharacter) {
    for (const char wrong : {'v', 'y', '{', '}', '\x7F', '\v', '\x80', '\xFF'}) {
        EXPECT_THAT(decodeASCII85(std::string("87cUR") + wrong + "87cUR~>", kNoLimit),
                    isDamagedAfter("Hell"));
        EXPECT_THAT(decodeASCII85(std::string("87cUR87") + wrong + "cUR~>", kNoLimit),
                    isDamagedAfter("Hell"));
    }
}

TEST(ASCII85Filter, HoldsTheLimitExactly) {
    const std::string text = "Hello World!!?";
    const std::string encoded = ascii85Of(text) + "~>";
    expectExactLimit(text, [&](std::size_t limit) { return decodeASCII85(encoded, limit); });
    const std::string zeros(400, '\0');
    const std::string manyZ(100, 'z');
    expectExactLimit(zeros, [&](std::size_t limit) { return decodeASCII85(manyZ, limit); });
}

TEST(ASCII85Filter, GivesTheStartOfTruncatedData) {
    const std::string text = randomBytes(7, 40);
    const std::string encoded = ascii85Of(text);
    ASSERT_EQ(encoded.size(), 50);
    for (std::size_t size = 0; size <= encoded.size(); ++size) {
        const Decoded decoded = decodeASCII85(encoded.substr(0, size), kNoLimit);
        // Every character of a group that was cut but the first gives a byte. The last of them also
        // depends on what was cut off.
        const std::size_t cut = size % 5;
        const std::size_t sure = size / 5 * 4 + (cut > 1 ? cut - 2 : 0);
        EXPECT_EQ(decoded.bytes.substr(0, sure), text.substr(0, sure));
        EXPECT_EQ(decoded.bytes.size(), sure + (cut > 1 ? 1 : 0));
        EXPECT_EQ(decoded.status, cut == 1 ? DecodeStatus::damaged : DecodeStatus::complete);
    }
}

TEST(ASCII85Filter, HoldsTheLimitForRandomBytes) {
    expectLimitHoldsForRandomBytes(decodeASCII85);
}

TEST(ASCII85Filter, HoldsTheLimitForRandomDigits) {
    expectLimitHoldsForRandomBytes([](std::string input, std::size_t limit) {
        for (char& c : input) c = static_cast<char>('!' + static_cast<unsigned char>(c) % 94);
        return decodeASCII85(input, limit);
    });
}

}  // namespace
}  // namespace quirebind
