// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/SystemMemory.h"

#include <cstdint>
#include <memory>

#include <sys/mman.h>

namespace quirebind {

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
