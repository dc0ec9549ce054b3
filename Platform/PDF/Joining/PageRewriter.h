// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Copying/PageEntries.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Reading/PageTree.h"

namespace quirebind {

/// Writes the pages of one source into the output: with a new parent, and with the attributes that
/// a page took from its ancestors put on the page itself (ISO 32000-2, 7.7.3.4).
class PageRewriter {
 public:
    /// `entries` are for this alone while a page is written. All must outlive this.
    PageRewriter(const PageTree& tree, ObjectCopier& copier, PageEntries& entries)
        : tree_(tree),
          copier_(copier),
          shared_(tree.values().size()),
          entries_(entries),
          room_(limits::kRepeatedPages, copier.reader().image().storedBytes()) {}

    /// Writes page `index` as object `output` below the node `parent`. What it refers to is queued.
    /// A page without a usable /MediaBox gets one of US Letter size: so big do readers show it.
    void write(std::size_t index, std::uint32_t output, std::uint32_t parent);

 private:
    using OwnEntries = std::span<const PageEntries::Entry>;

    /// Which values the page takes from its ancestors, whether it gets the default /MediaBox, and
    /// whether it says itself that it is a page.
    struct Attributes {
        PageTree::Inheritance inherited{};
        bool defaultBox = false;
        bool typed = false;

        /// Whether another value takes the place of the page's own one.
        [[nodiscard]] bool replaces(std::size_t attribute) const;
    };

    [[nodiscard]] SourceObject read(const PageTree::Page& page);
    [[nodiscard]] bool isRepeated(std::size_t index) const;
    [[nodiscard]] Attributes attributesOf(const PageTree::Page& page, Value dictionary,
                                          OwnEntries own);
    [[nodiscard]] bool isRectangle(Value value);
    void shareLargeValues(const PageTree::Inheritance& inherited);
    void appendOwnEntries(Value page, OwnEntries own, const Attributes& attributes,
                          ByteBuffer& out);
    void appendInherited(const Attributes& attributes, ByteBuffer& out);

    const PageTree& tree_;
    ObjectCopier& copier_;
    std::vector<std::uint32_t> shared_;  // for each value of the tree its own object, 0 for none
    std::string rectangle_;  // the text that was last found to be one; most pages have the same
    PageEntries& entries_;
    WorkBudget room_;  // for pages that the tree lists again
};

}  // namespace quirebind
