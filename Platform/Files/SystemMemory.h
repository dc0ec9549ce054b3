// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <span>

namespace quirebind {

/// Lets the system have the memory of `bytes`, but for that which it may share with what is beside
/// them. They stay usable; what they hold from then on is undefined. Does nothing where the system
/// offers no such thing.
void giveBack(std::span<char> bytes);

}  // namespace quirebind
