// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPainter>
#include <QPalette>
#include <QRectF>

namespace quirebind {

// How the preview looks, but for what stands on its pages. All that is drawn is in the painter's
// coordinates.

/// Draws a page without anything on it, with its shadow on what it lies on.
void drawPaper(QPainter& painter, const QRectF& page, const QPalette& palette);

/// Marks text that is selected as a marker does: what is written stays as dark as it is.
void markText(QPainter& painter, const QRectF& text);

/// Draws the frame within the `view` that has the focus.
void drawFocusFrame(QPainter& painter, const QRectF& view, const QPalette& palette);

/// Draws the frame around the `link` that has the focus, on paper of whatever colour.
void drawLinkFrame(QPainter& painter, const QRectF& link);

}  // namespace quirebind
