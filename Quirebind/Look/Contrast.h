// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <span>

namespace quirebind {

/// The least contrast of text with its ground (WCAG 2.1, AA).
inline constexpr double kTextContrast = 4.5;
/// The least contrast of anything else that is to be told from its ground (WCAG 2.1, AA).
inline constexpr double kGraphicsContrast = 3.0;

/// How much two opaque colours differ in brightness, from 1 to 21, as WCAG 2.1 counts it.
[[nodiscard]] double contrast(const QColor& a, const QColor& b);

/// `colour`, or where that has not the contrast on each of the grounds, the nearest to it on the
/// way to `towards` that has; `towards` where none has.
[[nodiscard]] QColor legible(const QColor& colour, const QColor& towards,
                             std::span<const QColor> grounds, double least);

}  // namespace quirebind
