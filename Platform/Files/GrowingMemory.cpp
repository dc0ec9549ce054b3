// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/GrowingMemory.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <limits>
#include <new>

#include <sys/mman.h>
#include <sys/uio.h>
#include <unistd.h>

#include "Platform/Files/FileSystem.h"

namespace quirebind {
namespace {

/// The least and the most that the allocator is asked for where mappings can be moved.
constexpr std::size_t kLeast = std::size_t{64} << 10U;
constexpr std::size_t kSmall = std::size_t{512} << 10U;
/// A mapping grows by multiples of this, which is one of any page's size. More than the most that
/// is populated at once is the place of a long stream, which may be borrowed.
[[maybe_unused]] constexpr std::size_t kStep = std::size_t{256} << 10U;
[[maybe_unused]] constexpr std::size_t kMostPopulated = 4 * kStep;
/// Large pages, where they are tried: from so many bytes on, and as long as each takes no longer.
[[maybe_unused]] constexpr std::size_t kLargePage = std::size_t{2} << 20U;
[[maybe_unused]] constexpr std::size_t kLargeFrom = 2 * kLargePage;
[[maybe_unused]] constexpr std::chrono::milliseconds kSoon{2};
/// The addresses that are set aside for one large memory: 1 TB where addresses have 64 bits.
[[maybe_unused]] constexpr std::size_t kRoom = (std::numeric_limits<std::size_t>::max() >> 24U) + 1;
/// How many pieces are borrowed at most: each takes two of the mappings that a process may have,
/// some 65,000.
[[maybe_unused]] constexpr std::size_t kMostBorrowed = 8192;
constexpr int kOwn = PROT_READ | PROT_WRITE;

#if defined(MREMAP_MAYMOVE)
constexpr bool kMovesPages = true;
#else
constexpr bool kMovesPages = false;
#endif

}  // namespace

void detail::UnmapPages::operator()(char* bytes) const {
    (void)::munmap(bytes, size);
}

bool GrowingMemory::grow(std::size_t size) {
    constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max() / 4;
    if (size > kMost) return false;
    if (kMovesPages && size > kSmall) return growMapping(size);
    // Where doubling does not fit, what is needed may.
    return growSmall(std::max({size, 2 * size_, kLeast})) || growSmall(size);
}

bool GrowingMemory::growSmall(std::size_t size) {
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory): may not copy
    void* const grown = std::realloc(small_.get(), size);
    if (grown == nullptr) return false;
    (void)small_.release();  // realloc has taken the old block over
    small_.reset(static_cast<char*>(grown));
    data_ = small_.get();
    size_ = size;
    return true;
}

/// Addresses with nothing behind them yet; null where there are not so many.
GrowingMemory::Pages GrowingMemory::reserve(std::size_t size) {
    void* const mapped = ::mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) return {};
    return {static_cast<char*>(mapped), detail::UnmapPages{size}};
}

/// Whether addresses for all that it may become are set aside: then it is never moved.
bool GrowingMemory::hasRoom() const {
    return mapping_ != nullptr && mapping_.get_deleter().size >= kRoom;
}

bool GrowingMemory::growMapping([[maybe_unused]] std::size_t size) {
#if defined(MREMAP_MAYMOVE)
    std::size_t whole = (size + kStep - 1) / kStep * kStep;
    if (mapping_ != nullptr && !hasRoom())
        return moveMapping(std::max(whole, 2 * size_)) || moveMapping(whole);
    if (mapping_ == nullptr) {
        Pages place = reserve(std::max(whole, kRoom));
        if (place == nullptr) place = reserve(whole);
        if (place == nullptr || ::mprotect(place.get(), whole, kOwn) != 0) return false;
        populate(std::span(place.get(), whole));
        if (size_ != 0) std::memcpy(place.get(), data_, size_);
        small_.reset();
        mapping_ = std::move(place);
        data_ = mapping_.get();
    } else {
        const bool isLarge = largePagesComeSoon_ && size_ >= kLargeFrom && size - size_ <= kStep;
        if (isLarge) whole = endOfLargePage(whole);
        if (whole > mapping_.get_deleter().size) return false;
        const std::span added(data_ + size_, whole - size_);
        if (::mprotect(added.data(), added.size(), kOwn) != 0) return false;
        if (isLarge)
            populateLarge(added);
        else
            populate(added);
    }
    size_ = whole;
    return true;
#else
    return false;
#endif
}

