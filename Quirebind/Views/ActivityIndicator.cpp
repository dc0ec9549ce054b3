// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/ActivityIndicator.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include "Quirebind/Look/Colours.h"
#include "Quirebind/Look/Texts.h"

namespace quirebind {

namespace {

constexpr int kSpokes = 8;
constexpr int kMillisecondsAStep = 100;

}  // namespace

ActivityIndicator::ActivityIndicator() {
    setRange(0, 0);
    setTextVisible(false);
    setAccessibleName(text::merging());
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    timer_.setInterval(kMillisecondsAStep);
    connect(&timer_, &QTimer::timeout, this, [this] {
        if (!mayMove()) timer_.stop();
        step_ = (step_ + 1) % kSpokes;
        update();
    });
}

bool ActivityIndicator::mayMove() const {
    return style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0;
}

QSize ActivityIndicator::sizeHint() const {
    const int side = QFontMetrics(QApplication::font()).height();
    return {side, side};
}

void ActivityIndicator::paintEvent(QPaintEvent*) {
    const QColor text = palette().color(QPalette::Active, QPalette::WindowText);
    const QColor window = palette().color(QPalette::Window);
    const double radius = std::min(width(), height()) / 2.0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center());
    for (int spoke = 0; spoke < kSpokes; ++spoke) {
        const int age = timer_.isActive() ? (step_ - spoke + kSpokes) % kSpokes : 0;
        painter.setPen(
            QPen(mix(text, window, 0.7 - 0.075 * age), radius * 0.22, Qt::SolidLine, Qt::RoundCap));
        painter.save();
        painter.rotate(360.0 * spoke / kSpokes);
        painter.drawLine(QPointF(0, -radius * 0.46), QPointF(0, -radius * 0.86));
        painter.restore();
    }
}

void ActivityIndicator::showEvent(QShowEvent* event) {
    QProgressBar::showEvent(event);
    if (mayMove()) timer_.start();
}

void ActivityIndicator::hideEvent(QHideEvent* event) {
    timer_.stop();
    QProgressBar::hideEvent(event);
}

}  // namespace quirebind
