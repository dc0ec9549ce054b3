// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/ParentTreeWriter.h"

#include "Platform/PDF/Writing/TreeWriter.h"

namespace quirebind {

void ParentTreeWriter::add(std::uint32_t key, std::string_view value) {
    if (key >= entries_.size()) entries_.resize(std::size_t{key} + 1);
    entries_[key] = {texts_.size(), value.size()};
    texts_.append(value);
}

std::optional<std::uint32_t> ParentTreeWriter::write(DocumentWriter& writer) const {
    if (isEmpty()) return std::nullopt;
    TreeWriter tree(writer, "Nums");
    for (std::size_t key = 0; key < entries_.size(); ++key)
        if (const Entry entry = entries_[key]; entry.size != 0)
            tree.add(std::to_string(key), std::string_view(texts_).substr(entry.begin, entry.size));
    return tree.finish();
}

}  // namespace quirebind
