// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Reading/PageSize.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

class SourceDocument;

/// How a page is shown: its crop box within its media box, turned as /Rotate says (ISO 32000-2,
/// 7.7.3.3 and 14.11.2). What is missing or makes no sense counts as US Letter, as in other
/// readers.
struct PageGeometry {
    /// The edges of what is shown, in points of the page's user space.
    /// @{
    double left = 0;
    double bottom = 0;
    double right = PageSize().width;
    double top = PageSize().height;
    /// @}
    int quarterTurns = 0;  ///< Clockwise, from 0 to 3.

    /// Width and height in points, as the page is shown.
    [[nodiscard]] PageSize size() const;

    /// Where a point of the page's user space is shown, counted from the upper left corner.
    struct Point {
        double x = 0;
        double y = 0;
    };
    /// See Point; a point outside of the crop box is shown outside of the page.
    [[nodiscard]] Point shown(double x, double y) const;
};

/// The geometry of page `index`. Never throws for what a page says of itself.
[[nodiscard]] PageGeometry pageGeometry(SourceDocument& document, std::size_t index);

/// A rectangle (7.9.5), of which any two opposite corners are given: left, bottom, right and top.
/// Nothing where it is empty or no rectangle.
[[nodiscard]] std::optional<std::array<double, 4>> rectangle(ObjectReader& reader, Value value);

}  // namespace quirebind
