// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "Platform/PDF/Reading/PageKey.h"
#include "Platform/PDF/Syntax/FoundParts.h"

namespace quirebind {

/// What pages are read into, one after the other, and which of a page's entries are not just
/// copied. Pages of one shape have these at the same places: their keys are looked at once.
class PageEntries {
 public:
    /// Which entry it is, and its key.
    struct Entry {
        std::size_t index = 0;
        PageKey key = PageKey::other;
    };

    /// What was found in the page that was read last.
    [[nodiscard]] FoundParts& parts() { return parts_; }

    /// The entries of `page`, which was read into `parts` last, that have a key of their own, or no
    /// value. In their order; valid until the next call.
    [[nodiscard]] std::span<const Entry> of(Value page);

 private:
    FoundParts parts_{FoundParts::Memory::shapes};
    std::vector<Entry> entries_;
    std::uint64_t shape_ = 0;  // of the page that has them
};

}  // namespace quirebind
