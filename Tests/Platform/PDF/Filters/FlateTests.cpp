// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// zlib takes its input through pointers to const where it is asked to.
#define ZLIB_CONST
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include <zlib.h>

#include "Platform/PDF/Filters/Flate.h"
#include "Tests/Platform/PDF/Filters/FilterTestSupport.h"

namespace quirebind {
namespace {

using namespace filtertest;

constexpr std::size_t kHeaderSize = 2;
constexpr std::size_t kChecksumSize = 4;

const Bytef* input(const void* text) {
    return static_cast<const Bytef*>(text);
}
Bytef* output(void* text) {
    return static_cast<Bytef*>(text);
}

std::string zlibOf(std::string_view text, int level = Z_BEST_COMPRESSION,
                   int strategy = Z_DEFAULT_STRATEGY, int windowBits = MAX_WBITS) {
    z_stream stream{};
    if (deflateInit2(&stream, level, Z_DEFLATED, windowBits, 8, strategy) != Z_OK) {
        throw std::runtime_error("deflateInit2");
    }
    std::string result(deflateBound(&stream, static_cast<uLong>(text.size())), '\0');
    stream.next_in = input(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = output(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    const int code = deflate(&stream, Z_FINISH);
    result.resize(stream.total_out);
    deflateEnd(&stream);
    if (code != Z_STREAM_END) throw std::runtime_error("deflate");
    return result;
}

std::string deflateOf(std::string_view text) {
    const std::string encoded = zlibOf(text);
    return encoded.substr(kHeaderSize, encoded.size() - kHeaderSize - kChecksumSize);
}

std::string inverted(std::string text, std::size_t at) {
    text[at] = static_cast<char>(~static_cast<unsigned char>(text[at]));
    return text;
}

TEST(FlateFilter, DecodesAKnownStream) {
    // One block of fixed codes (RFC 1951, 3.2.6).
    EXPECT_THAT(decodeFlate(bytes({0x78, 0x9C, 0x0B, 0xCF, 0xCC, 0xCE, 0x2C, 0x48, 0x4D, 0xC9, 0x4C,
                                   0x04, 0x00, 0x11, 0xE6, 0x03, 0x98}),
                            kNoLimit),
                isComplete("Wikipedia"));
    // A stored block (RFC 1951, 3.2.4).
    EXPECT_THAT(decodeFlate(bytes({0x78, 0x01, 0x01, 0x03, 0x00, 0xFC, 0xFF, 'a', 'b', 'c', 0x02,
                                   0x4D, 0x01, 0x27}),
                            kNoLimit),
                isComplete("abc"));
}

void expectRoundTrip(const std::string& text) {
    for (const int level : {0, 1, 6, 9}) {
        EXPECT_THAT(decodeFlate(zlibOf(text, level), kNoLimit), isComplete(text));
    }
    EXPECT_THAT(decodeFlate(zlibOf(text, 9, Z_FIXED), kNoLimit), isComplete(text));
    EXPECT_THAT(decodeFlate(zlibOf(text, 9, Z_HUFFMAN_ONLY), kNoLimit), isComplete(text));
    EXPECT_THAT(decodeFlate(zlibOf(text, 9, Z_DEFAULT_STRATEGY, 9), kNoLimit), isComplete(text));
}

TEST(FlateFilter, DecodesWhatZlibMade) {
    for (const std::size_t size : {0U, 1U, 2U, 100U, 4095U, 4096U, 4097U, 65'536U, 300'000U}) {
        expectRoundTrip(randomBytes(1, size));
        expectRoundTrip(repetitiveBytes(2, size));
        expectRoundTrip(std::string(size, '\0'));
    }
}

TEST(FlateFilter, DecodesDataThatGrowsAThousandfold) {
    std::string text;
    text.resize(20'000'000, 'a');
    const std::string encoded = zlibOf(text);
    ASSERT_LT(encoded.size(), text.size() / 1000);
    EXPECT_THAT(decodeFlate(encoded, text.size()), isComplete(text));
}

TEST(FlateFilter, IsCompleteWithoutTheWholeChecksum) {
    const std::string text = repetitiveBytes(3, 10'000);
    const std::string encoded = zlibOf(text);
    for (std::size_t missing = 1; missing <= kChecksumSize; ++missing) {
        EXPECT_THAT(decodeFlate(encoded.substr(0, encoded.size() - missing), kNoLimit),
                    isComplete(text))
            << missing << " bytes missing";
    }
}

TEST(FlateFilter, IsCompleteWithAWrongChecksum) {
    const std::string text = repetitiveBytes(3, 10'000);
    const std::string encoded = zlibOf(text);
    for (std::size_t i = 1; i <= kChecksumSize; ++i) {
        EXPECT_THAT(decodeFlate(inverted(encoded, encoded.size() - i), kNoLimit), isComplete(text));
    }
}

TEST(FlateFilter, IsCompleteWithSomethingBehindTheEnd) {
    const std::string text = repetitiveBytes(4, 10'000);
    const std::string encoded = zlibOf(text);
    const std::string withoutChecksum = encoded.substr(0, encoded.size() - kChecksumSize);
    for (const std::string& rest : {std::string("\n"), std::string("\r\n"), std::string("\r"),
                                    std::string("\nendstream"), randomBytes(1, 500)}) {
        EXPECT_THAT(decodeFlate(encoded + rest, kNoLimit), isComplete(text));
        EXPECT_THAT(decodeFlate(withoutChecksum + rest, kNoLimit), isComplete(text));
    }
}

TEST(FlateFilter, DecodesBehindAWrongHeader) {
    const std::string text = repetitiveBytes(5, 10'000);
    const std::string encoded = zlibOf(text);
    for (const std::string& header :
         {bytes({0, 0}), bytes({0xFF, 0xFF}), bytes({0x78, 0x9D}), bytes({0x88, 0x1C}),
          bytes({0x79, 0x9C}), std::string("\r\n")}) {
        const std::string wrong = header + encoded.substr(kHeaderSize);
        EXPECT_THAT(decodeFlate(wrong, kNoLimit), isComplete(text));
        EXPECT_THAT(decodeFlate(wrong + "\n", kNoLimit), isComplete(text));
    }
}

TEST(FlateFilter, DecodesBehindAHeaderThatAsksForADictionary) {
    const std::string text = repetitiveBytes(5, 1000);
    std::string encoded = zlibOf(text);
    encoded.replace(0, kHeaderSize, bytes({0x78, 0xBB}));
    EXPECT_THAT(decodeFlate(encoded, kNoLimit), isComplete(text));
}

TEST(FlateFilter, DecodesWithoutAHeader) {
    const std::string text = repetitiveBytes(6, 10'000);
    EXPECT_THAT(decodeFlate(deflateOf(text), kNoLimit), isComplete(text));
    EXPECT_THAT(decodeFlate(deflateOf(text) + "\r\n", kNoLimit), isComplete(text));
    EXPECT_THAT(decodeFlate(zlibOf(text).substr(kHeaderSize), kNoLimit), isComplete(text));
}

// An empty block of fixed codes is ten bits long: whatever follows it cannot be trusted.
TEST(FlateFilter, DoesNotTakeAnyBytesForDataWithoutAHeader) {
    EXPECT_EQ(decodeFlate(bytes({0x03, 0x00}) + "BT /F1 12 Tf", kNoLimit).status,
              DecodeStatus::damaged);
    EXPECT_EQ(decodeFlate(std::string("BT ") + bytes({0x03, 0x00}) + "/F1 12 Tf", kNoLimit).status,
              DecodeStatus::damaged);
}

TEST(FlateFilter, ReportsEmptyDataAsDamaged) {
    EXPECT_THAT(decodeFlate("", kNoLimit), isDamagedAfter(""));
    EXPECT_THAT(decodeFlate("x", kNoLimit), isDamagedAfter(""));
    EXPECT_THAT(decodeFlate(bytes({0x78, 0x9C}), kNoLimit), isDamagedAfter(""));
}

TEST(FlateFilter, GivesTheStartOfDataTruncatedAnywhere) {
    const std::string text = repetitiveBytes(7, 3000);
    const std::string encoded = zlibOf(text);
    std::size_t previous = 0;
    for (std::size_t size = 0; size < encoded.size() - kChecksumSize; ++size) {
        // A limit of exactly the right size must not turn a truncation into an excess.
        for (const std::size_t limit : {kNoLimit, text.size()}) {
            const Decoded decoded = decodeFlate(encoded.substr(0, size), limit);
            EXPECT_THAT(decoded, isDamagedAfter(text.substr(0, decoded.bytes.size())))
                << "size " << size;
            EXPECT_GE(decoded.bytes.size(), previous) << "size " << size;
            previous = decoded.bytes.size();
        }
    }
    EXPECT_GT(previous, text.size() - 300);
}

TEST(FlateFilter, KeepsWhatPrecedesTheDamage) {
    // A stored block of 1000 bytes, then one of the reserved type.
    const std::string text = randomBytes(8, 1000);
    const std::string encoded =
        bytes({0x78, 0x01, 0x00, 0xE8, 0x03, 0x17, 0xFC}) + text + bytes({0x07}) + "more";
    EXPECT_THAT(decodeFlate(encoded, kNoLimit), isDamagedAfter(text));
    EXPECT_THAT(decodeFlate(encoded, 1000), isDamagedAfter(text));
    EXPECT_THAT(decodeFlate(encoded, 999), isTooLarge());
}

TEST(FlateFilter, SurvivesAWrongByteAnywhere) {
    const std::string text = repetitiveBytes(9, 3000);
    const std::string encoded = zlibOf(text);
    for (std::size_t at = 0; at < encoded.size(); ++at) {
        const Decoded decoded = decodeFlate(inverted(encoded, at), 10'000);
        EXPECT_LE(decoded.bytes.size(), 10'000) << "at " << at;
    }
}

TEST(FlateFilter, HoldsTheLimitExactly) {
    const std::string text = repetitiveBytes(10, 70'000);
    const std::string sound = zlibOf(text);
    const std::string withoutChecksum = sound.substr(0, sound.size() - kChecksumSize);
    const std::string deflated = deflateOf(text);
    for (const std::string& encoded : {sound, withoutChecksum, deflated}) {
        expectExactLimit(text, [&](std::size_t limit) { return decodeFlate(encoded, limit); });
    }
    EXPECT_THAT(decodeFlate(zlibOf(""), 0), isComplete(""));
}

TEST(FlateFilter, StopsABombAtTheLimit) {
    std::string zeros;
    zeros.resize(50'000'000);
    const std::string bomb = zlibOf(zeros);
    EXPECT_THAT(decodeFlate(bomb, 1'000'000), isTooLarge());
    EXPECT_THAT(decodeFlate(bomb.substr(0, bomb.size() - kChecksumSize), 1'000'000), isTooLarge());
    EXPECT_THAT(decodeFlate(bomb.substr(0, bomb.size() / 2), 1'000'000), isTooLarge());
    EXPECT_THAT(decodeFlate(bomb.substr(kHeaderSize), 1'000'000), isTooLarge());
    EXPECT_THAT(decodeFlate("!!" + bomb.substr(kHeaderSize), 1'000'000), isTooLarge());
    // Here the wrong header passes for the start of deflate data, a letter or two.
    EXPECT_THAT(decodeFlate(bytes({0x4B, 0x4C}) + bomb.substr(kHeaderSize), 1'000'000),
                isTooLarge());
}

TEST(FlateFilter, HoldsTheLimitForRandomBytes) {
    expectLimitHoldsForRandomBytes(decodeFlate);
}

TEST(FlateFilter, HoldsTheLimitForRandomBytesBehindAHeader) {
    expectLimitHoldsForRandomBytes([](const std::string& text, std::size_t limit) {
        return decodeFlate(bytes({0x78, 0x9C}) + text, limit);
    });
}

}  // namespace
}  // namespace quirebind
