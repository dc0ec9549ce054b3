// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/PagePaint.h"

#include <QColor>

#include "Quirebind/Look/Colours.h"

namespace quirebind {

namespace {

void drawFrame(QPainter& painter, const QRectF& frame, const QColor& colour, double width) {
    painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(frame);
}

}  // namespace

void drawPaper(QPainter& painter, const QRectF& page, const QPalette& palette) {
    constexpr int kShadow = 4;
    painter.setPen(Qt::NoPen);
    for (int i = kShadow; i > 0; --i) {  // softer outwards
        painter.setBrush(QColor(0, 0, 0, isDark(palette) ? 34 : 11));
        painter.drawRoundedRect(page.adjusted(-i, 1 - i, i, i + 1), i, i);
    }
    painter.fillRect(page, Qt::white);
}

void markText(QPainter& painter, const QRectF& text) {
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.fillRect(text, mix(accent(lightPalette()), Qt::white, 0.34));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void drawFocusFrame(QPainter& painter, const QRectF& view, const QPalette& palette) {
    constexpr double kLineWidth = 2;
    const double inset = kLineWidth / 2;
    drawFrame(painter, view.adjusted(inset, inset, -inset, -inset), accent(palette), kLineWidth);
}

void drawLinkFrame(QPainter& painter, const QRectF& link) {
    const QRectF frame = link.adjusted(-2, -2, 2, 2);
    // The white line tells the teal one from dark paper.
    drawFrame(painter, frame, Qt::white, 4);
    drawFrame(painter, frame, accent(lightPalette()), 2);
}

}  // namespace quirebind
