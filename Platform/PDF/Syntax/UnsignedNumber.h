// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Platform/PDF/Syntax/Characters.h"

namespace quirebind {

/// Reads an unsigned decimal integer of at most 19 digits at `at` and moves `at` behind it. False,
/// and `at` unmoved, where there is none.
[[nodiscard]] inline bool readUnsigned(std::string_view text, std::size_t& at,
                                       std::uint64_t& value) {
    constexpr std::size_t kDigits = 19;  // fits 64 bits whatever the digits are
    std::size_t end = at;
    std::uint64_t result = 0;
    while (end < text.size() && isDigit(text[end])) {
        if (end - at == kDigits) return false;
        result = result * 10 + static_cast<std::uint64_t>(text[end] - '0');
        ++end;
    }
    if (end == at) return false;
    at = end;
    value = result;
    return true;
}

}  // namespace quirebind
