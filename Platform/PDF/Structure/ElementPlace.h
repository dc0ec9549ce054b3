// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Where a structure element, or something else in the structure tree, is written in its source.
struct ElementPlace {
    std::uint32_t object = 0;  ///< The object that it is, or stands in; 0 for the tree's root.
    std::size_t offset = 0;    ///< Of its text in that of the object.

    /// The place of `part`, which stands in the `text` that is here.
    [[nodiscard]] ElementPlace of(Value part, std::string_view text) const {
        return {object, offset + static_cast<std::size_t>(part.text().data() - text.data())};
    }

    friend auto operator<=>(const ElementPlace&, const ElementPlace&) = default;
};

}  // namespace quirebind
