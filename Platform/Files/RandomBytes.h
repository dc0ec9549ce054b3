// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <span>

namespace quirebind {

/// Fills `bytes`, 256 at most, from the system's random number generator. Throws std::system_error
/// where that fails.
void fillRandom(std::span<std::uint8_t> bytes);

}  // namespace quirebind
