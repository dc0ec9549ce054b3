// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind {

/// Builds the page tree of an output (ISO 32000-2, 7.7.3): the pages in leaf nodes of at most
/// kFanOut, those in nodes of the next level, and so on to the root. A leaf's number is known
/// before its pages are written, since each of them names it; the nodes are written at the end.
class PageTreeWriter {
 public:
    /// `writer` must outlive this.
    explicit PageTreeWriter(DocumentWriter& writer) : writer_(writer) {}

    /// The pages that were appended so far.
    [[nodiscard]] std::size_t pageCount() const { return pageCount_; }

    /// So many further pages are to be appended: reserves the numbers of the leaves for them, so
    /// that the pages, each of which names its leaf, have short ones to write.
    void expect(std::size_t pages);

    /// The number of the leaf below which a page inserted at `index` (at most pageCount) will be.
    [[nodiscard]] std::uint32_t leafFor(std::size_t index);
    /// Inserts page object `page` at `index`, below the leaf that `leafFor` gave for it.
    void insert(std::uint32_t page, std::size_t index);

    /// Writes all nodes; gives the number of the root.
    [[nodiscard]] std::uint32_t finish();

 private:
    struct Node {
        std::uint32_t number = 0;
        std::uint64_t pages = 0;
        std::vector<std::uint32_t> kids;
    };

    /// The leaf that holds, or is to hold, page `index`, which becomes the index in that leaf.
    [[nodiscard]] Node& locate(std::size_t& index);
    [[nodiscard]] std::uint32_t nextNumber();
    void write(const Node& node, std::uint32_t parent);

    DocumentWriter& writer_;
    std::vector<Node> leaves_;
    std::deque<std::uint32_t> reserved_;  // not used yet
    std::size_t pageCount_ = 0;
};

}  // namespace quirebind
