// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>

namespace quirebind {

/// A place in a document.
struct PagePosition {
    std::size_t page = 0;  ///< Counting from 0.
    double y = 0;          ///< Points from the upper edge of the page as it is shown.

    /// The same place.
    friend bool operator==(const PagePosition&, const PagePosition&) = default;
};

/// An area of a page that leads to another place in the same document. Lengths are in points, and
/// count from the upper left corner of the page as it is shown.
struct PageLink {
    double x = 0;             ///< The left edge.
    double y = 0;             ///< The upper edge.
    double width = 0;         ///< To the right of `x`.
    double height = 0;        ///< Downwards from `y`.
    std::string destination;  ///< As the document writes it; PDFDocument::positionOf knows more.
};

}  // namespace quirebind
