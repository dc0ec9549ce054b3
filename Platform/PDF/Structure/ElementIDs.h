// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind {

/// The identifiers of the output's structure elements (ISO 32000-2, 14.7.2 and table 354, /IDTree).
/// The first source that uses one keeps it.
class ElementIDs {
 public:
    /// Makes `id` one of source `source`; false where another identifier is that already.
    [[nodiscard]] bool take(const std::string& id, std::size_t source, bool isChanged);

    /// Lets `id` be that of `element`. Of several elements the first counts.
    void list(const std::string& id, std::uint32_t element);

    /// Writes the tree of all that are listed; gives its number, nothing where there are none.
    [[nodiscard]] std::optional<std::uint32_t> write(DocumentWriter& writer) const;

 private:
    struct Entry {
        std::size_t source = 0;
        bool isChanged = false;
        std::uint32_t element = 0;
    };
    std::map<std::string, Entry> entries_;
};

/// What the identifiers of one source become.
class SourceIDs {
 public:
    /// `source` counts the sources from 1.
    SourceIDs(ElementIDs& ids, std::size_t source) : ids_(ids), source_(source) {}

    /// The output's identifier for `id`, always the same.
    [[nodiscard]] std::string idFor(const std::string& id);

    /// Lets `id`, one of the output, be that of `element`.
    void list(const std::string& id, std::uint32_t element) { ids_.list(id, element); }

 private:
    ElementIDs& ids_;
    std::size_t source_;
    std::map<std::string, std::string> changed_;
};

}  // namespace quirebind
