// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/ElementSelection.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "Platform/PDF/Guards/Limits.h"

namespace quirebind {

bool standsForContent(Value key) {
    constexpr auto kKeys =
        std::to_array<std::string_view>({"Alt", "ActualText", "E", "T", "Phoneme", "AF"});
    return std::ranges::any_of(kKeys, [&](std::string_view text) { return key.isName(text); });
}

ElementSelection::ElementSelection(ObjectReader& reader, const ContentItems& items)
    : reader_(reader),
      items_(items),
      met_(reader.table().flatLimit()),
      objects_(reader.table().flatLimit()) {}

void ElementSelection::run(Value root) {
    nodes_.emplace_back();
    readKids(0, root.find("K"), root.text());
    for (std::size_t i = 1; i < nodes_.size(); ++i) read(i);
    decide();
}

ElementSelection::Verdict ElementSelection::of(const ElementPlace& place) const {
    if (place.offset == 0) return objects_.get(place.object);
    const auto found = others_.find(place);
    return found == others_.end() ? Verdict() : found->second;
}

void ElementSelection::read(std::size_t index) {
    if (const auto direct = direct_.extract(index)) {
        readNode(index, Value(direct.mapped()));
        return;
    }
    attempt(reader_, [&] {
        const SourceObject object = reader_.read(nodes_[index].place.object);
        if (!object.isStream) readNode(index, object.value);
    });
    reader_.trim();
}

void ElementSelection::readNode(std::size_t index, Value value) {
    Verdict& verdict = nodes_[index].verdict;
    if (value.isArray()) {
        readKids(index, value, value.text());
    } else if (ElementKid::read(value).kind == KidKind::element) {
        verdict.page = items_.pageOf(value.find("Pg"), verdict.page);
        DictionaryReader entries(value);
        while (const auto entry = entries.next())
            if (standsForContent(entry->key)) nodes_[index].hasText = true;
        readKids(index, value.find("K"), value.text());
    } else {
        readKid(index, value, value.text());
    }
}

void ElementSelection::readKids(std::size_t index, Value kids, std::string_view text) {
    if (!kids.isArray()) {
        readKid(index, kids, text);
        return;
    }
    ArrayReader elements(kids);
    while (const auto kid = elements.next()) readKid(index, *kid, text);
}

/// Reads a kid of the node, or a node that is no element but content.
void ElementSelection::readKid(std::size_t index, Value kid, std::string_view text) {
    Node& node = nodes_[index];
    Node next{.parent = index, .place = {}, .verdict = {.page = node.verdict.page}};
    const ElementKid item = ElementKid::read(kid);
    if (const auto reference = kid.reference()) {
        if (std::exchange(met_.at(reference->number), 1) != 0) return;
        next.place.object = reference->number;
        nodes_.push_back(next);
    } else if (item.kind == KidKind::element) {
        if (node.depth == limits::kNestedElements) return;
        next.depth = node.depth + 1;
        next.place = node.place.of(kid, text);
        direct_.emplace(nodes_.size(), kid.text());
        nodes_.push_back(next);
    } else if (items_.isCopied(item, node.verdict.page)) {
        node.hasKept = true;
    } else {
        node.hasLeft = node.hasLeft || item.kind != KidKind::none;
    }
}

void ElementSelection::decide() {
    for (std::size_t i = nodes_.size() - 1; i > 0; --i) {
        Node& node = nodes_[i];
        const ContentItems::Page page = node.verdict.page;
        const bool isEmpty = !node.hasKept && !node.hasLeft;
        const bool staysEmpty = page == ContentItems::Page::copied ||
                                (page == ContentItems::Page::unknown && !node.hasText);
        node.verdict.isKept = isEmpty ? staysEmpty : node.hasKept;
        node.verdict.isMixed = node.hasLeft;
        Node& parent = nodes_[node.parent];
        parent.hasKept = parent.hasKept || node.hasKept;
        parent.hasLeft = parent.hasLeft || node.hasLeft || !node.verdict.isKept;
        keep(node);
    }
    nodes_.clear();
}

void ElementSelection::keep(const Node& node) {
    if (node.place.offset != 0)
        others_.emplace(node.place, node.verdict);
    else
        objects_.at(node.place.object) = node.verdict;
}

}  // namespace quirebind
