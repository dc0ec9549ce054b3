// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/PDF/Filters/Decoded.h"

namespace quirebind::filtertest {

inline constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

/// Bytes from their values: the way to write a NUL or a byte over 127.
inline std::string bytes(std::initializer_list<unsigned> values) {
    std::string result;
    for (const unsigned value : values) result.push_back(static_cast<char>(value));
    return result;
}

/// The same bytes for the same seed, everywhere.
inline std::string randomBytes(std::uint32_t seed, std::size_t size) {
    std::mt19937 engine(seed);
    std::string result;
    for (std::size_t i = 0; i < size; ++i) result.push_back(static_cast<char>(engine() & 0xFFU));
    return result;
}

/// Bytes with repetitions, which every compression finds something in.
inline std::string repetitiveBytes(std::uint32_t seed, std::size_t size) {
    std::mt19937 engine(seed);
    std::string result;
    while (result.size() < size) {
        const std::size_t run = 1 + engine() % 40;
        if (result.size() > 300 && engine() % 2 == 0) {
            result.append(std::string(result, engine() % (result.size() - run), run));
        } else if (engine() % 2 == 0) {
            result.append(run, static_cast<char>(engine() & 0xFFU));
        } else {
            for (std::size_t i = 0; i < run; ++i)
                result.push_back("0123456789 obj\n"[engine() % 15]);
        }
    }
    result.resize(size);
    return result;
}

inline auto decodes(DecodeStatus status, const std::string& expected) {
    return testing::AllOf(testing::Field("status", &Decoded::status, status),
                          testing::Field("bytes", &Decoded::bytes, expected));
}

/// All was decoded, to `expected`.
inline auto isComplete(const std::string& expected) {
    return decodes(DecodeStatus::complete, expected);
}

/// Something was broken; `expected` was decoded before it.
inline auto isDamagedAfter(const std::string& expected) {
    return decodes(DecodeStatus::damaged, expected);
}

/// The limit was exceeded and nothing given.
inline auto isTooLarge() {
    return decodes(DecodeStatus::tooLarge, std::string());
}

/// The limit is exact: `expected` fits a limit of its own size and no smaller one.
template <typename Decode>
void expectExactLimit(const std::string& expected, Decode decode) {
    EXPECT_THAT(decode(expected.size()), isComplete(expected));
    for (std::size_t limit = 0; limit < expected.size(); limit += 1 + limit / 8) {
        EXPECT_THAT(decode(limit), isTooLarge()) << "limit " << limit;
    }
    EXPECT_THAT(decode(expected.size() - 1), isTooLarge());
}

/// Whatever the input, the limit holds and what is too large is not given.
template <typename Decode>
void expectLimitHoldsForRandomBytes(Decode decode) {
    for (std::uint32_t seed = 0; seed < 2000; ++seed) {
        const std::string input = randomBytes(seed, seed % 200);
        for (const std::size_t limit :
             {std::size_t{0}, std::size_t{1}, std::size_t{50}, kNoLimit}) {
            const Decoded decoded = decode(input, limit);
            ASSERT_LE(decoded.bytes.size(), limit) << "seed " << seed;
            if (decoded.status == DecodeStatus::tooLarge) {
                ASSERT_TRUE(decoded.bytes.empty()) << "seed " << seed;
            }
        }
    }
}

}  // namespace quirebind::filtertest
