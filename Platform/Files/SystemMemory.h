// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <span>

namespace quirebind {

/// The size in bytes of a large page, where the system has them. It is only used to choose places:
/// where large pages are of another size, nothing goes wrong.
inline constexpr std::size_t kLargePage = std::size_t{2} << 20U;

/// Asks the system to back a block of the allocator with large pages: one that is filled from front
/// to back is given its memory 4 KB at a time otherwise, which takes as long as filling it. Only a
/// wish; small blocks are left alone.
void preferLargePages(std::span<char> block);

/// Lets the system have the memory of `bytes`, but for that which it may share with what is beside
/// them. They stay usable; what they hold from then on is undefined. Does nothing where the system
/// offers no such thing.
void giveBack(std::span<char> bytes);

}  // namespace quirebind
