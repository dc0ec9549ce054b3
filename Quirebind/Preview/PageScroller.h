// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractScrollArea>
#include <QPointF>
#include <QRectF>
#include <cstddef>
#include <vector>

#include "Quirebind/Preview/PageColumn.h"

namespace quirebind {

/// Which part of a column of pages shows in a scroll area, and how large it is shown: as wide as
/// the area, times the zoom. Keeps the scroll bars in line with that and follows them; what is
/// narrower than the area is in its middle.
///
/// A point of the view is in pixels from the upper left corner of the area's viewport, a place in
/// the column in pixels from the column's. Main thread only.
class PageScroller {
 public:
    /// The zoom at which the column is as wide as the view, and the limits.
    static constexpr double kFitting = 1;
    static constexpr double kSmallest = 0.25;
    static constexpr double kLargest = 8;

    /// Some pages in a row, both ends included.
    struct Range {
        std::size_t first = 0;
        std::size_t last = 0;
    };

    /// No pages yet. `area` must outlive this, which has its scroll bars for itself.
    explicit PageScroller(QAbstractScrollArea& area) : area_(area) {}

    // Laying out. The area is told to draw itself anew.

    /// Shows pages of these sizes, fitting, from the beginning.
    void setSizes(std::vector<PageSize> sizes);
    /// Corrects the sizes of some pages, from `first` on; what shows stays where it is.
    void correctSizes(std::size_t first, const std::vector<PageSize>& sizes);
    /// Takes note of the area's new size; what shows stays where it is. True where pages have
    /// another size than before.
    bool resized();
    /// Zooms, within the limits; what is at `about`, a point of the view, stays there. False where
    /// nothing changes, which is so without a page.
    bool zoomTo(double zoom, const QPointF& about);
    /// How many times as wide as the view the column is.
    [[nodiscard]] double zoom() const { return zoom_; }

    // Scrolling.

    /// What of the column is at the view's upper edge.
    [[nodiscard]] double top() const;
    /// What of the column is at the view's left edge; negative beside a narrow one.
    [[nodiscard]] double left() const;
    /// Has `y` of the column at the view's upper edge, as nearly as that can be.
    void scrollTo(double y);
    /// Has `x` of the column at the view's left edge, as nearly as that can be.
    void scrollAcrossTo(double x);
    /// The place at the view's upper edge, to come back to, whatever the zoom is then.
    [[nodiscard]] PageColumn::Anchor place() const { return column_.anchorAt(top()); }
    /// Goes back to it.
    void scrollTo(const PageColumn::Anchor& place) { scrollTo(column_.positionOf(place)); }

    // Where pages are. All but `column` need a page.

    /// The column at its present size.
    [[nodiscard]] const PageColumn& column() const { return column_; }
    /// The pages in sight.
    [[nodiscard]] Range visible() const;
    /// The page in the middle of the view.
    [[nodiscard]] std::size_t middlePage() const;
    /// The page at a point of the view, or the last one above it.
    [[nodiscard]] std::size_t pageAt(const QPointF& point) const;
    /// Where a page is in the view, on whole pixels of the screen: otherwise it would be blurred.
    [[nodiscard]] QRectF pageRect(std::size_t page) const;
    /// Where part of a page is in the view; `part` is in points from the page's upper left corner.
    [[nodiscard]] QRectF rectOn(std::size_t page, const QRectF& part) const;
    /// A point of the view, in points from that page's upper left corner.
    [[nodiscard]] QPointF pointOn(std::size_t page, const QPointF& point) const;

 private:
    void layOut();

    QAbstractScrollArea& area_;
    PageColumn column_;
    double zoom_ = kFitting;
    double unit_ = 1;  // pixels of the column that one step of the scroll bar stands for
};

}  // namespace quirebind
