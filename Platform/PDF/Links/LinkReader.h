// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "Platform/PDF/Links/NamedDestinations.h"
#include "Platform/PDF/Links/PageLink.h"
#include "Platform/PDF/Reading/SourceDocument.h"

namespace quirebind {

/// Reads the links of an opened document that lead to places inside it (ISO 32000-2, 12.5.6.5), for
/// showing them. Damage means that there is no link. Used by one thread.
class LinkReader {
 public:
    /// `document` must outlive this.
    explicit LinkReader(SourceDocument& document)
        : document_(document), names_(document.reader(), document.catalog()) {}

    /// The links on page `index`, which is one of the document's, the uppermost last.
    [[nodiscard]] std::vector<PageLink> linksOn(std::size_t index);

    /// Where a link leads to. Reads all names of the document the first time that it is asked for
    /// one.
    [[nodiscard]] std::optional<PagePosition> positionOf(const PageLink& link);

 private:
    [[nodiscard]] Value destinationOf(Value annotation);
    [[nodiscard]] std::optional<std::size_t> pageOf(Value page);
    [[nodiscard]] double yOf(std::size_t page, ArrayReader view);

    SourceDocument& document_;
    NamedDestinations names_;
    std::vector<std::pair<std::uint32_t, std::size_t>> pages_;  // by object, once one is asked for
};

}  // namespace quirebind
