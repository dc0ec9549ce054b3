// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "Platform/PDF/Copying/ReferenceMap.h"

namespace quirebind {

/// The numbers of the copies of one source's pages. Each is reserved when it is first asked for.
/// One whose page is never inserted stays a free object: references to it mean null.
class PageCopies {
 public:
    /// `map`, which must outlive this, is that of a source with `count` pages.
    PageCopies(ReferenceMap& map, std::size_t count) : map_(map), count_(count) {}

    /// How many pages the source has.
    [[nodiscard]] std::size_t count() const { return count_; }

    /// The copy of page `index`, counting from 0.
    [[nodiscard]] std::uint32_t ofIndex(std::size_t index) const { return map_.pageNumber(index); }

    /// Whether the copy of page `index` has a number yet.
    [[nodiscard]] bool isNumbered(std::size_t index) const { return map_.isPageNumbered(index); }

    /// The index of the page that is object `source`; nothing where that is no page of the tree.
    [[nodiscard]] std::optional<std::size_t> indexOf(std::uint32_t source) const {
        return map_.pageIndex(source);
    }

    /// The copy of the page that is object `source`; nothing where that is no page of the tree.
    [[nodiscard]] std::optional<std::uint32_t> ofObject(std::uint32_t source) const {
        const auto index = indexOf(source);
        if (!index) return std::nullopt;
        return ofIndex(*index);
    }

 private:
    ReferenceMap& map_;
    std::size_t count_;
};

}  // namespace quirebind
