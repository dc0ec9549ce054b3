// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QProxyStyle>

namespace quirebind {

/// How controls look: flat, rounded, with a teal ring around what has the focus. Everything else is
/// the toolkit's own portable style.
class ControlStyle : public QProxyStyle {
 public:
    /// Controls may move until setAnimated says otherwise. Needs the QApplication.
    ControlStyle();

    /// Whether anything may move that could stand still.
    void setAnimated(bool animated) { animated_ = animated; }

    // QStyle, for buttons and scroll bars; the rest is passed on.

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                       SubControl part, const QWidget* widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option,
                                         const QSize& contents,
                                         const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* result) const override;

 private:
    bool animated_ = true;
};

/// The property that makes a QPushButton the prominent one of its window.
inline constexpr const char* kProminent = "prominent";

}  // namespace quirebind
