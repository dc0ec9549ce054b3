// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace quirebind {

namespace detail {
/// Gives memory back to the system or to the allocator, whichever it came from.
struct ReleaseMemory {
    std::size_t mapped = 0;  ///< Its size in bytes, where the system gave it.
    /// `bytes` is where it begins.
    void operator()(char* bytes) const;
};
}  // namespace detail

/// Memory of which only what is touched takes room. Move-only.
using SparseMemory = std::unique_ptr<char[], detail::ReleaseMemory>;

/// So many bytes, of any value. They may be more than the machine has: nothing is set aside for
/// those of a large memory but addresses. Throws std::bad_alloc where there are not so many, or
/// where the system promises no memory that it has not got.
[[nodiscard]] SparseMemory sparseMemory(std::size_t size);

/// Lets the system have the memory of `bytes`, but for that which it may share with what is beside
/// them. They stay usable; what they hold from then on is undefined. Does nothing where the system
/// offers no such thing.
void giveBack(std::span<char> bytes);

}  // namespace quirebind
