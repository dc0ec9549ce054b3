// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/ImportSession.h"

namespace quirebind {

ImportSession::ImportSession(SourceDocument& source, DocumentWriter& writer)
    : serial_(source.serial()),
      copier_(source.reader(), writer),
      pages_(source.pageTree(), copier_),
      inserted_(source.pageTree().pages().size()) {
    ReferenceMap& map = copier_.map();
    for (const std::uint32_t object : source.documentObjects()) map.assignNull(object);
    for (const PageTree::Node& node : source.pageTree().nodes()) map.assignNull(node.object);
    for (const PageTree::Page& page : source.pageTree().pages()) {
        const std::uint32_t number = writer.reserve();
        if (firstPage_ == 0) firstPage_ = number;
        // A page that the tree lists twice is two pages; references lead to the first.
        if (!map.isAssigned(page.object)) map.assign(page.object, number);
    }
}

std::uint32_t ImportSession::insertPage(std::size_t index, std::uint32_t parent) {
    const std::uint32_t number = firstPage_ + static_cast<std::uint32_t>(index);
    inserted_[index] = true;
    pages_.write(index, number, parent);
    copier_.copyPending();
    return number;
}

}  // namespace quirebind
