// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Writing/TreeWriter.h"

#include <algorithm>
#include <span>

#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
namespace {

constexpr std::size_t kWidth = 64;

}  // namespace

void TreeWriter::add(std::string_view key, std::string_view value) {
    if (count_ == kWidth) finishLeaf();
    if (count_ == 0) leaf_.first = key;
    leaf_.last = key;
    entries_.append(key).append(" ").append(value).append(" ");
    ++count_;
}

void TreeWriter::finishLeaf() {
    leaf_.number = writer_.reserve();
    write(leaf_, pairs_, entries_);
    leaves_.push_back(std::move(leaf_));
    leaf_ = {};
    entries_.clear();
    count_ = 0;
}

std::uint32_t TreeWriter::finish() {
    if (leaves_.empty()) return writeRoot(pairs_, entries_);
    finishLeaf();
    std::vector<Node> level = std::move(leaves_);
    while (level.size() > kWidth) level = nodesAbove(level);
    std::string kids;
    for (const Node& node : level) kids += referenceText(node.number) + " ";
    return writeRoot("Kids", kids);
}

std::vector<TreeWriter::Node> TreeWriter::nodesAbove(const std::vector<Node>& kids) {
    std::vector<Node> nodes;
    for (std::size_t at = 0; at < kids.size(); at += kWidth) {
        const auto below = std::span(kids).subspan(at, std::min(kWidth, kids.size() - at));
        std::string elements;
        for (const Node& kid : below) elements += referenceText(kid.number) + " ";
        nodes.push_back({writer_.reserve(), below.front().first, below.back().last});
        write(nodes.back(), "Kids", elements);
    }
    return nodes;
}

std::uint32_t TreeWriter::writeRoot(std::string_view key, std::string_view elements) {
    const Node root{.number = writer_.reserve(), .first = {}, .last = {}};
    write(root, key, elements);
    return root.number;
}

/// The root, which has no first key, says no /Limits.
void TreeWriter::write(const Node& node, std::string_view key, std::string_view elements) {
    ByteBuffer& out = writer_.beginObject(node.number, writer_.packs());
    out.append("<<");
    if (!node.first.empty()) {
        out.append("/Limits[");
        out.append(node.first);
        out.append(" ");
        out.append(node.last);
        out.append("]");
    }
    out.append("/");
    out.append(key);
    out.append("[");
    out.append(elements);
    out.append("]>>");
    writer_.endObject();
}

}  // namespace quirebind
