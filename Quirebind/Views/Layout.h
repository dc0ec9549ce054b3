// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QBoxLayout>
#include <QMargins>
#include <QWidget>
#include <memory>
#include <utility>

#include "Quirebind/Desktop/HandOver.h"

/// Layouts written down the way they look:
///
///     layout::set(*this, layout::row(8, icon_, layout::column(3, title_, tagline_),
///                                    layout::kStretch, addButton_));
namespace quirebind::layout {

/// Takes all the space that is left.
struct Stretch {};
/// The item that stands for it.
inline constexpr Stretch kStretch;

/// Keeps its size, against the start (leading, or top) or the middle of a layout's other direction.
struct Aligned {
    QWidget& widget;
    Qt::Alignment alignment;
};

// Each puts one kind of item behind those of a layout.

/// A widget, which is not owned: it becomes a child of the widget that gets the layout.
inline void add(QBoxLayout& box, QWidget& widget) {
    box.addWidget(&widget);
}
/// A widget that does not fill its place, and is not owned either.
inline void add(QBoxLayout& box, const Aligned& item) {
    box.addWidget(&item.widget, 0, item.alignment);
}
/// Free space.
inline void add(QBoxLayout& box, Stretch) {
    box.addStretch(1);
}
/// A layout within the layout.
inline void add(QBoxLayout& box, std::unique_ptr<QBoxLayout> inner) {
    box.addLayout(handOver(std::move(inner)));  // its parent owns it from here on
}

/// Items behind each other in `direction`, `spacing` pixels apart, with no space around them.
template <typename... Items>
[[nodiscard]] std::unique_ptr<QBoxLayout> box(QBoxLayout::Direction direction, int spacing,
                                              Items&&... items) {
    auto result = std::make_unique<QBoxLayout>(direction);
    result->setContentsMargins(0, 0, 0, 0);
    result->setSpacing(spacing);
    (add(*result, std::forward<Items>(items)), ...);
    return result;
}

/// Items beside each other in reading direction, `spacing` pixels apart.
template <typename... Items>
[[nodiscard]] std::unique_ptr<QBoxLayout> row(int spacing, Items&&... items) {
    return box(QBoxLayout::LeftToRight, spacing, std::forward<Items>(items)...);
}

/// Items below each other, `spacing` pixels apart.
template <typename... Items>
[[nodiscard]] std::unique_ptr<QBoxLayout> column(int spacing, Items&&... items) {
    return box(QBoxLayout::TopToBottom, spacing, std::forward<Items>(items)...);
}

/// The same layout with space around it, in pixels.
[[nodiscard]] inline std::unique_ptr<QBoxLayout> padded(QMargins margins,
                                                        std::unique_ptr<QBoxLayout> inner) {
    inner->setContentsMargins(margins);
    return inner;
}

/// Gives the widget its layout, and all widgets in that a parent. Once for each widget.
inline void set(QWidget& widget, std::unique_ptr<QBoxLayout> content) {
    widget.setLayout(handOver(std::move(content)));  // the widget owns it from here on
}

/// The platform's distance between neighbours in a row.
inline constexpr int kSpacing = 8;

}  // namespace quirebind::layout
