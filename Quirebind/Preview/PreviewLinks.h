// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointF>
#include <cstddef>
#include <optional>
#include <vector>

#include "Platform/PDF/PDFDocument.h"

namespace quirebind {

/// The links of a shown document that lead to places inside it. Those of one page are read at a
/// time, when the pointer comes there; where one leads to, when it is followed.
class PreviewLinks {
 public:
    /// Forgets everything: there is another document.
    void reset();

    /// Whether there is a link at that point of a page, in points from its upper left corner.
    [[nodiscard]] bool isAt(const PDFDocument& document, std::size_t page, const QPointF& point);
    /// Where that link leads to; nothing where there is none or it leads nowhere.
    [[nodiscard]] std::optional<PagePosition> target(const PDFDocument& document, std::size_t page,
                                                     const QPointF& point);

 private:
    [[nodiscard]] const PageLink* find(const PDFDocument& document, std::size_t page,
                                       const QPointF& point);

    std::optional<std::size_t> page_;  // whose links these are
    std::vector<PageLink> links_;
};

}  // namespace quirebind
