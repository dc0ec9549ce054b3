// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/PageTreeWriter.h"

#include <utility>

#include "Platform/PDF/ReferenceText.h"

namespace quirebind {
namespace {

constexpr std::size_t kFanOut = 64;

}  // namespace

PageTreeWriter::Node& PageTreeWriter::locate(std::size_t& index) {
    if (index == pageCount_) {
        if (leaves_.empty() || leaves_.back().kids.size() >= kFanOut)
            leaves_.push_back({writer_.reserve(), 0, {}});
        index = leaves_.back().kids.size();
        return leaves_.back();
    }
    // In the middle a leaf may grow beyond the fan-out: its pages, which name it, are written.
    std::size_t leaf = 0;
    while (index > leaves_[leaf].kids.size()) index -= leaves_[leaf++].kids.size();
    return leaves_[leaf];
}

std::uint32_t PageTreeWriter::leafFor(std::size_t index) {
    return locate(index).number;
}

void PageTreeWriter::insert(std::uint32_t page, std::size_t index) {
    Node& leaf = locate(index);
    leaf.kids.insert(leaf.kids.begin() + static_cast<std::ptrdiff_t>(index), page);
    ++leaf.pages;
    ++pageCount_;
}

std::uint32_t PageTreeWriter::finish() {
    if (leaves_.empty()) leaves_.push_back({writer_.reserve(), 0, {}});
    std::vector<Node> level = std::move(leaves_);
    while (level.size() > 1) {
        std::vector<Node> above;
        for (const Node& node : level) {
            if (above.empty() || above.back().kids.size() == kFanOut)
                above.push_back({writer_.reserve(), 0, {}});
            above.back().kids.push_back(node.number);
            above.back().pages += node.pages;
            write(node, above.back().number);
        }
        level = std::move(above);
    }
    write(level.front(), 0);
    return level.front().number;
}

void PageTreeWriter::write(const Node& node, std::uint32_t parent) {
    ByteBuffer& out = writer_.beginObject(node.number, writer_.packs());
    out.append("<</Type/Pages");
    if (parent != 0) {
        out.append("/Parent ");
        appendReference(parent, out);
    }
    out.append("/Count ");
    out.append(node.pages);
    appendReferencesEntry("/Kids", node.kids, out);
    out.append(">>");
    writer_.endObject();
}

}  // namespace quirebind
