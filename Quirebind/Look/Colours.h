// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QPalette>

namespace quirebind {

// The window's colours. All follow from the palette in use, so that light, dark and the user's own
// schemes need no code of their own. Every pair of a text and what it stands on has a contrast of
// at least 4.5 (WCAG 2.1, AA).

/// The palette's role for secondary text.
inline constexpr QPalette::ColorRole kSecondaryText = QPalette::PlaceholderText;

/// Whether text of that palette is lighter than what it stands on.
[[nodiscard]] bool isDark(const QPalette& palette);
/// Whether the user has asked for as much contrast as there can be.
[[nodiscard]] bool hasHighContrast(const QPalette& palette);

/// The teal of icons, outlines and focus rings.
[[nodiscard]] QColor accent(const QPalette& palette);
/// The teal that a prominent button is filled with, under white text.
[[nodiscard]] QColor prominentFill(const QPalette& palette);
/// The text on that, white in every palette.
[[nodiscard]] QColor prominentText();
/// What lies behind a selected row, in a window that is `active` or one that is not.
[[nodiscard]] QColor selectionFill(const QPalette& palette, bool active);
/// The line around a button.
[[nodiscard]] QColor buttonBorder(const QPalette& palette);
/// What a scroll bar is moved by, on the palette's window; stronger while it is `grabbed`, or under
/// the pointer.
[[nodiscard]] QColor scrollBarSlider(const QPalette& palette, bool grabbed);
/// Lines between regions.
[[nodiscard]] QColor separator(const QPalette& palette);
/// What pages lie on.
[[nodiscard]] QColor pageBackground(const QPalette& palette);

/// `share` of `a`, the rest of `b`; both opaque.
[[nodiscard]] QColor mix(const QColor& a, const QColor& b, double share);

/// Our own palette for desktops that have no opinion.
[[nodiscard]] QPalette lightPalette();
/// Our own palette for desktops that only prefer to be dark.
[[nodiscard]] QPalette darkPalette();
/// The palette with our accent colour, and secondary text of enough contrast.
[[nodiscard]] QPalette accented(QPalette palette);

}  // namespace quirebind
