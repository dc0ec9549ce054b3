// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <concepts>
#include <source_location>

#include "Quirebind/Workflow/Fatal.h"

namespace quirebind {

/// The sum of two signed numbers; stops the program where it does not fit.
template <std::signed_integral T>
[[nodiscard]] T checkedSum(T a, T b, std::source_location where = std::source_location::current()) {
    T sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) fatal("Arithmetic overflow", where);
    return sum;
}

}  // namespace quirebind
