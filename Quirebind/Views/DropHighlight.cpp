// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/DropHighlight.h"

#include <QEvent>
#include <QPainter>

#include "Quirebind/Look/Colours.h"

namespace quirebind {

namespace {

constexpr double kRadius = 8;
constexpr double kLineWidth = 3;

}  // namespace

DropHighlight::DropHighlight(QWidget& covered) : QWidget(&covered) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    covered.installEventFilter(this);
    hide();
}

bool DropHighlight::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

void DropHighlight::paintEvent(QPaintEvent*) {
    // Stroked on the very edge: the outer half of the lines is clipped away. The wider one keeps
    // the outline apart from pages, which are as white in the dark.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen(palette().color(QPalette::Window), 2 * kLineWidth, Qt::SolidLine, Qt::FlatCap,
             Qt::MiterJoin);
    pen.setMiterLimit(10);
    painter.setPen(pen);
    painter.drawRoundedRect(QRectF(rect()), kRadius, kRadius);
    pen.setColor(accent(palette()));
    pen.setWidthF(kLineWidth);
    painter.setPen(pen);
    painter.drawRoundedRect(QRectF(rect()), kRadius, kRadius);
}

}  // namespace quirebind
