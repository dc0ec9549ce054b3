// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/OutputDocument.h"

#include <algorithm>

namespace quirebind {

void OutputDocument::insertPage(const std::shared_ptr<SourceDocument>& source, std::size_t page,
                                std::size_t index) {
    ImportSession& session = sessionFor(*source, page);
    version_ = std::max(version_, source->version());
    const std::uint32_t leaf = pageTree_.leafFor(index);
    pageTree_.insert(session.insertPage(page, leaf), index);
}

ImportSession& OutputDocument::sessionFor(SourceDocument& source, std::size_t page) {
    std::erase_if(sessions_, [&](const std::shared_ptr<ImportSession>& session) {
        const bool again = session->serial() == source.serial() && session->hasInserted(page);
        return !session->isOpen() || again;
    });
    const auto found = std::ranges::find(sessions_, source.serial(), &ImportSession::serial);
    if (found != sessions_.end()) return **found;
    sessions_.push_back(std::make_shared<ImportSession>(source, writer_));
    source.addObserver(sessions_.back());
    return *sessions_.back();
}

ByteBuffer OutputDocument::finish() {
    sessions_.clear();
    const std::uint32_t pages = pageTree_.finish();
    const std::uint32_t root = writer_.reserve();
    ByteBuffer& out = writer_.beginObject(root, writer_.packs());
    out.append("<</Type/Catalog/Pages ");
    out.append(std::uint64_t{pages});
    out.append(" 0 R>>");
    writer_.endObject();
    return writer_.finish(root, version_);
}

}  // namespace quirebind
