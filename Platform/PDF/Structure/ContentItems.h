// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Copying/ReferenceMap.h"
#include "Platform/PDF/Links/PageCopies.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Structure/ElementKid.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Whether what `value` says makes it a structure element wherever it is met.
[[nodiscard]] bool isStructureElement(Value value);

/// The content that belongs to structure elements: which of it is on the copied pages.
class ContentItems {
 public:
    /// What is known of the page that content is on.
    enum class Page : std::uint8_t { unknown, copied, left };

    /// `inserted` says which of the pages are copied. All must outlive this.
    ContentItems(ObjectReader& reader, const ReferenceMap& map, const PageCopies& pages,
                 const std::vector<bool>& inserted)
        : reader_(reader), map_(map), pages_(pages), inserted_(inserted) {}

    /// To be called when no more pages will be copied, before anything is asked.
    void noteInsertion();

    /// Whether all pages of the source are copied.
    [[nodiscard]] bool areAllPagesCopied() const { return allPages_; }

    /// The copy of the page that `page`, the value of a /Pg, refers to.
    [[nodiscard]] std::optional<std::uint32_t> copyOfPage(Value page) const;
    /// The same as what is known; `otherwise` where there is no such entry.
    [[nodiscard]] Page pageOf(Value page, Page otherwise) const;

    /// Whether `item`, which is no element, is on a copied page. `page` is the element's.
    /// Content outside the page itself, an annotation or a form, is on a page that needed it.
    [[nodiscard]] bool isCopied(const ElementKid& item, Page page) const;

    /// Appends the item, which is copied.
    void append(const ElementKid& item, ByteBuffer& out) const;

 private:
    [[nodiscard]] std::optional<std::uint32_t> copyOf(Value object) const;
    void appendCopy(std::string_view key, Value object, ByteBuffer& out) const;

    ObjectReader& reader_;
    const ReferenceMap& map_;
    const PageCopies& pages_;
    const std::vector<bool>& inserted_;
    bool allPages_ = false;
};

}  // namespace quirebind
