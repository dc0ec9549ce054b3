// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Look/ControlStyle.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>
#include <QStyleOptionButton>
#include <QStyleOptionSlider>
#include <QWidget>
#include <algorithm>

#include "Quirebind/Look/Colours.h"

namespace quirebind {

namespace {

constexpr double kRadius = 7;
constexpr int kIconGap = 5;
constexpr int kScrollBarExtent = 12;
constexpr int kShortestSlider = 32;

bool isProminent(const QWidget* widget) {
    return widget != nullptr && widget->property(kProminent).toBool();
}

struct ButtonColours {
    QColor fill;
    QColor border;
};

/// A button's colours while nothing is done with it.
ButtonColours restingColours(const QPalette& palette, bool prominent) {
    if (!prominent) return {palette.color(QPalette::Button), buttonBorder(palette)};
    const QColor fill = prominentFill(palette);
    return {fill, fill};
}

/// The same, faint.
ButtonColours disabledColours(const QPalette& palette, bool prominent) {
    const QColor& window = palette.color(QPalette::Window);
    if (prominent) {
        const QColor fill = mix(palette.color(QPalette::WindowText), window, 0.1);
        return {fill, fill};
    }
    const auto [fill, border] = restingColours(palette, prominent);
    return {mix(fill, window, 0.4), mix(border, window, 0.55)};
}

ButtonColours coloursOf(const QStyleOption& option, bool prominent) {
    const QPalette& palette = option.palette;
    if ((option.state & QStyle::State_Enabled) == 0) return disabledColours(palette, prominent);
    auto [fill, border] = restingColours(palette, prominent);
    if ((option.state & (QStyle::State_Sunken | QStyle::State_On)) != 0)
        fill = mix(fill, Qt::black, 0.86);
    else if ((option.state & QStyle::State_MouseOver) != 0)
        fill = prominent ? mix(fill, Qt::white, 0.92)
                         : mix(fill, palette.color(QPalette::WindowText), 0.95);
    return {fill, border};
}

void drawButton(const QStyleOption& option, QPainter& painter, bool prominent) {
    const bool focused = (option.state & QStyle::State_HasFocus) != 0 &&
                         (option.state & QStyle::State_KeyboardFocusChange) != 0;
    const auto [fill, border] = coloursOf(option, prominent);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(option.rect).adjusted(2.5, 2.5, -2.5, -2.5);
    painter.setPen(QPen(border, 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(frame, kRadius, kRadius);
    if (focused) {
        painter.setPen(QPen(accent(option.palette), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(frame.adjusted(-1.5, -1.5, 1.5, 1.5), kRadius + 1.5, kRadius + 1.5);
    }
    painter.restore();
}

/// The icon and the text side by side, centred together.
void drawLabel(const QStyleOptionButton& option, QPainter& painter, bool prominent,
               const QStyle& style) {
    const bool enabled = (option.state & QStyle::State_Enabled) != 0;
    const int iconSide = option.icon.isNull() ? 0 : option.iconSize.width();
    const int gap = option.icon.isNull() || option.text.isEmpty() ? 0 : kIconGap;
    const int textWidth =
        option.fontMetrics.size(Qt::TextShowMnemonic | Qt::TextSingleLine, option.text).width();
    const int width = std::min(iconSide + gap + textWidth, option.rect.width());
    const QRect label(option.rect.center().x() - width / 2, option.rect.top(), width,
                      option.rect.height());
    const QRect icon(label.left(), label.center().y() - iconSide / 2, iconSide, iconSide);
    const QRect text = label.adjusted(iconSide + gap, 0, 0, 0);
    const auto mirrored = [&](const QRect& rect) {
        return QStyle::visualRect(option.direction, label, rect);
    };
    option.icon.paint(&painter, mirrored(icon), Qt::AlignCenter,
                      enabled ? QIcon::Normal : QIcon::Disabled);
    QPalette palette = option.palette;
    if (prominent && enabled) palette.setColor(QPalette::ButtonText, prominentText());
    const int mnemonics = style.styleHint(QStyle::SH_UnderlineShortcut, &option, nullptr) != 0
                              ? Qt::TextShowMnemonic
                              : Qt::TextHideMnemonic;
    style.drawItemText(&painter, mirrored(text), Qt::AlignCenter | Qt::TextSingleLine | mnemonics,
                       palette, enabled, option.text, QPalette::ButtonText);
}

}  // namespace

ControlStyle::ControlStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void ControlStyle::drawControl(ControlElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (element == CE_PushButtonBevel && button != nullptr) {
        drawButton(*button, *painter, isProminent(widget));
        return;
    }
    if (element == CE_PushButtonLabel && button != nullptr) {
        drawLabel(*button, *painter, isProminent(widget), *proxy());
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void ControlStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const {
    // A button's focus is drawn with its outline.
    if (element == PE_FrameFocusRect && widget != nullptr && widget->inherits("QPushButton"))
        return;
    // Between two scroll bars nothing is drawn either.
    if (element == PE_PanelScrollAreaCorner) return;
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void ControlStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || bar == nullptr) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    if (bar->minimum == bar->maximum) return;
    const bool grabbed = (bar->activeSubControls & SC_ScrollBarSlider) != 0 &&
                         (bar->state & (State_MouseOver | State_Sunken)) != 0;
    const QRectF slider =
        QRectF(proxy()->subControlRect(control, option, SC_ScrollBarSlider, widget))
            .adjusted(3, 3, -3, -3);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(scrollBarSlider(bar->palette, grabbed));
    const double radius = std::min(slider.width(), slider.height()) / 2;
    painter->drawRoundedRect(slider, radius, radius);
    painter->restore();
}

QRect ControlStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                   SubControl part, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || bar == nullptr)
        return QProxyStyle::subControlRect(control, option, part, widget);

    // No arrow buttons: the groove is the whole bar.
    const bool upright = bar->orientation == Qt::Vertical;
    const int length = upright ? bar->rect.height() : bar->rect.width();
    const qint64 range = qint64{bar->maximum} - bar->minimum;
    int slider = length;
    if (range > 0) {
        const auto share =
            static_cast<int>(qint64{length} * bar->pageStep / (range + bar->pageStep));
        slider = std::clamp(share, std::min(kShortestSlider, length), length);
    }
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                              length - slider, bar->upsideDown);
    const auto along = [&](int from, int extent) {
        return upright ? QRect(0, from, bar->rect.width(), extent)
                       : QRect(from, 0, extent, bar->rect.height());
    };
    switch (part) {
        case SC_ScrollBarSlider:
            return along(start, slider);
        case SC_ScrollBarSubPage:
            return along(0, start);
        case SC_ScrollBarAddPage:
            return along(start + slider, length - start - slider);
        case SC_ScrollBarGroove:
            return bar->rect;
        default:
            return {};
    }
}

QSize ControlStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                     const QSize& contents, const QWidget* widget) const {
    if (type != CT_PushButton) return QProxyStyle::sizeFromContents(type, option, contents, widget);
    const int height = option->fontMetrics.height();
    const bool prominent = isProminent(widget);
    return {contents.width() + height * (prominent ? 3 : 2),
            std::max(contents.height(), height) + height * (prominent ? 16 : 14) / 17};
}

int ControlStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                              const QWidget* widget) const {
    switch (metric) {
        case PM_ScrollBarExtent:
            return kScrollBarExtent;
        case PM_ScrollBarSliderMin:
            return kShortestSlider;
        case PM_ButtonIconSize:
        case PM_SmallIconSize: {
            const int usual = QProxyStyle::pixelMetric(metric, option, widget);
            return std::max(usual, QFontMetrics(QApplication::font()).height() * 16 / 17);
        }
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int ControlStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* result) const {
    switch (hint) {
        case SH_ScrollBar_Transient:
        case SH_EtchDisabledText:
        case SH_DitherDisabledText:
            return 0;
        case SH_Widget_Animation_Duration:
            return animated_ ? QProxyStyle::styleHint(hint, option, widget, result) : 0;
        default:
            return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

}  // namespace quirebind
