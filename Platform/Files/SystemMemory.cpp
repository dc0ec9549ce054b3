// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/SystemMemory.h"

#include <cstdint>
#include <memory>

#include <sys/mman.h>
#include <unistd.h>

namespace quirebind {

void preferLargePages([[maybe_unused]] std::span<char> block) {
#if defined(MADV_HUGEPAGE)
    if (block.size() < 4 * kLargePage) return;
    // From the beginning of its first page: that of the mapping which the allocator has made for
    // it. To advise on part of a mapping would divide it, and then it could not be moved as one.
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): only to know where it is
    const std::size_t before = reinterpret_cast<std::uintptr_t>(block.data()) % page;
    (void)::madvise(block.data() - before, before + block.size(), MADV_HUGEPAGE);
#endif
}

void giveBack([[maybe_unused]] std::span<char> bytes) {
#if defined(__linux__)
    constexpr std::size_t kPages = std::size_t{64} << 10U;  // a multiple of any page size
    void* from = bytes.data();
    std::size_t space = bytes.size();
    if (std::align(kPages, kPages, from, space) != nullptr)
        (void)::madvise(from, space / kPages * kPages, MADV_DONTNEED);
#endif
}

}  // namespace quirebind
