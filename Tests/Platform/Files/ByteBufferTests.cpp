// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/Files/GrowingMemory.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/MemoryLimit.h"
#include "Tests/Support/SomeText.h"

namespace quirebind {
namespace {

using test::someText;

/// More bytes than the allocator is asked for at once.
constexpr std::size_t kMuch = std::size_t{2} << 20U;

TEST(ByteBuffer, keepsWhatIsNotSpent) {
    const std::string text = someText(5 * kMuch + 777);
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

TEST(ByteBuffer, keepsWhatWasThereWheneverItGrows) {
    const std::string text = someText(9 * kMuch);
    ByteBuffer buffer;
    // By little steps at first, so that it grows at all sizes that it has on the way.
    for (std::size_t at = 0, step = 1; at < text.size(); at += step, step += step / 5 + 1)
        buffer.append(std::string_view(text).substr(at, step));
    EXPECT_TRUE(buffer.text() == text);
    const ByteBuffer moved = std::move(buffer);
    EXPECT_TRUE(moved.text() == text);
    EXPECT_EQ(buffer.size(), 0U);  // NOLINT(bugprone-use-after-move): what it promises
    buffer.append(text);
    EXPECT_TRUE(buffer.text() == text);
}

TEST(ByteBuffer, growsByLittleHoweverLargeItIs) {
    const std::string text = someText(6 * kMuch);
    constexpr std::size_t kStep = 100'003;
    ByteBuffer buffer;
    for (std::size_t at = 0; at < text.size(); at += kStep)
        buffer.append(std::string_view(text).substr(at, kStep));
    EXPECT_TRUE(buffer.text() == text);
    buffer.spend(3 * kMuch + 1);
    buffer.append(text);
    EXPECT_TRUE(buffer.text().substr(text.size()) == text);
}

TEST(ByteBuffer, staysAsItIsWhereThereIsNoRoom) {
    const std::string text = someText(5 * kMuch);
    constexpr std::size_t kTooMuch = std::numeric_limits<std::size_t>::max() / 4;
    for (const std::size_t size : {std::size_t{0}, std::size_t{100}, text.size()}) {
        ByteBuffer buffer;
        buffer.append(std::string_view(text).substr(0, size));
        EXPECT_THROW((void)buffer.extend(kTooMuch), std::bad_alloc);
        EXPECT_THROW((void)buffer.extend(4 * kTooMuch), std::bad_alloc);
        EXPECT_TRUE(buffer.text() == text.substr(0, size));
        buffer.append(text);
        EXPECT_TRUE(buffer.text() == text.substr(0, size) + text);
    }
}

TEST(ByteBuffer, growsWhereThereAreNotEnoughAddressesForTwo) {
    if (!test::kMemoryLimitsWork)
        GTEST_SKIP() << "sanitizers map more memory than any limit that would matter";
    const std::string text = someText(10 * kMuch);
    const std::string more = someText(2 * kMuch);
    const std::string both = text + more;
    const int result = inChildProcess([&] {
        ByteBuffer buffer;
        buffer.append(text);
        test::limitMemory(4 * kMuch);
        buffer.append(more);
        return buffer.text() == both ? 0 : 1;
    });
    EXPECT_EQ(result, 0);
}

TEST(ByteBuffer, growsWhereFewAddressesCanBeSetAside) {
    if (!test::kMemoryLimitsWork)
        GTEST_SKIP() << "sanitizers map more memory than any limit that would matter";
    const std::string text = someText(10 * kMuch);
    const int result = inChildProcess([&] {
        test::limitMemory(40 * kMuch);
        ByteBuffer buffer;
        for (std::size_t at = 0; at < text.size(); at += kMuch)
            buffer.append(std::string_view(text).substr(at, kMuch));
        return buffer.text() == text ? 0 : 1;
    });
    EXPECT_EQ(result, 0);
}

TEST(ByteBuffer, makesRoomBeforeItsEnd) {
    ByteBuffer buffer;
    buffer.append("beginning end");
    buffer.insert(10, 5, '-');
    EXPECT_EQ(buffer.text(), "beginning -----end");
    buffer.insert(0, 0, '-');
    buffer.insert(buffer.size(), 1, '.');
    EXPECT_EQ(buffer.text(), "beginning -----end.");
}

TEST(ByteBuffer, growsAfterSomeIsSpent) {
    const std::string text = someText(3 * kMuch);
    ByteBuffer buffer;
    buffer.append(text);
    buffer.spend(kMuch);
    ByteBuffer other = std::move(buffer);
    other.append(text);
    other.spend(2 * kMuch);
    EXPECT_EQ(other.text().substr(2 * kMuch), text.substr(2 * kMuch) + text);
}

}  // namespace
}  // namespace quirebind
