// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <vector>

#include "Platform/PDF/Reading/PageSize.h"

namespace quirebind {

/// Where pages are in a column of all of them, one below the other, as wide as the pane:
///
///     margin
///     page 0
///     gap
///     page 1
///     ...
///     margin
///
/// One scale holds for all pages; the widest fills the pane. Lengths are in pixels of the layout,
/// with y growing downwards from the top of the column. No page is a point: a page whose sides are
/// more than a hundred to one is shown as if they were a hundred to one.
class PageColumn {
 public:
    /// What is left free above the first page, below the last, and beside the widest, in pixels.
    static constexpr double kMargin = 16;
    /// What is left free between a page and the next, in pixels.
    static constexpr double kGap = 12;

    /// A place in the column that stays the same when the scale changes.
    struct Anchor {
        std::size_t page = 0;
        double fraction =
            0;  ///< Of the page's height and the gap behind it; negative in the margin.
    };

    /// Sets the sizes of all pages.
    void setSizes(std::vector<PageSize> sizes);
    /// Corrects the sizes of some pages, from `first` on.
    void setSizes(std::size_t first, const std::vector<PageSize>& sizes);
    /// Fits the pages into a pane of that width.
    void setWidth(double width);

    /// How many pages there are.
    [[nodiscard]] std::size_t count() const { return sizes_.size(); }
    /// How high the whole column is, margins included, in pixels that do not depend on the screen.
    [[nodiscard]] double height() const;
    /// How wide it is: what setWidth was given last.
    [[nodiscard]] double width() const { return width_; }
    /// Pixels per point.
    [[nodiscard]] double scale() const { return scale_; }

    // Where page `page`, which counts from 0 and has to be there, is in the column, and how large,
    // in the same pixels.

    /// How far its upper edge is below that of the column.
    [[nodiscard]] double pageTop(std::size_t page) const;
    /// How far its left edge is from that of the column, in the middle of which it is.
    [[nodiscard]] double pageLeft(std::size_t page) const;
    /// How wide it is.
    [[nodiscard]] double pageWidth(std::size_t page) const;
    /// How high it is.
    [[nodiscard]] double pageHeight(std::size_t page) const;
    /// The page at `y`, or the last one above it; 0 in the upper margin. Needs a page.
    [[nodiscard]] std::size_t pageAt(double y) const;

    /// The place at `y`; the beginning where there is no page.
    [[nodiscard]] Anchor anchorAt(double y) const;
    /// Where that place is now; 0 where that page is not there.
    [[nodiscard]] double positionOf(const Anchor& anchor) const;

 private:
    void layOut();

    std::vector<PageSize> sizes_;
    std::vector<double> tops_;  // in points, of the pages alone, and one for the end
    double widest_ = 0;
    double width_ = 0;
    double scale_ = 1;
};

}  // namespace quirebind
