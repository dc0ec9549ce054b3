// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Look/Colours.h"

#include <algorithm>
#include <array>

#include "Quirebind/Look/Contrast.h"

namespace quirebind {

namespace {

/// What a palette is made of; everything else follows.
struct Scheme {
    QColor window;
    QColor base;
    QColor text;
    QColor button;
};

QColor teal(const QPalette& palette) {
    return isDark(palette) ? QColor(0x6a, 0xc4, 0xdc) : QColor(0x00, 0x86, 0x98);
}

QPalette palette(const Scheme& scheme) {
    const QColor disabled = mix(scheme.text, scheme.window, 0.38);
    QPalette palette;
    palette.setColor(QPalette::Window, scheme.window);
    palette.setColor(QPalette::Base, scheme.base);
    palette.setColor(QPalette::AlternateBase, mix(scheme.base, scheme.window, 0.5));
    palette.setColor(QPalette::Button, scheme.button);
    palette.setColor(QPalette::ToolTipBase, scheme.base);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText}) {
        palette.setColor(role, scheme.text);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    palette.setColor(QPalette::Light, mix(scheme.button, Qt::white, 0.8));
    palette.setColor(QPalette::Midlight, mix(scheme.button, Qt::white, 0.9));
    palette.setColor(QPalette::Mid, mix(scheme.window, Qt::black, 0.75));
    palette.setColor(QPalette::Dark, mix(scheme.window, Qt::black, 0.6));
    palette.setColor(QPalette::Shadow, Qt::black);
    return palette;
}

}  // namespace

QColor mix(const QColor& a, const QColor& b, double share) {
    const auto channel = [share](int of, int under) {
        return std::clamp(qRound(of * share + under * (1 - share)), 0, 255);
    };
    return {channel(a.red(), b.red()), channel(a.green(), b.green()), channel(a.blue(), b.blue())};
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

bool hasHighContrast(const QPalette& palette) {
    constexpr double kHigh = 19;  // next to black and white; our own palettes stay below
    return contrast(palette.color(QPalette::WindowText), palette.color(QPalette::Window)) >= kHigh;
}

QColor accent(const QPalette& palette) {
    const std::array grounds{palette.color(QPalette::Window), palette.color(QPalette::Base),
                             selectionFill(palette, true), pageBackground(palette)};
    constexpr double kStroke = 1.1 * kGraphicsContrast;  // thin ones are blended with their ground
    return legible(teal(palette), palette.color(QPalette::WindowText), grounds,
                   hasHighContrast(palette) ? kTextContrast : kStroke);
}

QColor prominentFill(const QPalette& palette) {
    return isDark(palette) ? QColor(0x0b, 0x7c, 0x8e) : QColor(0x00, 0x7c, 0x8d);
}

QColor prominentText() {
    return Qt::white;
}

QColor selectionFill(const QPalette& palette, bool active) {
    const QColor& base = palette.color(QPalette::Base);
    if (!active) return mix(palette.color(QPalette::Text), base, 0.09);
    return mix(teal(palette), base, isDark(palette) ? 0.28 : 0.17);
}

QColor buttonBorder(const QPalette& palette) {
    const QColor text = palette.color(QPalette::WindowText);
    if (hasHighContrast(palette)) return text;
    return mix(text, palette.color(QPalette::Button), isDark(palette) ? 0.18 : 0.2);
}

QColor scrollBarSlider(const QPalette& palette, bool grabbed) {
    const QColor text = palette.color(QPalette::WindowText);
    const std::array ground{palette.color(QPalette::Window)};
    return legible(mix(text, ground.front(), grabbed ? 0.7 : 0.46), text, ground,
                   kGraphicsContrast);
}

QColor separator(const QPalette& palette) {
    if (hasHighContrast(palette)) return palette.color(QPalette::WindowText);
    return mix(palette.color(QPalette::WindowText), palette.color(QPalette::Window),
               isDark(palette) ? 0.16 : 0.13);
}

QColor pageBackground(const QPalette& palette) {
    return isDark(palette)
               ? mix(palette.color(QPalette::Window), Qt::black, 0.72)
               : mix(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.065);
}

QPalette lightPalette() {
    return palette({.window = QColor(0xf7, 0xf8, 0xf8),
                    .base = Qt::white,
                    .text = QColor(0x1b, 0x1f, 0x22),
                    .button = QColor(0xff, 0xff, 0xff)});
}

QPalette darkPalette() {
    return palette({.window = QColor(0x22, 0x26, 0x28),
                    .base = QColor(0x1b, 0x1e, 0x20),
                    .text = QColor(0xee, 0xf1, 0xf2),
                    .button = QColor(0x36, 0x3b, 0x3e)});
}

QPalette accented(QPalette palette) {
    const QColor window = palette.color(QPalette::Window);
    palette.setColor(QPalette::Highlight, prominentFill(palette));
    palette.setColor(QPalette::HighlightedText, prominentText());
    palette.setColor(QPalette::Link, accent(palette));
    const QColor text = palette.color(QPalette::WindowText);
    const std::array grounds{window, palette.color(QPalette::Base), palette.color(QPalette::Button),
                             selectionFill(palette, true), selectionFill(palette, false)};
    palette.setColor(kSecondaryText,
                     legible(mix(text, window, 0.72), text, grounds, kTextContrast));
    palette.setColor(QPalette::Disabled, kSecondaryText, mix(text, window, 0.36));
    return palette;
}

}  // namespace quirebind
