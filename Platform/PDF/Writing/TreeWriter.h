// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind {

/// Writes a name tree or a number tree; visitTree, which reads them, says what they look like.
/// Leaves have up to 64 entries, the nodes above them up to 64 kids.
class TreeWriter {
 public:
    /// `pairs` is "Names" or "Nums".
    TreeWriter(DocumentWriter& writer, std::string_view pairs) : writer_(writer), pairs_(pairs) {}

    /// Adds an entry; both texts as they are to be written. Keys come in ascending order, each
    /// once.
    void add(std::string_view key, std::string_view value);

    /// Completes the tree, of at least one entry; gives the number of its root.
    [[nodiscard]] std::uint32_t finish();

 private:
    struct Node {
        std::uint32_t number = 0;
        std::string first;
        std::string last;
    };

    void finishLeaf();
    [[nodiscard]] std::vector<Node> nodesAbove(const std::vector<Node>& kids);
    [[nodiscard]] std::uint32_t writeRoot(std::string_view key, std::string_view elements);
    void write(const Node& node, std::string_view key, std::string_view elements);

    DocumentWriter& writer_;
    std::string pairs_;
    std::vector<Node> leaves_;
    Node leaf_;  // the one that entries are added to
    std::string entries_;
    std::size_t count_ = 0;
};

}  // namespace quirebind
