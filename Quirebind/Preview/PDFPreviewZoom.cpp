// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QNativeGestureEvent>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "Quirebind/Look/Texts.h"
#include "Quirebind/Preview/PDFPreview.h"
#include "Quirebind/Preview/RenderService.h"

// How large pages are shown: as wide as the view, until the user wants them otherwise.

namespace quirebind {

namespace {

constexpr double kFitting = 1;
constexpr double kSmallest = 0.25;
constexpr double kLargest = 8;
constexpr double kStep = 1.25;
constexpr double kCloser = 2;  // of a double tap with two fingers

}  // namespace

void PDFPreview::setUpZooming() {
    zoomIn_.setText(text::zoomIn());
    // On many keyboards the plus sign is above the equals sign.
    zoomIn_.setShortcuts(QKeySequence::keyBindings(QKeySequence::ZoomIn)
                         << QKeySequence(Qt::CTRL | Qt::Key_Equal));
    connect(&zoomIn_, &QAction::triggered, this, [this] { zoomBy(kStep, middle()); });
    zoomOut_.setText(text::zoomOut());
    zoomOut_.setShortcuts(QKeySequence::ZoomOut);
    connect(&zoomOut_, &QAction::triggered, this, [this] { zoomBy(1 / kStep, middle()); });
    fitWidth_.setText(text::fitWidth());
    fitWidth_.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_0));
    connect(&fitWidth_, &QAction::triggered, this, [this] { zoomTo(kFitting, middle()); });
    addActions({&zoomIn_, &zoomOut_, &fitWidth_});
    showZoom();
}

/// What can still be done.
void PDFPreview::showZoom() {
    zoomIn_.setEnabled(zoom_ < kLargest);
    zoomOut_.setEnabled(zoom_ > kSmallest);
    fitWidth_.setEnabled(zoom_ != kFitting);
}

QPointF PDFPreview::middle() const {
    return QRectF(viewport()->rect()).center();
}

/// What is at `about`, a point of the viewport, stays there.
void PDFPreview::zoomTo(double zoom, const QPointF& about) {
    // Many small steps lead back to where they began, but for rounding.
    constexpr double kNearly = 0.01;
    zoom = std::clamp(zoom, kSmallest, kLargest);
    if (std::abs(zoom - kFitting) < kNearly) zoom = kFitting;
    if (zoom == zoom_ || column_.count() == 0) return;
    const PageColumn::Anchor anchor = column_.anchorAt(top() + about.y());
    const double across = (left() + about.x()) / column_.width();
    zoom_ = zoom;
    layOut();
    scrollTo(column_.positionOf(anchor) - about.y());
    scrollAcrossTo(across * column_.width() - about.x());
    showZoom();
    resting_.start();
    service_.wake();
}

void PDFPreview::zoomBy(double factor, const QPointF& about) {
    zoomTo(zoom_ * factor, about);
}

/// Which part of the column the view begins at: what is narrower than the view is in its middle.
double PDFPreview::left() const {
    const double hidden = column_.width() - viewport()->width();
    if (hidden <= 0) return hidden / 2;
    const QScrollBar& bar = *horizontalScrollBar();
    return isRightToLeft() ? bar.maximum() - bar.value() : bar.value();
}

void PDFPreview::scrollAcrossTo(double x) {
    QScrollBar& bar = *horizontalScrollBar();
    const int value = std::clamp(static_cast<int>(std::round(x)), 0, bar.maximum());
    bar.setValue(isRightToLeft() ? bar.maximum() - value : value);
}

bool PDFPreview::viewportEvent(QEvent* event) {
    const auto* gesture = dynamic_cast<const QNativeGestureEvent*>(event);
    if (gesture == nullptr) return QAbstractScrollArea::viewportEvent(event);
    switch (gesture->gestureType()) {
        case Qt::ZoomNativeGesture:
            zoomBy(1 + gesture->value(), gesture->position());
            return true;
        case Qt::SmartZoomNativeGesture:
            zoomTo(zoom_ == kFitting ? kCloser : kFitting, gesture->position());
            return true;
        default:
            return QAbstractScrollArea::viewportEvent(event);
    }
}

}  // namespace quirebind
