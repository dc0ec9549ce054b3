// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/PageSign.h"

#include <QApplication>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "Quirebind/Look/Symbol.h"

namespace quirebind {

namespace {

constexpr double kLines = 2.5;  // as high as so many of the user's font

}  // namespace

PageSign::PageSign()
    : icon_(symbol(QStringLiteral("exclamationmark.triangle"), Tint::secondaryOnPaper)) {}

void PageSign::draw(QPainter& painter, const QRectF& page, const QRectF& view) const {
    const double height = QFontMetricsF(QApplication::font()).height() * kLines;
    const double side = std::round(std::min({height, page.width() / 2, page.height() / 2}));
    const QPointF centre = page.intersected(view).center();
    const double left = std::clamp(centre.x() - side / 2, page.left(), page.right() - side);
    const double top = std::clamp(centre.y() - side / 2, page.top(), page.bottom() - side);
    const QRect place = QRectF(left, top, side, side).toRect();
    if (!place.isEmpty()) icon_.paint(&painter, place);
}

}  // namespace quirebind
