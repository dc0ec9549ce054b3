// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "Platform/PDF/Links/PageLink.h"

namespace quirebind {

/// Which link of a shown document the keyboard is at, if at any.
class LinkFocus {
 public:
    /// A link, and where it is.
    struct Link {
        std::size_t page = 0;  ///< That it is on.
        PageLink area;
    };

    /// Is at no link.
    void reset() { current_.reset(); }

    /// Goes to the next one of `inSight` in the order of reading, from none to the first; or
    /// backwards, from none to the last. One that is no longer in sight counts as none. False, and
    /// at none, where there is nothing to go to.
    bool move(std::vector<Link> inSight, bool forwards);

    /// The link that it is at.
    [[nodiscard]] const std::optional<Link>& current() const { return current_; }

 private:
    std::optional<Link> current_;
};

}  // namespace quirebind
