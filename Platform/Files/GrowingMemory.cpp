// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/GrowingMemory.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include <sys/mman.h>

namespace quirebind {
namespace {

/// The most that the allocator is asked for where mappings can be moved.
constexpr std::size_t kSmall = std::size_t{512} << 10U;
/// The least that is mapped. What is never touched costs nothing but its addresses.
[[maybe_unused]] constexpr std::size_t kFirstMapping = 4 * kLargePage;

#if defined(MREMAP_FIXED)
constexpr bool kMovesPages = true;
#else
constexpr bool kMovesPages = false;
#endif

}  // namespace

void detail::UnmapPages::operator()(char* bytes) const {
    (void)::munmap(bytes, size);
}

bool GrowingMemory::grow(std::size_t size) {
    constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max() / 2;
    if (size > kMost) return false;
    return kMovesPages && size > kSmall ? growMapping(size) : growSmall(size);
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

/// Addresses on the boundaries of large pages, with nothing behind them yet; null where there are
/// not so many.
GrowingMemory::Pages GrowingMemory::reserve(std::size_t size) {
    const std::size_t all = size + kLargePage;
    void* const mapped = ::mmap(nullptr, all, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) return {};
    void* begin = mapped;
    std::size_t space = all;
    (void)std::align(kLargePage, size, begin, space);
    const std::size_t before = all - space;
    if (before != 0) (void)::munmap(mapped, before);
    char* const aligned = static_cast<char*>(begin);
    if (space > size) (void)::munmap(aligned + size, space - size);
    return {aligned, detail::UnmapPages{size}};
}

bool GrowingMemory::growMapping([[maybe_unused]] std::size_t size) {
#if defined(MREMAP_FIXED)
    const std::size_t wanted = std::max(size, kFirstMapping);
    const std::size_t whole = (wanted + kLargePage - 1) / kLargePage * kLargePage;
    Pages place = reserve(whole);
    if (mapping_ != nullptr) {
        // Where there are not enough addresses for both, wherever the system finds some.
        const int where = place == nullptr ? MREMAP_MAYMOVE : MREMAP_MAYMOVE | MREMAP_FIXED;
        // NOLINTBEGIN(cppcoreguidelines-pro-type-vararg): as it is declared
        void* const moved =
            ::mremap(mapping_.get(), mapping_.get_deleter().size, whole, where, place.get());
        // NOLINTEND(cppcoreguidelines-pro-type-vararg)
        // The place is the mapping now, or unmapped, and perhaps another thread's already.
        (void)place.release();
        if (moved == MAP_FAILED) return false;
        (void)mapping_.release();
        place = {static_cast<char*>(moved), detail::UnmapPages{whole}};
    } else {
        if (place == nullptr) return false;
        if (::mprotect(place.get(), whole, PROT_READ | PROT_WRITE) != 0) return false;
        (void)::madvise(place.get(), whole, MADV_HUGEPAGE);
        if (size_ != 0) std::memcpy(place.get(), data_, size_);
        small_.reset();
    }
    mapping_ = std::move(place);
    data_ = mapping_.get();
    size_ = whole;
    return true;
#else
    return false;
#endif
}

}  // namespace quirebind
