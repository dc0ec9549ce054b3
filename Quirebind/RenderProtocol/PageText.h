// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QRectF>
#include <QString>
#include <optional>
#include <span>

namespace quirebind {

/// A text on a page, and the rectangles that it covers: about one for each line, in points from the
/// page's upper left corner.
struct PageText {
    QString text;
    QList<QRectF> areas;
};

/// The text as bytes:
///
///     u32      number of UTF-16 units, followed by these
///     u32      number of rectangles, followed by four floats for each: x, y, width, height
[[nodiscard]] QByteArray encode(const PageText& text);

/// Reads that back; nothing where the bytes are anything else.
[[nodiscard]] std::optional<PageText> decodePageText(std::span<const std::byte> bytes);

}  // namespace quirebind
