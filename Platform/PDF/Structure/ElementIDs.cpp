// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/ElementIDs.h"

#include "Platform/PDF/Syntax/PDFString.h"
#include "Platform/PDF/Syntax/ReferenceText.h"
#include "Platform/PDF/Writing/TreeWriter.h"

namespace quirebind {

bool ElementIDs::take(const std::string& id, std::size_t source, bool isChanged) {
    const auto [found, isNew] = entries_.try_emplace(id, Entry{source, isChanged});
    if (isNew) return true;
    return !isChanged && !found->second.isChanged && found->second.source == source;
}

void ElementIDs::list(const std::string& id, std::uint32_t element) {
    Entry& entry = entries_[id];
    if (entry.element == 0) entry.element = element;
}

std::optional<std::uint32_t> ElementIDs::write(DocumentWriter& writer) const {
    TreeWriter tree(writer, "Names");
    bool isEmpty = true;
    for (const auto& [id, entry] : entries_) {
        if (entry.element == 0) continue;
        std::string key;
        appendLiteralString(id, key);
        tree.add(key, referenceText(entry.element));
        isEmpty = false;
    }
    if (isEmpty) return std::nullopt;
    return tree.finish();
}

std::string SourceIDs::idFor(const std::string& id) {
    if (const auto found = changed_.find(id); found != changed_.end()) return found->second;
    if (ids_.take(id, source_, false)) return id;
    const std::string counted = id + "_" + std::to_string(source_);
    std::string unused = counted;
    for (int i = 2; !ids_.take(unused, source_, true); ++i)
        unused = counted + "_" + std::to_string(i);
    changed_.emplace(id, unused);
    return unused;
}

}  // namespace quirebind
