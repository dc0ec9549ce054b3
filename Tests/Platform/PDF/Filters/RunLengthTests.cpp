// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Platform/PDF/Filters/RunLength.h"
#include "Tests/Platform/PDF/Filters/FilterTestSupport.h"

namespace quirebind {
namespace {

using namespace filtertest;

constexpr char kEndOfData = '\x80';

// Without the end-of-data byte.
std::string runLengthOf(std::string_view text) {
    const auto runAt = [&](std::size_t at) {
        const std::size_t end = std::min(text.find_first_not_of(text[at], at), text.size());
        return std::min<std::size_t>(end - at, 128);
    };
    std::string result;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t run = runAt(at);
        if (run > 1) {
            result.push_back(static_cast<char>(257 - run));
            result.push_back(text[at]);
            at += run;
            continue;
        }
        std::size_t size = 1;
        while (size < 128 && at + size < text.size() && runAt(at + size) == 1) ++size;
        result.push_back(static_cast<char>(size - 1));
        result.append(text.substr(at, size));
        at += size;
    }
    return result;
}

TEST(RunLengthFilter, DecodesLiteralsAndRuns) {
    EXPECT_THAT(decodeRunLength(bytes({2, 'a', 'b', 'c', 254, 'x', 0, 'y', 128}), kNoLimit),
                isComplete("abcxxxy"));
}

TEST(RunLengthFilter, DecodesTheLongestAndTheShortestLengths) {
    const std::string literal = randomBytes(3, 128);
    EXPECT_THAT(decodeRunLength(bytes({127}) + literal + kEndOfData, kNoLimit),
                isComplete(literal));
    EXPECT_THAT(decodeRunLength(bytes({129, 'r', 128}), kNoLimit),
                isComplete(std::string(128, 'r')));
    EXPECT_THAT(decodeRunLength(bytes({255, 'r', 128}), kNoLimit), isComplete("rr"));
}

TEST(RunLengthFilter, DecodesWhatAnEncoderMade) {
    for (std::uint32_t seed = 0; seed < 100; ++seed) {
        const std::string text = repetitiveBytes(seed, std::size_t{seed} * 20);
        EXPECT_THAT(decodeRunLength(runLengthOf(text) + kEndOfData, kNoLimit), isComplete(text));
    }
}

TEST(RunLengthFilter, EndsAtEndOfDataAndIgnoresTheRest) {
    EXPECT_THAT(decodeRunLength(bytes({0, 'a', 128, 5, 'b'}), kNoLimit), isComplete("a"));
    EXPECT_THAT(decodeRunLength(bytes({128}), kNoLimit), isComplete(""));
}

TEST(RunLengthFilter, NeedsNoEndOfData) {
    EXPECT_THAT(decodeRunLength(bytes({0, 'a', 255, 'b'}), kNoLimit), isComplete("abb"));
    EXPECT_THAT(decodeRunLength("", kNoLimit), isComplete(""));
}

TEST(RunLengthFilter, KeepsWhatIsThereOfACutRun) {
    EXPECT_THAT(decodeRunLength(bytes({0, 'a', 4, 'b', 'c'}), kNoLimit), isDamagedAfter("abc"));
    EXPECT_THAT(decodeRunLength(bytes({0, 'a', 4}), kNoLimit), isDamagedAfter("a"));
    EXPECT_THAT(decodeRunLength(bytes({0, 'a', 200}), kNoLimit), isDamagedAfter("a"));
}

TEST(RunLengthFilter, GivesTheStartOfTruncatedData) {
    const std::string text = repetitiveBytes(11, 600);
    const std::string encoded = runLengthOf(text) + kEndOfData;
    std::size_t previous = 0;
    for (std::size_t size = 0; size < encoded.size(); ++size) {
        const Decoded decoded = decodeRunLength(encoded.substr(0, size), kNoLimit);
        EXPECT_EQ(decoded.bytes, text.substr(0, decoded.bytes.size())) << "size " << size;
        EXPECT_GE(decoded.bytes.size(), previous) << "size " << size;
        previous = decoded.bytes.size();
    }
    EXPECT_EQ(previous, text.size());
}

TEST(RunLengthFilter, HoldsTheLimitExactly) {
    const std::string text = repetitiveBytes(12, 700);
    const std::string encoded = runLengthOf(text) + kEndOfData;
    expectExactLimit(text, [&](std::size_t limit) { return decodeRunLength(encoded, limit); });
}

TEST(RunLengthFilter, StopsABombAtTheLimit) {
    std::string bomb;
    for (int i = 0; i < 100'000; ++i) bomb += bytes({129, 0});
    EXPECT_THAT(decodeRunLength(bomb, 1'000'000), isTooLarge());
}

TEST(RunLengthFilter, HoldsTheLimitForRandomBytes) {
    expectLimitHoldsForRandomBytes(decodeRunLength);
}

}  // namespace
}  // namespace quirebind
