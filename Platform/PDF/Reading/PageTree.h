// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Reading/PageKey.h"

namespace quirebind {

/// The pages of a source in order, with what each inherits.
class PageTree {
 public:
    /// Which value stands for each of kInheritableAttributes, as an index; kNone for none.
    using Inheritance = std::array<std::uint32_t, kInheritableAttributes.size()>;
    /// No index.
    static constexpr std::uint32_t kNone = 0xffffffff;

    /// Where a page stands: in which node, and as which object or in its parent directly.
    struct Page {
        std::uint32_t object = 0;      ///< 0 for a page that is no object of its own.
        std::uint32_t node = 0;        ///< An index into the nodes.
        std::uint32_t direct = kNone;  ///< An index into those that are no objects.

        /// Whether the page stands in its parent directly.
        [[nodiscard]] bool isDirect() const { return direct != kNone; }
    };
    /// A node that has pages, or nodes, below it.
    struct Node {
        std::uint32_t object = 0;  ///< 0 for a node that is no object of its own.
        Inheritance inherited{};
    };

    /// The pages in the order of the document.
    [[nodiscard]] const std::vector<Page>& pages() const { return pages_; }
    /// The nodes that Page::node is an index into.
    [[nodiscard]] const std::vector<Node>& nodes() const { return nodes_; }
    /// The inheritable attributes written at nodes, as text.
    [[nodiscard]] const std::vector<std::string>& values() const { return values_; }

    /// The dictionary of a page that is no object of its own.
    [[nodiscard]] Value directPage(const Page& page) const {
        return Value(directPages_[page.direct]);
    }
    /// The dictionary of a page, valid until `reader`, which is that of its source, is trimmed.
    /// Throws DamagedDocument.
    [[nodiscard]] Value dictionaryOf(const Page& page, ObjectReader& reader) const {
        return page.isDirect() ? directPage(page) : reader.read(page.object).value;
    }

    /// What to do about damage in a tree.
    enum class Damage : std::uint8_t {
        refused,   ///< Any damage is an exception: there may be a better table to read the tree by.
        bypassed,  ///< Only the loss of pages is.
    };

    /// Walks the whole tree below `root`, the value under /Pages of the catalog
    /// (ISO 32000-2, 7.7.3). Nodes and pages may stand in their parents directly. A kid that is
    /// null is no page. A kid that is listed twice counts twice. A kid without kids of its own is a
    /// page if it has content or says that it is a page, even if it also has an empty /Kids or says
    /// that it is a node. /Count is not asked where there is no damage: files lie about it.
    ///
    /// A tree is damaged where
    /// - a kid is no dictionary, or leads back to a node above it;
    /// - a node has a /Count but no /Kids;
    /// - there is a /Count but no page;
    /// - the root is below another node.
    ///
    /// Damage is bypassed by doing without those kids, and by going up to the root. Then it still
    /// is damage where
    /// - there is no page;
    /// - there are fewer pages than a /Count above them says;
    /// - a kid is lost and no node above it has a /Count.
    ///
    /// Listing the same nodes again and again, to make more pages than a file of that size can
    /// hold, is damage in both cases. Throws DamagedDocument.
    [[nodiscard]] static PageTree read(ObjectReader& reader, Value root, Damage damage);

 private:
    friend class PageTreeWalk;

    std::vector<Page> pages_;
    std::vector<Node> nodes_;
    std::vector<std::string> values_;
    std::vector<std::string> directPages_;  // dictionaries
};

}  // namespace quirebind
