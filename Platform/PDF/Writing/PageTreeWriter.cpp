// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Writing/PageTreeWriter.h"

#include <utility>

#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
namespace {

constexpr std::size_t kFanOut = 100;

}  // namespace

void PageTreeWriter::expect(std::size_t pages) {
    const std::size_t kids = leaves_.empty() ? kFanOut : leaves_.back().kids.size();
    const std::size_t room = (kids < kFanOut ? kFanOut - kids : 0) + kFanOut * reserved_.size();
    for (std::size_t at = room; at < pages; at += kFanOut) reserved_.push_back(writer_.reserve());
}

std::uint32_t PageTreeWriter::nextNumber() {
    if (reserved_.empty()) return writer_.reserve();
    const std::uint32_t number = reserved_.front();
    reserved_.pop_front();
    return number;
}

PageTreeWriter::Node& PageTreeWriter::locate(std::size_t& index) {
    if (index == pageCount_) {
        if (leaves_.empty() || leaves_.back().kids.size() >= kFanOut)
            leaves_.push_back({nextNumber(), 0, {}});
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
    if (leaves_.empty()) leaves_.push_back({nextNumber(), 0, {}});
    std::vector<Node> level = std::move(leaves_);
    while (level.size() > 1) {
        std::vector<Node> above;
        for (const Node& node : level) {
            if (above.empty() || above.back().kids.size() == kFanOut)
                above.push_back({nextNumber(), 0, {}});
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
