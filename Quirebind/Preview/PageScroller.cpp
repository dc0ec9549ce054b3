// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/PageScroller.h"

#include <QScrollBar>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <utility>

namespace quirebind {

namespace {

constexpr double kMostSteps = 1 << 30;  // of a scroll bar
constexpr double kLine = 40;            // pixels that a step of a scroll bar goes

}  // namespace

// Laying out.

void PageScroller::setSizes(std::vector<PageSize> sizes) {
    column_.setSizes(std::move(sizes));
    zoom_ = kFitting;
    layOut();
    scrollTo(0);
}

void PageScroller::correctSizes(std::size_t first, const std::vector<PageSize>& sizes) {
    const PageColumn::Anchor before = place();
    column_.setSizes(first, sizes);
    layOut();
    scrollTo(before);
}

bool PageScroller::resized() {
    const PageColumn::Anchor before = place();
    const bool rescaled = column_.width() != area_.viewport()->width() * zoom_;
    layOut();
    scrollTo(before);
    return rescaled;
}

bool PageScroller::zoomTo(double zoom, const QPointF& about) {
    // Many small steps lead back to where they began, but for rounding.
    constexpr double kNearly = 0.01;
    zoom = std::clamp(zoom, kSmallest, kLargest);
    if (std::abs(zoom - kFitting) < kNearly) zoom = kFitting;
    if (zoom == zoom_ || column_.count() == 0) return false;
    const PageColumn::Anchor anchor = column_.anchorAt(top() + about.y());
    const double across = (left() + about.x()) / column_.width();
    zoom_ = zoom;
    layOut();
    scrollTo(column_.positionOf(anchor) - about.y());
    scrollAcrossTo(across * column_.width() - about.x());
    return true;
}

void PageScroller::layOut() {
    const int height = area_.viewport()->height();
    const int width = area_.viewport()->width();
    column_.setWidth(width * zoom_);
    const double hidden = std::max(0.0, column_.height() - height);
    unit_ = std::max(1.0, hidden / kMostSteps);
    QScrollBar& down = *area_.verticalScrollBar();
    down.setRange(0, static_cast<int>(std::ceil(hidden / unit_)));
    down.setPageStep(static_cast<int>(height / unit_));
    down.setSingleStep(std::max(1, static_cast<int>(kLine / unit_)));
    QScrollBar& across = *area_.horizontalScrollBar();
    across.setRange(0, static_cast<int>(column_.width()) - width);
    across.setPageStep(width);
    across.setSingleStep(static_cast<int>(kLine));
    area_.viewport()->update();
}

// Scrolling.

double PageScroller::top() const {
    return area_.verticalScrollBar()->value() * unit_;
}

double PageScroller::left() const {
    const double hidden = column_.width() - area_.viewport()->width();
    if (hidden <= 0) return hidden / 2;
    const QScrollBar& bar = *area_.horizontalScrollBar();
    return area_.isRightToLeft() ? bar.maximum() - bar.value() : bar.value();
}

void PageScroller::scrollTo(double y) {
    QScrollBar& bar = *area_.verticalScrollBar();
    const double most = bar.maximum();
    bar.setValue(static_cast<int>(std::clamp(std::round(y / unit_), 0.0, most)));
}

void PageScroller::scrollAcrossTo(double x) {
    QScrollBar& bar = *area_.horizontalScrollBar();
    const int value = std::clamp(static_cast<int>(std::round(x)), 0, bar.maximum());
    bar.setValue(area_.isRightToLeft() ? bar.maximum() - value : value);
}

// Where pages are.

PageScroller::Range PageScroller::visible() const {
    return {column_.pageAt(top()), column_.pageAt(top() + area_.viewport()->height())};
}

std::size_t PageScroller::middlePage() const {
    return column_.pageAt(top() + area_.viewport()->height() / 2.0);
}

std::size_t PageScroller::pageAt(const QPointF& point) const {
    return column_.pageAt(top() + point.y());
}

QRectF PageScroller::pageRect(std::size_t page) const {
    const double ratio = area_.devicePixelRatioF();
    const auto snapped = [ratio](double x) { return std::round(x * ratio) / ratio; };
    return {snapped(column_.pageLeft(page) - left()), snapped(column_.pageTop(page) - top()),
            snapped(column_.pageWidth(page)), snapped(column_.pageHeight(page))};
}

QRectF PageScroller::rectOn(std::size_t page, const QRectF& part) const {
    const double scale = column_.scale();
    return {pageRect(page).topLeft() + part.topLeft() * scale, part.size() * scale};
}

QPointF PageScroller::pointOn(std::size_t page, const QPointF& point) const {
    return (point - pageRect(page).topLeft()) / column_.scale();
}

}  // namespace quirebind
