// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Joining/OutputDocument.h"

#include <algorithm>

#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {

void OutputDocument::insertPage(const std::shared_ptr<SourceDocument>& source, std::size_t page,
                                std::size_t index) {
    ImportSession& session = sessionFor(*source, page);
    const bool isNew = !session.hasInsertedAny();
    version_ = std::max(version_, source->version());
    const std::uint32_t leaf = pageTree_.leafFor(index);
    pageTree_.insert(session.insertPage(page, leaf), index);
    // Now: what is on the first page is nearly always on the others, too, and comes before them.
    if (isNew) pageTree_.expect(source->pageTree().pages().size() - 1);
}

ImportSession& OutputDocument::sessionFor(SourceDocument& source, std::size_t page) {
    std::erase_if(sessions_, [&](const std::shared_ptr<ImportSession>& session) {
        const bool again = session->serial() == source.serial() && session->hasInserted(page);
        if (session->isOpen() && !again) return false;
        session->end();
        return true;
    });
    const auto found = std::ranges::find(sessions_, source.serial(), &ImportSession::serial);
    if (found != sessions_.end()) return **found;
    sessions_.push_back(std::make_shared<ImportSession>(source, parts_));
    source.addObserver(sessions_.back());
    return *sessions_.back();
}

ByteBuffer OutputDocument::finish() {
    for (const auto& session : sessions_) session->end();
    sessions_.clear();
    DocumentWriter& writer = parts_.writer;
    const std::uint32_t pages = pageTree_.finish();
    const auto layers = parts_.layers.finish(writer);
    const auto intents = parts_.outputIntents.finish(writer);
    const auto structure = parts_.structure.finish(writer, parts_.structureKeys);
    const auto form = parts_.forms.finish(writer);

    const std::uint32_t root = writer.reserve();
    ByteBuffer& out = writer.beginObject(root, writer.packs());
    out.append("<</Type/Catalog");
    appendReferenceEntry("/Pages", pages, out);
    appendReferenceEntry("/OCProperties", layers, out);
    appendReferenceEntry("/OutputIntents", intents, out);
    appendReferencesEntry("/Threads", parts_.threads, out);
    appendReferenceEntry("/StructTreeRoot", structure, out);
    parts_.marking.append(out);
    appendReferenceEntry("/AcroForm", form, out);
    out.append(">>");
    writer.endObject();
    return writer.finish(root, version_);
}

}  // namespace quirebind
