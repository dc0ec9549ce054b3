// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind {

/// Collects the output's parent tree (ISO 32000-2, 14.7.5.4), which tells for the content of a page
/// or a form, or for an annotation, which structure elements it belongs to:
///
///     key of a page or form    [element null element ...]   by marked-content identifiers
///     key of an annotation     element
class ParentTreeWriter {
 public:
    /// Whether nothing was added.
    [[nodiscard]] bool isEmpty() const { return texts_.empty(); }
    /// Whether there is something under `key`.
    [[nodiscard]] bool has(std::uint32_t key) const {
        return key < entries_.size() && entries_[key].size != 0;
    }

    /// Adds what stands under `key`, as it is to be written. There is something, and nothing yet.
    void add(std::uint32_t key, std::string_view value);

    /// Writes the tree; gives its number, nothing where it is empty.
    [[nodiscard]] std::optional<std::uint32_t> write(DocumentWriter& writer) const;

 private:
    struct Entry {
        std::size_t begin = 0;  // in texts_
        std::size_t size = 0;
    };
    std::string texts_;
    std::vector<Entry> entries_;  // by key: they are given out one after another
};

}  // namespace quirebind
