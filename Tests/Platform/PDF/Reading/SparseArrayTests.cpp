// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include <gtest/gtest.h>

#include "Platform/PDF/Reading/SparseArray.h"

namespace quirebind {
namespace {

constexpr std::uint32_t kWild = 0xffffffff;

TEST(SparseArray, keepsWhatIsWritten) {
    SparseArray<int> array(100);
    array.at(0) = 1;
    array.at(99) = 2;
    array.at(100) = 3;
    array.at(kWild) = 4;
    array.at(99) += 10;
    EXPECT_EQ(array.get(0), 1);
    EXPECT_EQ(array.get(99), 12);
    EXPECT_EQ(array.get(100), 3);
    EXPECT_EQ(array.get(kWild), 4);
}

TEST(SparseArray, isZeroWhereNothingWasWritten) {
    SparseArray<int> array(100);
    array.at(50) = 1;
    for (const std::uint32_t index : {0U, 49U, 51U, 99U, 100U, kWild}) {
        EXPECT_EQ(array.get(index), 0) << index;
    }
}

TEST(SparseArray, keepsWhatIsFarApart) {
    SparseArray<std::uint32_t> array(std::size_t{1} << 20U);
    for (std::uint32_t index = 1 << 20U; index-- > 0; index -= std::min(index, 777U))
        array.at(index) = index + 1;
    for (std::uint32_t index = 1 << 20U; index-- > 0; index -= std::min(index, 777U)) {
        EXPECT_EQ(array.get(index), index + 1);
        EXPECT_EQ(array.get(index - 1), 0U);
        EXPECT_EQ(array.get(index + 1), 0U);
    }
}

TEST(SparseArray, forgetsEverythingWhenReset) {
    SparseArray<int> array(100);
    array.at(3) = 30;
    array.at(1000) = 40;
    array.reset(2000);
    EXPECT_EQ(array.get(3), 0);
    EXPECT_EQ(array.get(1000), 0);
    array.at(1000) = 50;
    EXPECT_EQ(array.get(1000), 50);
    EXPECT_EQ(array.get(999), 0);
}

}  // namespace
}  // namespace quirebind
