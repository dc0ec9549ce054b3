// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "Platform/PDF/ReferenceMap.h"

namespace quirebind {

/// The numbers of the copies of all pages of one source, which are reserved in one go. One whose
/// page is never inserted stays a free object: references to it mean null.
class PageCopies {
 public:
    PageCopies(const ReferenceMap& map, std::uint32_t first, std::size_t count)
        : map_(map), first_(first), count_(count) {}

    [[nodiscard]] std::size_t count() const { return count_; }

    /// The copy of page `index`, counting from 0.
    [[nodiscard]] std::uint32_t ofIndex(std::size_t index) const {
        return first_ + static_cast<std::uint32_t>(index);
    }

    /// The copy of the page that is object `source`; nothing where that is no page of the tree.
    [[nodiscard]] std::optional<std::uint32_t> ofObject(std::uint32_t source) const {
        const auto output = map_.find(source);
        if (!output || *output < first_ || *output - first_ >= count_) return std::nullopt;
        return output;
    }

 private:
    const ReferenceMap& map_;
    std::uint32_t first_;
    std::size_t count_;
};

}  // namespace quirebind
