// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/Files/SystemMemory.h"

namespace quirebind {
namespace {

/// Text no two pieces of which are alike.
std::string someText(std::size_t size) {
    std::string text;
    while (text.size() < size) text += std::to_string(text.size()) + ' ';
    text.resize(size);
    return text;
}

TEST(ByteBuffer, keepsWhatIsNotSpent) {
    const std::string text = someText(5 * kLargePage + 777);
    ByteBuffer buffer;
    buffer.append(text);
    constexpr std::size_t kStep = 300'000;
    for (std::size_t spent = 0; spent < text.size(); spent += kStep) {
        buffer.spend(spent);
        ASSERT_EQ(buffer.text().substr(spent), std::string_view(text).substr(spent)) << spent;
    }
    buffer.spend(text.size());
    EXPECT_EQ(buffer.size(), text.size());
}

TEST(ByteBuffer, growsAfterSomeIsSpent) {
    const std::string text = someText(3 * kLargePage);
    ByteBuffer buffer;
    buffer.append(text);
    buffer.spend(kLargePage);
    ByteBuffer other = std::move(buffer);
    other.append(text);
    other.spend(2 * kLargePage);
    EXPECT_EQ(other.text().substr(2 * kLargePage), text.substr(2 * kLargePage) + text);
}

}  // namespace
}  // namespace quirebind
