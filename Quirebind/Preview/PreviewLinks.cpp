// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/PreviewLinks.h"

#include <QRectF>
#include <algorithm>
#include <ranges>

#include "Quirebind/Preview/OrNothing.h"

namespace quirebind {

void PreviewLinks::reset() {
    page_.reset();
    links_.clear();
}

bool PreviewLinks::isAt(const PDFDocument& document, std::size_t page, const QPointF& point) {
    return find(document, page, point) != nullptr;
}

std::optional<PagePosition> PreviewLinks::target(const PDFDocument& document, std::size_t page,
                                                 const QPointF& point) {
    const PageLink* const link = find(document, page, point);
    if (link == nullptr) return std::nullopt;
    return orNothing([&] { return document.positionOf(*link); });
}

/// The uppermost one, which is the last.
const PageLink* PreviewLinks::find(const PDFDocument& document, std::size_t page,
                                   const QPointF& point) {
    if (page_ != page) {
        links_ = orNothing([&] { return document.pageLinks(page); });
        page_ = page;
    }
    const auto upwards = std::views::reverse(links_);
    const auto found = std::ranges::find_if(upwards, [&](const PageLink& link) {
        return QRectF(link.x, link.y, link.width, link.height).contains(point);
    });
    return found == upwards.end() ? nullptr : &*found;
}

}  // namespace quirebind
