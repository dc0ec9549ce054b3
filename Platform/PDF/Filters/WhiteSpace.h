// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

namespace quirebind {

/// White space inside the ASCII filters' data (ISO 32000-2, 7.2.3, table 1). Private to the
/// filters.
[[nodiscard]] constexpr bool isFilterWhiteSpace(char c) {
    return c == '\0' || c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' ';
}

}  // namespace quirebind
