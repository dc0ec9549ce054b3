// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Look/TextLabel.h"

#include <QApplication>
#include <QEvent>

#include "Quirebind/Look/Colours.h"

namespace quirebind {

namespace {

double scale(TextStyle style) {
    switch (style) {
        case TextStyle::title:
            return 1.69;
        case TextStyle::title2:
            return 1.31;
        case TextStyle::caption:
            return 0.85;
        case TextStyle::headline:
        case TextStyle::body:
            break;
    }
    return 1.0;
}

}  // namespace

QFont font(TextStyle style) {
    QFont font = QApplication::font();
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * scale(style));
    else  // the platform gave its size in pixels
        font.setPixelSize(qRound(font.pixelSize() * scale(style)));
    if (style == TextStyle::headline) font.setWeight(QFont::DemiBold);
    return font;
}

TextLabel::TextLabel(TextStyle style, Emphasis emphasis) : style_(style), emphasis_(emphasis) {
    setTextFormat(Qt::PlainText);
    align();
    restyle();
}

void TextLabel::setBold(QFont::Weight weight) {
    weight_ = weight;
    restyle();
}

void TextLabel::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ApplicationFontChange ||
        event->type() == QEvent::ApplicationPaletteChange)
        restyle();
    if (event->type() == QEvent::LayoutDirectionChange && alignment().testFlag(Qt::AlignAbsolute))
        align();
    QLabel::changeEvent(event);
}

void TextLabel::align() {
    const auto side = layoutDirection() == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft;
    setAlignment(Qt::AlignAbsolute | (alignment() & Qt::AlignVertical_Mask) | side);
}

void TextLabel::restyle() {
    QFont styled = quirebind::font(style_);
    if (weight_ != QFont::Normal) styled.setWeight(weight_);
    setFont(styled);
    if (emphasis_ == Emphasis::secondary) setForegroundRole(kSecondaryText);
}

}  // namespace quirebind
