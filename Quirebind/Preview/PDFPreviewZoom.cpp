// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QNativeGestureEvent>

#include "Quirebind/Preview/PDFPreview.h"
#include "Quirebind/Preview/RenderService.h"

// How large pages are shown: as wide as the view, until the user wants them otherwise.

namespace quirebind {

namespace {

constexpr double kCloser = 2;  // of a double tap with two fingers

}  // namespace

QPointF PDFPreview::middle() const {
    return QRectF(viewport()->rect()).center();
}

/// What is at `about`, a point of the viewport, stays there.
void PDFPreview::zoomTo(double zoom, const QPointF& about) {
    if (!scroller_.zoomTo(zoom, about)) return;
    zoomActions_.show(scroller_.zoom());
    resting_.start();
    service_.wake();
}

void PDFPreview::zoomBy(double factor, const QPointF& about) {
    zoomTo(scroller_.zoom() * factor, about);
}

bool PDFPreview::viewportEvent(QEvent* event) {
    const auto* gesture = dynamic_cast<const QNativeGestureEvent*>(event);
    if (gesture == nullptr) return QAbstractScrollArea::viewportEvent(event);
    switch (gesture->gestureType()) {
        case Qt::ZoomNativeGesture:
            zoomBy(1 + gesture->value(), gesture->position());
            return true;
        case Qt::SmartZoomNativeGesture:
            zoomTo(scroller_.zoom() == PageScroller::kFitting ? kCloser : PageScroller::kFitting,
                   gesture->position());
            return true;
        default:
            return QAbstractScrollArea::viewportEvent(event);
    }
}

}  // namespace quirebind
