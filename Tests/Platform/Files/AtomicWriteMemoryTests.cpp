// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <cerrno>
#include <cstdlib>
#include <limits>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "Tests/Platform/Files/AtomicWriteSupport.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Tests/Support/TemporaryFolder.h"

// This program's memory, which runs out when a test says so. (The forms for arrays and the sized
// ones lead here; aligned ones are left as they are.)
namespace {

constexpr std::size_t kEnough = std::numeric_limits<std::size_t>::max();

/// How many more allocations of this thread succeed.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): operator new has no object.
thread_local std::size_t allocationsLeft = kEnough;

// Not inlined: g++ takes a delete that it has looked into for a mismatch of its new.
[[gnu::noinline]] void* allocate(std::size_t size) noexcept {
    if (allocationsLeft == 0) return nullptr;
    if (allocationsLeft != kEnough) --allocationsLeft;
    // NOLINTNEXTLINE(*-no-malloc,*-owning-memory): this is where memory comes from.
    return std::malloc(size == 0 ? 1 : size);
}

[[gnu::noinline]] void release(void* memory) noexcept {
    // NOLINTNEXTLINE(*-no-malloc,*-owning-memory): as above.
    std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) {
    void* const memory = allocate(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void* operator new[](std::size_t size) {
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}

void operator delete(void* memory) noexcept {
    release(memory);
}

void operator delete[](void* memory) noexcept {
    release(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    release(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
    release(memory);
}

void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    release(memory);
}

namespace quirebind {
namespace {

/// Lets memory run out after `allocations` more of them, until the end of the scope.
class MemoryShortage {
 public:
    explicit MemoryShortage(std::size_t allocations) { allocationsLeft = allocations; }
    MemoryShortage(const MemoryShortage&) = delete;
    MemoryShortage& operator=(const MemoryShortage&) = delete;
    MemoryShortage(MemoryShortage&&) = delete;
    MemoryShortage& operator=(MemoryShortage&&) = delete;
    ~MemoryShortage() { allocationsLeft = kEnough; }
};

/// Whether a write has all the memory that it needs in `allocations` allocations.
bool hasEnoughMemory(std::size_t allocations, const URL& destination, FileSystem& files) {
    constexpr std::string_view kBytes = "new";
    const MemoryShortage shortage(allocations);
    try {
        writeAtomically(std::as_bytes(std::span(kBytes)), destination, files);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void expectNothingLeftWhereverMemoryEnds(std::optional<FileCall> missing) {
    bool isWritten = false;
    std::size_t allocations = 0;
    for (; !isWritten && allocations < 1000; ++allocations) {
        const TemporaryFolder folder;
        folder.write("out.pdf", "old");
        const URL destination = URL::file(folder / "out.pdf");
        FaultyFileSystem files;
        if (missing) files.fail(*missing, ENOENT);
        const std::vector<std::string> names = folder.names();
        const std::ptrdiff_t descriptors = openDescriptors();
        isWritten = hasEnoughMemory(allocations, destination, files);
        EXPECT_EQ(folder.read("out.pdf"), isWritten ? "new" : "old") << allocations;
        EXPECT_EQ(folder.names(), names) << allocations;
        EXPECT_EQ(openDescriptors(), descriptors) << allocations;
    }
    EXPECT_TRUE(isWritten);
    EXPECT_GT(allocations, 2U) << "memory never ran out";
}

TEST(AtomicWriteWithoutMemory, leavesNothingBehind) {
    expectNothingLeftWhereverMemoryEnds({});
}

TEST(AtomicWriteWithoutMemory, leavesNothingBehindWithoutUnnamedFiles) {
    expectNothingLeftWhereverMemoryEnds(FileCall::openUnnamed);
}

TEST(AtomicWriteWithoutMemory, leavesNothingBehindWithoutProc) {
    expectNothingLeftWhereverMemoryEnds(FileCall::linkUnnamed);
}

}  // namespace
}  // namespace quirebind
