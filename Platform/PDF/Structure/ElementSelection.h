// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Reading/SparseArray.h"
#include "Platform/PDF/Structure/ContentItems.h"
#include "Platform/PDF/Structure/ElementPlace.h"

namespace quirebind {

/// Which elements of a structure tree belong to the copied pages, where not all are copied. Nothing
/// that others pages' elements say, such as the text that stands for a picture, is to come along.
///
///  1. The tree is gone through from the root down; every object counts once, where it is met
///     first. Of the content at each element it is noted whether it is on a copied page.
///  2. From the last element back to the root, each tells its parent what there is in it.
///  3. An element with content on copied pages is kept. One without any content, such as an empty
///     cell of a table, is kept if it is on a copied page, or on none and says nothing.
class ElementSelection {
 public:
    /// What becomes of an element.
    struct Verdict {
        bool isKept = false;
        bool isMixed = false;  ///< Some of what is in it is left behind.
        ContentItems::Page page = ContentItems::Page::unknown;  ///< Where its own content is.
    };

    /// Both must outlive this; `items` knows already which pages are copied.
    ElementSelection(ObjectReader& reader, const ContentItems& items);

    /// Reads the tree below its root. Damage is passed over; throws DamagedDocument only where the
    /// source is exhausted.
    void run(Value root);

    /// What becomes of an element that `run` has met.
    [[nodiscard]] Verdict of(const ElementPlace& place) const;

 private:
    struct Node {
        std::size_t parent = 0;
        ElementPlace place;
        Verdict verdict;
        int depth = 0;  // of direct elements in one another
        bool hasKept = false;
        bool hasLeft = false;
        bool hasText = false;
    };

    void read(std::size_t index);
    void readNode(std::size_t index, Value value);
    void readKids(std::size_t index, Value kids, std::string_view text);
    void readKid(std::size_t index, Value kid, std::string_view text);
    void decide();
    void keep(const Node& node);

    ObjectReader& reader_;
    const ContentItems& items_;
    std::vector<Node> nodes_;  // in the order in which they are met, the root first
    std::map<std::size_t, std::string> direct_;  // the texts of nodes that are no objects
    SparseArray<std::uint8_t> met_;
    SparseArray<Verdict> objects_;
    std::map<ElementPlace, Verdict> others_;
};

/// Whether `key`, of a structure element, is that of a text or more that stands for all of its
/// content (14.9, and table 355).
[[nodiscard]] bool standsForContent(Value key);

}  // namespace quirebind
