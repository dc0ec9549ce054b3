// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

namespace quirebind {

/// A page's width and height in default user space units, 1/72 inch; both greater than 0.
struct PageSize {
    double width = 612;   ///< Upright, from left to right.
    double height = 792;  ///< Upright, from top to bottom.

    /// Equal in both.
    friend bool operator==(const PageSize&, const PageSize&) = default;
};

}  // namespace quirebind
