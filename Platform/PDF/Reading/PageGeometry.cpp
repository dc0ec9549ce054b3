// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/PageGeometry.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Reading/SourceDocument.h"
#include "Platform/PDF/Syntax/RealNumber.h"

namespace quirebind {
namespace {

/// The positions in kInheritableAttributes.
constexpr std::size_t kMediaBox = 1;
constexpr std::size_t kCropBox = 2;
constexpr std::size_t kRotate = 3;

/// An attribute of a page: its own, or else what it inherits (7.7.3.4).
Value attribute(const PageTree& tree, const PageTree::Page& page, Value dictionary,
                ObjectReader& reader, std::size_t which) {
    const Value own = dictionary.find(kInheritableAttributes[which]);
    if (!reader.isAbsent(own)) return own;
    const std::uint32_t inherited = tree.nodes()[page.node].inherited[which];
    return inherited == PageTree::kNone ? Value() : Value(tree.values()[inherited]);
}

PageGeometry geometryOf(SourceDocument& document, const PageTree::Page& page) {
    ObjectReader& reader = document.reader();
    const PageTree& tree = document.pageTree();
    const Value dictionary = tree.dictionaryOf(page, reader);
    const auto of = [&](std::size_t which) {
        return attribute(tree, page, dictionary, reader, which);
    };

    PageGeometry shown;
    if (const auto media = rectangle(reader, of(kMediaBox))) {
        const auto [left, bottom, right, top] = *media;
        shown = {.left = left, .bottom = bottom, .right = right, .top = top};
    }
    if (const auto crop = rectangle(reader, of(kCropBox))) {
        const auto [left, bottom, right, top] = *crop;
        PageGeometry both = shown;
        both.left = std::max(left, shown.left);
        both.bottom = std::max(bottom, shown.bottom);
        both.right = std::min(right, shown.right);
        both.top = std::min(top, shown.top);
        if (both.left < both.right && both.bottom < both.top) shown = both;
    }
    const std::int64_t turn = reader.resolve(of(kRotate)).integer().value_or(0) / 90 % 4;
    shown.quarterTurns = static_cast<int>((turn + 4) % 4);
    return shown;
}

}  // namespace

PageSize PageGeometry::size() const {
    PageSize size{right - left, top - bottom};
    if (quarterTurns % 2 != 0) std::swap(size.width, size.height);
    return size;
}

PageGeometry::Point PageGeometry::shown(double x, double y) const {
    switch (quarterTurns) {
        case 1:
            return {y - bottom, x - left};
        case 2:
            return {right - x, y - bottom};
        case 3:
            return {top - y, right - x};
        default:
            return {x - left, top - y};
    }
}

std::optional<std::array<double, 4>> rectangle(ObjectReader& reader, Value value) {
    std::array<double, 4> corners{};
    std::size_t count = 0;
    ArrayReader elements(reader.resolve(value));
    while (const auto element = elements.next()) {
        if (count == corners.size()) break;
        const auto corner = realNumber(reader.resolve(*element).text());
        if (!corner) return std::nullopt;
        corners[count++] = *corner;
    }
    if (count < corners.size()) return std::nullopt;
    auto [left, bottom, right, top] = corners;
    if (left > right) std::swap(left, right);
    if (bottom > top) std::swap(bottom, top);
    if (left == right || bottom == top) return std::nullopt;
    return std::array{left, bottom, right, top};
}

PageGeometry pageGeometry(SourceDocument& document, std::size_t index) {
    PageGeometry geometry;
    try {
        geometry = geometryOf(document, document.pageTree().pages()[index]);
    } catch (const DamagedDocument&) {
        geometry = PageGeometry();  // it is shown as an empty page
    }
    document.reader().trim();
    return geometry;
}

}  // namespace quirebind
