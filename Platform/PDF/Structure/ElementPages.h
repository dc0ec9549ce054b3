// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>

#include "Platform/PDF/Links/PageCopies.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Reading/PageTree.h"
#include "Platform/PDF/Reading/SparseArray.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// The pages of structure elements that do not say which page their content is on, from what the
/// parent tree of their source lists for each page (ISO 32000-2, 14.7.5.4). It is read when it is
/// first needed: nearly all documents say it in their elements.
class ElementPages {
 public:
    /// `root` is the root of the structure. All must outlive this.
    ElementPages(ObjectReader& reader, const PageTree& tree, const PageCopies& copies, Value root)
        : reader_(reader),
          tree_(tree),
          copies_(copies),
          root_(root),
          pages_(reader.table().flatLimit()) {}

    /// The copy of the page that the source's object `element` (0 for an element that is none) is
    /// on; nothing where that is not known, or where it is on several.
    [[nodiscard]] std::optional<std::uint32_t> copyFor(std::uint32_t element);

 private:
    using Keys = std::map<std::int64_t, std::size_t>;  // and the pages that have them

    static constexpr std::uint32_t kSeveral = 0xffffffff;

    void read();
    [[nodiscard]] Keys readKeys();
    void note(std::size_t page, Value elements);
    void noteElement(std::size_t page, Value element);

    ObjectReader& reader_;
    const PageTree& tree_;
    const PageCopies& copies_;
    Value root_;
    bool isRead_ = false;
    SparseArray<std::uint32_t> pages_;  // by element, one more than the index; 0 for none
    std::set<std::uint32_t> arrays_;    // that were read
};

}  // namespace quirebind
