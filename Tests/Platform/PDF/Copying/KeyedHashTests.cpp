// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <set>
#include <string>

#include <gtest/gtest.h>

#include "Platform/PDF/Copying/KeyedHash.h"

namespace quirebind {
namespace {

TEST(KeyedHash, isTheSameForTheSameText) {
    KeyedHash hash;
    for (const std::size_t size : {0U, 1U, 15U, 16U, 1024U, 100'000U}) {
        const std::string text(size, 'x');
        const std::string first = hash.of(text);
        EXPECT_EQ(first.size(), 16U);
        EXPECT_NE(hash.of("something between"), first);
        EXPECT_EQ(hash.of(text), first) << size;
    }
}

TEST(KeyedHash, differsWhereATextDoes) {
    KeyedHash hash;
    std::set<std::string> hashes;
    constexpr std::size_t kLongest = 3000;
    for (std::size_t size = 0; size < kLongest; ++size)
        hashes.insert(hash.of(std::string(size, '\0')));
    for (std::size_t at = 0; at < kLongest; ++at) {
        std::string text(kLongest, '\0');
        text[at] = '\1';
        hashes.insert(hash.of(text));
    }
    EXPECT_EQ(hashes.size(), 2 * kLongest);
}

// So nobody can make texts beforehand that have the same one.
TEST(KeyedHash, hasAKeyOfItsOwn) {
    KeyedHash one;
    KeyedHash other;
    EXPECT_NE(one.of("a text"), other.of("a text"));
}

}  // namespace
}  // namespace quirebind
