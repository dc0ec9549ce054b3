// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/SystemMemory.h"

#include <cstdint>
#include <memory>
#include <new>

#include <sys/mman.h>

namespace quirebind {
namespace {

/// From this size on allocators have the system map each block by itself, too, but count it among
/// what may be needed one day.
constexpr std::size_t kLarge = std::size_t{32} << 20U;

}  // namespace

void detail::ReleaseMemory::operator()(char* bytes) const {
    if (mapped == 0)
        std::default_delete<char[]>()(bytes);
    else
        (void)::munmap(bytes, mapped);
}

SparseMemory sparseMemory(std::size_t size) {
    if (size < kLarge) return {std::make_unique_for_overwrite<char[]>(size).release(), {}};
    constexpr int kUncounted = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
    void* const mapped = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, kUncounted, -1, 0);
    if (mapped == MAP_FAILED) throw std::bad_alloc();
    return {static_cast<char*>(mapped), detail::ReleaseMemory{size}};
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
