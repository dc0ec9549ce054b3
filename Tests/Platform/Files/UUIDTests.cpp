// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <array>
#include <set>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Platform/Files/UUID.h"

namespace quirebind {
namespace {

TEST(UUID, isWrittenInTheCanonicalForm) {
    constexpr std::string_view kForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    for (int round = 0; round < 100; ++round) {
        const std::string text = UUID::generate().string();
        ASSERT_EQ(text.size(), kForm.size());
        for (std::size_t i = 0; i < kForm.size(); ++i) {
            const std::string_view allowed = kForm[i] == '-' ? "-" : "0123456789abcdef";
            EXPECT_NE(allowed.find(text[i]), std::string_view::npos) << text << " at " << i;
        }
    }
}

TEST(UUID, saysThatItIsRandomInItsVersionAndVariant) {
    for (int round = 0; round < 1000; ++round) {
        const std::string text = UUID::generate().string();
        EXPECT_EQ(text[14], '4') << text;
        EXPECT_NE(std::string_view("89ab").find(text[19]), std::string_view::npos) << text;
    }
}

TEST(UUID, isNeverTheSameTwice) {
    constexpr std::size_t kMany = 10'000;
    std::set<UUID> values;
    std::set<std::string> texts;
    for (std::size_t i = 0; i < kMany; ++i) {
        const UUID value = UUID::generate();
        values.insert(value);
        texts.insert(value.string());
    }
    EXPECT_EQ(values.size(), kMany);
    EXPECT_EQ(texts.size(), kMany);
}

TEST(UUID, usesAllOfItsOtherBits) {
    // Each of the 122 random bits has been 0 and 1 within 200 values, but for a chance of 2^-192.
    std::array<unsigned, 32> ones{};
    std::array<unsigned, 32> zeros{};
    for (int round = 0; round < 200; ++round) {
        std::string digits = UUID::generate().string();
        std::erase(digits, '-');
        for (std::size_t i = 0; i < ones.size(); ++i) {
            const auto digit = static_cast<unsigned>(std::stoi(digits.substr(i, 1), nullptr, 16));
            ones.at(i) |= digit;
            zeros.at(i) |= ~digit & 0xFU;
        }
    }
    std::array<unsigned, 32> expected{};
    expected.fill(0xFU);
    expected[12] = 0x0U;  // the version
    expected[16] = 0x3U;  // two bits of it are the variant
    for (std::size_t i = 0; i < ones.size(); ++i) {
        EXPECT_EQ(ones.at(i) & zeros.at(i), expected.at(i)) << "digit " << i;
    }
}

TEST(UUID, equalsItselfOnly) {
    const UUID one = UUID::generate();
    const UUID other = UUID::generate();
    EXPECT_EQ(one, UUID(one));
    EXPECT_NE(one, other);
    EXPECT_NE(one < other, other < one);
}

}  // namespace
}  // namespace quirebind
