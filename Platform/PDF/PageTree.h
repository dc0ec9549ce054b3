// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/ObjectReader.h"

namespace quirebind {

/// The attributes that a page takes from its ancestors where it has none of its own
/// (ISO 32000-2, 7.7.3.4).
inline constexpr std::array<std::string_view, 4> kInheritableAttributes{"Resources", "MediaBox",
                                                                        "CropBox", "Rotate"};

/// The pages of a source in order, with what each inherits.
class PageTree {
 public:
    /// Which value stands for each of kInheritableAttributes, as an index; kNone for none.
    using Inheritance = std::array<std::uint32_t, kInheritableAttributes.size()>;
    static constexpr std::uint32_t kNone = 0xffffffff;

    struct Page {
        std::uint32_t object = 0;
        std::uint32_t node = 0;  ///< An index into the nodes.
    };
    struct Node {
        std::uint32_t object = 0;
        Inheritance inherited{};
    };

    [[nodiscard]] const std::vector<Page>& pages() const { return pages_; }
    [[nodiscard]] const std::vector<Node>& nodes() const { return nodes_; }
    /// The inheritable attributes written at nodes, as text.
    [[nodiscard]] const std::vector<std::string>& values() const { return values_; }

    /// Walks the whole tree below `root`, the value under /Pages of the catalog
    /// (ISO 32000-2, 7.7.3). /Count is not asked: files lie about it. A kid that is null is no
    /// page; one that is listed twice counts twice. Throws DamagedDocument where a kid is something
    /// else than a dictionary of its own, where the tree leads back into itself, and where listing
    /// the same nodes again and again makes more pages than a file of that size can hold.
    [[nodiscard]] static PageTree read(ObjectReader& reader, Value root);

 private:
    friend class PageTreeWalk;

    std::vector<Page> pages_;
    std::vector<Node> nodes_;
    std::vector<std::string> values_;
};

}  // namespace quirebind
