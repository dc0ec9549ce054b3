// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/ObjectStream.h"
#include "Platform/PDF/Reading/ObjectStreamCache.h"

namespace quirebind {
namespace {

constexpr std::size_t kSize = 1000;

/// An object stream of `size` bytes, or as many as it takes, with object `number`, which is its
/// number.
ObjectStream streamWith(std::uint32_t number, std::size_t size = kSize) {
    std::string text = std::to_string(number) + " 0 ";
    const std::size_t first = text.size();
    text += std::to_string(number);
    text.resize(std::max(size, text.size()), ' ');
    return {std::move(text), size, first, 1};
}

/// Streams 1 to 4, added in this order.
ObjectStreamCache cacheOfFour() {
    ObjectStreamCache cache;
    for (const std::uint32_t number : {1U, 2U, 3U, 4U}) cache.add(number, streamWith(number));
    return cache;
}

TEST(ObjectStreamCache, GivesWhatWasAdded) {
    ObjectStreamCache cache = cacheOfFour();
    ObjectStream* const stream = cache.find(3);
    ASSERT_NE(stream, nullptr);
    WorkBudget budget(kSize);
    const auto value = stream->find(3, 0, budget, nullptr);
    ASSERT_TRUE(value);
    EXPECT_EQ(value->integer(), 3);
    EXPECT_EQ(cache.find(5), nullptr);
}

TEST(ObjectStreamCache, ForgetsFirstWhatWasNotUsedForLongest) {
    ObjectStreamCache cache = cacheOfFour();
    EXPECT_NE(cache.find(1), nullptr);
    cache.trim(3 * kSize);  // a stream takes a little more
    EXPECT_EQ(cache.find(2), nullptr);
    EXPECT_EQ(cache.find(3), nullptr);
    EXPECT_NE(cache.find(4), nullptr);
    EXPECT_NE(cache.find(1), nullptr);
}

TEST(ObjectStreamCache, KeepsWhatWasUsedLast) {
    ObjectStreamCache cache = cacheOfFour();
    cache.trim(0);
    EXPECT_EQ(cache.find(3), nullptr);
    EXPECT_NE(cache.find(4), nullptr);
}

TEST(ObjectStreamCache, HasRoomAgainAfterStreamsHaveGrown) {
    ObjectStreamCache cache;
    WorkBudget budget(kSize);
    constexpr std::uint32_t kMany = 40;
    for (std::uint32_t number = 1; number <= kMany; ++number) {
        ObjectStream& stream = cache.add(number, streamWith(number, 0));
        // Asked with an index that is wrong twice, a stream notes where its objects are.
        for (int i = 0; i < 2; ++i) EXPECT_TRUE(stream.find(number, 7, budget, nullptr));
    }
    cache.trim(0);
    cache.add(kMany + 1, streamWith(kMany + 1, 0));
    cache.trim(kSize);
    EXPECT_NE(cache.find(kMany), nullptr);
    EXPECT_NE(cache.find(kMany + 1), nullptr);
}

}  // namespace
}  // namespace quirebind
