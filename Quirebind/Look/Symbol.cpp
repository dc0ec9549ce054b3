// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Look/Symbol.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>
#include <cmath>
#include <memory>

#include "Quirebind/Desktop/HandOver.h"
#include "Quirebind/Look/Colours.h"

namespace quirebind {

namespace {

class SymbolEngine : public QIconEngine {
 public:
    SymbolEngine(const QString& name, Tint tint)
        : file_(QStringLiteral(":/symbols/%1.svg").arg(name)), tint_(tint) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const double scale = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, drawn(rect.size(), scale, mode));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
        return drawn(size, 1, mode);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) override {
        return drawn(size / scale, scale, mode);
    }

    // The toolkit's interface asks for an owning pointer.
    [[nodiscard]] QIconEngine* clone() const override {
        return handOver(std::make_unique<SymbolEngine>(*this));
    }

 private:
    [[nodiscard]] QPixmap drawn(const QSize& size, double scale, QIcon::Mode mode) const {
        QPixmap pixmap(size * scale);
        pixmap.setDevicePixelRatio(scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        QSvgRenderer renderer(file_);
        const int side = std::min(size.width(), size.height());
        renderer.render(&painter, QRectF((size.width() - side) / 2.0, (size.height() - side) / 2.0,
                                         side, side));
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(QRect(QPoint(), size), colour(mode));
        return pixmap;
    }

    [[nodiscard]] QColor colour(QIcon::Mode mode) const {
        const QPalette palette = QGuiApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        switch (tint_) {
            case Tint::accent:
                if (mode != QIcon::Disabled) return accent(palette);
                break;
            case Tint::secondary:
                return palette.color(group, kSecondaryText);
            case Tint::secondaryOnPaper:
                return accented(lightPalette()).color(kSecondaryText);
            case Tint::text:
                break;
        }
        return palette.color(group, QPalette::ButtonText);
    }

    QString file_;
    Tint tint_;
};

}  // namespace

QIcon symbol(const QString& name, Tint tint) {
    return QIcon(handOver(std::make_unique<SymbolEngine>(name, tint)));  // the icon owns it
}

SymbolView::SymbolView(const QString& name, Tint tint, double scale)
    : icon_(symbol(name, tint)), scale_(scale) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize SymbolView::sizeHint() const {
    const auto side =
        static_cast<int>(std::lround(QFontMetricsF(QApplication::font()).height() * scale_));
    return {side, side};
}

void SymbolView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    icon_.paint(&painter, rect(), Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
}

void SymbolView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ApplicationFontChange) updateGeometry();
    QWidget::changeEvent(event);
}

}  // namespace quirebind
