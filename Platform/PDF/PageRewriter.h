// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <vector>

#include "Platform/PDF/ObjectCopier.h"
#include "Platform/PDF/PageTree.h"

namespace quirebind {

/// Writes the pages of one source into the output: with a new parent, and with the attributes that
/// a page took from its ancestors put on the page itself (ISO 32000-2, 7.7.3.4).
class PageRewriter {
 public:
    PageRewriter(const PageTree& tree, ObjectCopier& copier)
        : tree_(tree), copier_(copier), shared_(tree.values().size()) {}

    /// Writes page `index` as object `output` below the node `parent`. What it refers to is queued.
    void write(std::size_t index, std::uint32_t output, std::uint32_t parent);

 private:
    /// Which values the page takes from its ancestors.
    [[nodiscard]] PageTree::Inheritance inheritedBy(const PageTree::Page& page, Value dictionary);
    void shareLargeValues(const PageTree::Inheritance& inherited);
    void appendOwnEntries(Value page, bool typed, const PageTree::Inheritance& inherited,
                          ByteBuffer& out);
    void appendInherited(const PageTree::Inheritance& inherited, ByteBuffer& out);

    const PageTree& tree_;
    ObjectCopier& copier_;
    std::vector<std::uint32_t> shared_;  // for each value of the tree its own object, 0 for none
    std::vector<FoundReference> references_;
};

}  // namespace quirebind