/// The offset where the large page ends that holds the byte before `offset`.
std::size_t GrowingMemory::endOfLargePage(std::size_t offset) const {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): where its addresses are
    const auto begin = reinterpret_cast<std::uintptr_t>(data_);
    return (begin + offset + kLargePage - 1) / kLargePage * kLargePage - begin;
}

/// The same as `populate` with a large page, which takes a fraction of the time; in a virtual
/// machine whose host has to find it first many times as long. The first that does is the last.
void GrowingMemory::populateLarge([[maybe_unused]] std::span<char> pages) {
#if defined(MADV_POPULATE_WRITE) && defined(MADV_HUGEPAGE)
    const auto begin = std::chrono::steady_clock::now();
    (void)::madvise(pages.data(), pages.size(), MADV_HUGEPAGE);
    (void)::madvise(pages.data(), pages.size(), MADV_POPULATE_WRITE);
    largePagesComeSoon_ = std::chrono::steady_clock::now() - begin <= kSoon;
#endif
}

/// Puts memory behind pages that are about to be written to: the system takes longer when it is
/// asked for one after the other.
void GrowingMemory::populate([[maybe_unused]] std::span<char> pages) {
#if defined(MADV_POPULATE_WRITE)
    if (pages.size() <= kMostPopulated)
        (void)::madvise(pages.data(), pages.size(), MADV_POPULATE_WRITE);
#endif
}

/// Makes the mapping `size` bytes, at another place if need be.
bool GrowingMemory::moveMapping([[maybe_unused]] std::size_t size) {
#if defined(MREMAP_MAYMOVE)
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): as it is declared
    void* const moved = ::mremap(mapping_.get(), size_, size, MREMAP_MAYMOVE);
    if (moved == MAP_FAILED) return false;
    (void)mapping_.release();
    mapping_ = {static_cast<char*>(moved), detail::UnmapPages{size}};
    data_ = mapping_.get();
    size_ = size;
    return true;
#else
    return false;
#endif
}

bool GrowingMemory::borrow([[maybe_unused]] FileSystem& files, [[maybe_unused]] int file,
                           [[maybe_unused]] std::uint64_t offset,
                           [[maybe_unused]] std::span<char> pages) {
#if defined(MADV_POPULATE_READ)
    if (!hasRoom() || borrowed_.size() == kMostBorrowed) return false;
    const auto begin = static_cast<std::size_t>(pages.data() - data_);
    borrowed_.push_back({.begin = begin, .end = begin + pages.size()});
    // Reading all of it now tells what cannot be read from what is shortened later.
    if (files.map(file, offset, pages) == 0 &&
        ::madvise(pages.data(), pages.size(), MADV_POPULATE_READ) == 0)
        return true;
    makeOwn(begin);
#endif
    return false;
}

void GrowingMemory::makeOwn(std::size_t begin) {
    while (!borrowed_.empty() && borrowed_.back().begin >= begin) {
        const Piece& last = borrowed_.back();
        makeOwn(std::span(data_ + last.begin, last.end - last.begin));
        borrowed_.pop_back();
    }
}

bool GrowingMemory::isBorrowed(std::size_t offset, std::size_t count) const {
    const auto next = std::ranges::upper_bound(borrowed_, offset, {}, &Piece::end);
    return next != borrowed_.end() && next->begin < offset + count;
}

void GrowingMemory::makeOwn(std::span<char> pages) {
    constexpr int kAnew = MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED;
    if (::mmap(pages.data(), pages.size(), kOwn, kAnew, -1, 0) == MAP_FAILED)
        throw std::bad_alloc();
}

bool GrowingMemory::read(std::size_t offset, std::span<char> into) const {
#if defined(MADV_POPULATE_READ)
    if (isBorrowed(offset, into.size())) {
        // What would be a signal here is an error of a system call.
        const iovec to{.iov_base = into.data(), .iov_len = into.size()};
        const iovec from{.iov_base = data_ + offset, .iov_len = into.size()};
        const ssize_t count = ::process_vm_readv(::getpid(), &to, 1, &from, 1, 0);
        return std::cmp_equal(count, into.size());
    }
#endif
    std::memcpy(into.data(), data_ + offset, into.size());
    return true;
}

}  // namespace quirebind
